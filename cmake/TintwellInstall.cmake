# What `cmake --install` installs where. Components: Runtime, the programs and their desktop
# integration; Development, the library; Local, files that a Debian package installs in its own way.
include(CMakePackageConfigHelpers)
include(GNUInstallDirs)

# Installs SOURCE compressed, as FOLDER/NAME.gz; further arguments are those of install().
function(tintwell_install_compressed source folder name)
  set(packed "${CMAKE_CURRENT_BINARY_DIR}/packed/${name}.gz")
  add_custom_command(OUTPUT "${packed}"
    COMMAND "${CMAKE_COMMAND}" -E make_directory "${CMAKE_CURRENT_BINARY_DIR}/packed"
    # Without name and time stamp, so that the same source gives the same file.
    COMMAND "${GZIP}" -9 -n -c "${PROJECT_SOURCE_DIR}/${source}" > "${packed}"
    DEPENDS "${PROJECT_SOURCE_DIR}/${source}"
    VERBATIM)
  add_custom_target(packed-${name} ALL DEPENDS "${packed}")
  install(FILES "${packed}" DESTINATION ${folder} ${ARGN})
endfunction()

function(tintwell_install_program target)
  install(TARGETS ${target} COMPONENT Runtime)
  tintwell_install_compressed(docs/${target}.1 ${CMAKE_INSTALL_MANDIR}/man1 ${target}.1
    COMPONENT Runtime)
endfunction()

find_program(GZIP gzip REQUIRED)
set(share ${CMAKE_INSTALL_DATADIR})

if(TARGET tintwell)
  tintwell_install_program(tintwell)
  install(FILES packaging/tintwell.desktop DESTINATION ${share}/applications COMPONENT Runtime)
  install(FILES packaging/tintwell.svg
    DESTINATION ${share}/icons/hicolor/scalable/apps COMPONENT Runtime)
  foreach(size 16 24 32 48 64 128 256)
    install(FILES packaging/icons/${size}.png
      DESTINATION ${share}/icons/hicolor/${size}x${size}/apps RENAME tintwell.png
      COMPONENT Runtime)
  endforeach()
  install(FILES packaging/org.tintwell.tintwell.metainfo.xml
    DESTINATION ${share}/metainfo COMPONENT Runtime)
  install(FILES packaging/tintwell-mime.xml
    DESTINATION ${share}/mime/packages RENAME tintwell.xml COMPONENT Runtime)
endif()

if(TARGET tintwell-cli)
  tintwell_install_program(tintwell-cli)
  install(FILES packaging/completions/tintwell-cli.bash
    DESTINATION ${share}/bash-completion/completions RENAME tintwell-cli COMPONENT Runtime)
  install(FILES packaging/completions/_tintwell-cli
    DESTINATION ${share}/zsh/site-functions COMPONENT Local)
endif()

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/Tintwell)
install(TARGETS tintwell-lut EXPORT TintwellTargets
  COMPONENT Development
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tintwell)
foreach(header lut/format_code.h lut/lutfile_st.h lut/read_lutfile.h lut/write_lutfile.h calc/lutcalc.h
               formats/hex_float.h)
  get_filename_component(folder ${header} DIRECTORY)
  install(FILES ${header}
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tintwell/${folder} COMPONENT Development)
endforeach()
install(EXPORT TintwellTargets NAMESPACE Tintwell::
  DESTINATION ${package_folder} COMPONENT Development)
configure_package_config_file(cmake/TintwellConfig.cmake.in
  ${PROJECT_BINARY_DIR}/TintwellConfig.cmake
  INSTALL_DESTINATION ${package_folder})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/TintwellConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES
  ${PROJECT_BINARY_DIR}/TintwellConfig.cmake
  ${PROJECT_BINARY_DIR}/TintwellConfigVersion.cmake
  DESTINATION ${package_folder} COMPONENT Development)
