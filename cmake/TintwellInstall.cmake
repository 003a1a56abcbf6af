# What `cmake --install` installs where. Components: Window and CommandLine, a program each with its
# desktop or shell integration; Headers, of the library; Local, what a Debian package has elsewhere.
include(CMakePackageConfigHelpers)
include(GNUInstallDirs)

# Compresses SOURCE as NAME.gz and gives the path of the result.
function(tintwell_compress source name result)
  set(packed "${PROJECT_BINARY_DIR}/packed/${name}.gz")
  add_custom_command(OUTPUT "${packed}"
    COMMAND "${CMAKE_COMMAND}" -E make_directory "${PROJECT_BINARY_DIR}/packed"
    # Without name and time stamp, so that the same source gives the same file.
    COMMAND "${GZIP}" -9 -n -c "${PROJECT_SOURCE_DIR}/${source}" > "${packed}"
    DEPENDS "${PROJECT_SOURCE_DIR}/${source}"
    VERBATIM)
  add_custom_target(packed-${name} ALL DEPENDS "${packed}")
  set(${result} "${packed}" PARENT_SCOPE)
endfunction()

function(tintwell_install_program target component)
  install(TARGETS ${target} COMPONENT ${component})
  tintwell_compress(docs/${target}.1 ${target}.1 manual)
  install(FILES "${manual}" DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT ${component})
endfunction()

# Installs the icon NAME, whose drawings are in packaging/icons/NAME, for a context of icon themes.
function(tintwell_install_icon name context)
  set(theme ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
  install(FILES packaging/${name}.svg DESTINATION ${theme}/scalable/${context} COMPONENT Window)
  foreach(size 16 24 32 48 64 128 256)
    install(FILES packaging/icons/${name}/${size}.png
      DESTINATION ${theme}/${size}x${size}/${context} RENAME ${name}.png COMPONENT Window)
  endforeach()
endfunction()

# Installs the library, but for its headers, with what find_package() reads, as the export NAME.
# FOLDER is that of libraries; further arguments are those of install().
function(tintwell_install_library name folder)
  set(config "${PROJECT_BINARY_DIR}/${name}/TintwellConfig.cmake")
  set(config_folder ${folder}/cmake/Tintwell)
  install(TARGETS tintwell-lut EXPORT ${name} ARCHIVE DESTINATION ${folder} ${ARGN}
    INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tintwell)
  install(EXPORT ${name} FILE TintwellTargets.cmake NAMESPACE Tintwell::
    DESTINATION ${config_folder} ${ARGN})
  configure_package_config_file(cmake/TintwellConfig.cmake.in "${config}"
    INSTALL_DESTINATION ${config_folder})
  install(FILES "${config}" "${PROJECT_BINARY_DIR}/TintwellConfigVersion.cmake"
    DESTINATION ${config_folder} ${ARGN})
endfunction()

find_program(GZIP gzip REQUIRED)
set(share ${CMAKE_INSTALL_DATADIR})

if(TARGET tintwell)
  tintwell_install_program(tintwell Window)
  tintwell_install_icon(tintwell apps)
  tintwell_install_icon(tintwell-lut mimetypes)
  install(FILES packaging/tintwell.desktop DESTINATION ${share}/applications COMPONENT Window)
  install(FILES packaging/org.tintwell.tintwell.metainfo.xml
    DESTINATION ${share}/metainfo COMPONENT Window)
  install(FILES packaging/tintwell-mime.xml
    DESTINATION ${share}/mime/packages RENAME tintwell.xml COMPONENT Window)
endif()

if(TARGET tintwell-cli)
  tintwell_install_program(tintwell-cli CommandLine)
  install(FILES packaging/completions/tintwell-cli.bash
    DESTINATION ${share}/bash-completion/completions RENAME tintwell-cli COMPONENT CommandLine)
  install(FILES packaging/completions/_tintwell-cli
    DESTINATION ${share}/zsh/site-functions COMPONENT Local)
endif()

foreach(header lut/format_code.h lut/lutfile_st.h lut/read_lutfile.h lut/write_lutfile.h calc/lutcalc.h
               formats/hex_float.h)
  get_filename_component(folder ${header} DIRECTORY)
  install(FILES ${header}
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tintwell/${folder} COMPONENT Headers)
endforeach()
write_basic_package_version_file(${PROJECT_BINARY_DIR}/TintwellConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
tintwell_install_library(TintwellLocal ${CMAKE_INSTALL_LIBDIR} COMPONENT Local)
