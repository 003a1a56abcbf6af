# Read by cpack before it makes packages.
if(NOT CPACK_GENERATOR STREQUAL "DEB")
  return()
endif()

# Without a locale, a folder whose path has umlauts could not be packed.
set(ENV{LC_ALL} C.UTF-8)

# Files in a package get the time of the changelog's entry, so that packages made at different times are
# the same.
if(NOT DEFINED ENV{SOURCE_DATE_EPOCH})
  file(STRINGS "${CMAKE_CURRENT_LIST_DIR}/../packaging/debian/changelog" entry REGEX "^ -- .*>  "
    LIMIT_COUNT 1)
  string(REGEX REPLACE ".*>  " "" date "${entry}")
  execute_process(COMMAND date --date "${date}" +%s
    OUTPUT_VARIABLE seconds OUTPUT_STRIP_TRAILING_WHITESPACE RESULT_VARIABLE failed)
  if(failed)
    message(FATAL_ERROR "The changelog's date cannot be read: ${date}")
  endif()
  set(ENV{SOURCE_DATE_EPOCH} ${seconds})
endif()
