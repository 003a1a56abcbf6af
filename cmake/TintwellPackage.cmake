# The Debian package that `cpack` makes: the programs, without the library. The component Debian has
# what only the package contains.
set(debian_part COMPONENT Debian EXCLUDE_FROM_ALL)
install(FILES packaging/debian/copyright DESTINATION ${share}/doc/tintwell ${debian_part})
tintwell_install_compressed(packaging/debian/changelog
  ${share}/doc/tintwell changelog.Debian ${debian_part})
tintwell_install_compressed(CHANGELOG.md ${share}/doc/tintwell changelog ${debian_part})
if(TARGET tintwell-cli)
  install(FILES packaging/completions/_tintwell-cli
    DESTINATION ${share}/zsh/vendor-completions ${debian_part})
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL Runtime Debian)
set(CPACK_COMPONENTS_GROUPING ALL_COMPONENTS_IN_ONE)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_PACKAGE_NAME tintwell)
set(CPACK_PACKAGE_CONTACT "Tintwell maintainers <maintainers@tintwell.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "converter of colour look-up tables")
set(CPACK_PACKAGE_DESCRIPTION
"Tintwell converts colour look-up tables (LUTs). Its window turns a .cube
into a .cube of 17 or 33 points per axis: it swaps channel order and lattice
order, and resamples by tetrahedral interpolation. English and Simplified
Chinese.")
if(TARGET tintwell-cli)
  string(APPEND CPACK_PACKAGE_DESCRIPTION
"\nThe command-line program tintwell-cli converts between more formats.")
endif()

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Fonts and dialogs in Chinese, and TIFF images.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-wqy-microhei | fonts-noto-cjk, qttranslations5-l10n, qt5-image-formats-plugins")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)
