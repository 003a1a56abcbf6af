# Read by cpack (3.19 or newer) when it has made packages. The permissions of folders, and of the parts
# of which a package consists, are what the maker's umask left of them.
list(FILTER CPACK_PACKAGE_FILES INCLUDE REGEX "\\.deb$")
foreach(package IN LISTS CPACK_PACKAGE_FILES)
  set(tree "${package}.tree")
  foreach(step IN ITEMS
      "dpkg-deb;--raw-extract;${package};${tree}"
      "chmod;-R;u=rwX,go=rX;${tree}"
      "dpkg-deb;--root-owner-group;-Zxz;--build;${tree};${package}")
    execute_process(COMMAND ${step} OUTPUT_QUIET RESULT_VARIABLE failed)
    if(failed)
      message(FATAL_ERROR "This failed: ${step}")
    endif()
  endforeach()
  file(REMOVE_RECURSE "${tree}")
endforeach()
