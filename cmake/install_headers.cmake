# Run by the installation: the headers that a host names, and what they include. All others stay here.
cmake_minimum_required(VERSION 3.25)

set(waiting
  baseapi/baseapi.h baseapi/testkit/doubles.h baseapi/testkit/local_service.h
  hostkit/folder_photo_library.h hostkit/slice_file.h hostkit/vcf_address_book.h)
set(found)
while(waiting)
  list(POP_FRONT waiting header)
  if(header IN_LIST found)
    continue()
  endif()
  list(APPEND found ${header})
  file(STRINGS "${source}/${header}" includes REGEX "^#include \"")
  list(TRANSFORM includes REPLACE "^#include \"(.*)\".*" "\\1")
  list(APPEND waiting ${includes})
endwhile()

foreach(header ${found})
  cmake_path(GET header PARENT_PATH folder)
  file(INSTALL "${source}/${header}" DESTINATION "${CMAKE_INSTALL_PREFIX}/${include_dir}/${folder}")
endforeach()
