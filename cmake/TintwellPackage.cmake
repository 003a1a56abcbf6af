# The Debian packages that `cpack` makes, one for each program and one for the library. The components
# DebianWindow, DebianCommandLine and DebianLibrary have what only the packages contain.

# Installs what every package has: its copyright, its changelogs, and what lintian is to leave out.
function(tintwell_install_package_documents package component)
  install(FILES packaging/debian/copyright "${debian_changelog}" "${changelog}"
    DESTINATION ${share}/doc/${package} COMPONENT ${component} EXCLUDE_FROM_ALL)
  install(FILES packaging/debian/lintian-overrides
    DESTINATION ${share}/lintian/overrides RENAME ${package}
    COMPONENT ${component} EXCLUDE_FROM_ALL)
endfunction()

tintwell_compress(packaging/debian/changelog changelog.Debian debian_changelog)
tintwell_compress(CHANGELOG.md changelog changelog)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING ONE_PER_GROUP)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_PROJECT_CONFIG_FILE "${CMAKE_CURRENT_LIST_DIR}/TintwellBeforePackage.cmake")
set(CPACK_POST_BUILD_SCRIPTS "${CMAKE_CURRENT_LIST_DIR}/TintwellAfterPackage.cmake")

set(CPACK_PACKAGE_NAME tintwell)
set(CPACK_PACKAGE_CONTACT "Tintwell maintainers <maintainers@tintwell.example>")
# Empty, or it would be the first line of every package's description.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SOURCE tintwell)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(CPACK_COMPONENTS_ALL Headers DebianLibrary)
tintwell_install_package_documents(libtintwell-dev DebianLibrary)
tintwell_install_library(TintwellDebian lib/${CMAKE_LIBRARY_ARCHITECTURE}
  COMPONENT DebianLibrary EXCLUDE_FROM_ALL)
set(CPACK_COMPONENT_HEADERS_GROUP library)
set(CPACK_COMPONENT_DEBIANLIBRARY_GROUP library)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME libtintwell-dev)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_DEPENDS qtbase5-dev)
set(CPACK_DEBIAN_LIBRARY_DESCRIPTION
"library for colour look-up tables (development files)
Tintwell reads colour look-up tables (LUTs) in seventeen file formats, writes
eleven of them, and looks up, resamples and merges what they hold.

This package contains the static library, its C++ headers, and what CMake's
find_package(Tintwell) reads.")

if(TARGET tintwell-cli)
  list(APPEND CPACK_COMPONENTS_ALL CommandLine DebianCommandLine)
  tintwell_install_package_documents(tintwell-cli DebianCommandLine)
  install(FILES packaging/completions/_tintwell-cli
    DESTINATION ${share}/zsh/vendor-completions
    COMPONENT DebianCommandLine EXCLUDE_FROM_ALL)
  set(CPACK_COMPONENT_COMMANDLINE_GROUP commands)
  set(CPACK_COMPONENT_DEBIANCOMMANDLINE_GROUP commands)
  set(CPACK_DEBIAN_COMMANDS_PACKAGE_NAME tintwell-cli)
  set(CPACK_DEBIAN_COMMANDS_PACKAGE_SECTION graphics)
  # For TIFF images.
  set(CPACK_DEBIAN_COMMANDS_PACKAGE_RECOMMENDS qt5-image-formats-plugins)
  # Both programs were in one package before, in this version too, as that was never released.
  set(CPACK_DEBIAN_COMMANDS_PACKAGE_REPLACES "tintwell (<= 0.1.0-1)")
  set(CPACK_DEBIAN_COMMANDS_DESCRIPTION
"converter of colour look-up tables (command line)
Tintwell converts colour look-up tables (LUTs). Its command line reads
seventeen file formats and writes eleven of them, one file or a whole folder
in parallel. It also tells what tables hold and what is lost in a conversion,
compares, resamples and merges tables, draws them, and applies them to images.

It needs no desktop. The package tintwell has the window.")
endif()

if(TARGET tintwell)
  list(APPEND CPACK_COMPONENTS_ALL Window DebianWindow)
  tintwell_install_package_documents(tintwell DebianWindow)
  set(CPACK_COMPONENT_WINDOW_GROUP window)
  set(CPACK_COMPONENT_DEBIANWINDOW_GROUP window)
  set(CPACK_DEBIAN_WINDOW_PACKAGE_NAME tintwell)
  set(CPACK_DEBIAN_WINDOW_PACKAGE_SECTION graphics)
  # Fonts and dialogs in Chinese, and desktops without X.
  set(CPACK_DEBIAN_WINDOW_PACKAGE_RECOMMENDS
    "fonts-wqy-microhei | fonts-noto-cjk, qttranslations5-l10n, qtwayland5")
  if(TARGET tintwell-cli)
    # The window tells its user commands to run.
    set(CPACK_DEBIAN_WINDOW_PACKAGE_DEPENDS
      "tintwell-cli (= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})")
  endif()
  set(CPACK_DEBIAN_WINDOW_DESCRIPTION
"converter of colour look-up tables
Tintwell converts colour look-up tables (LUTs). Its window turns a .cube
into a .cube of 17 or 33 points per axis: it shows what the input holds, swaps
channel order and lattice order, and resamples by tetrahedral interpolation.
English and Simplified Chinese.

The package tintwell-cli converts between more formats.")
endif()
include(CPack)
