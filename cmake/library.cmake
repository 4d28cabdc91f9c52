# A library of the project, twice of the same objects: <name> is static, <name>_shared is shared. The namespaced
# name, baseapi::<name>, is the one that BUILD_SHARED_LIBS asks for. Of its symbols only those are visible that a
# header marks with BASEAPI_API. SOURCES_OF_BASEAPI are the hidden sources of the library that the shared one needs
# a copy of.
#
#   baseapi_library(<name> [SOURCES ...] [ON_BASEAPI] [SOURCES_OF_BASEAPI ...] [LIBRARIES ...])
function(baseapi_library name)
  cmake_parse_arguments(ARG ON_BASEAPI "" "SOURCES;SOURCES_OF_BASEAPI;LIBRARIES" ${ARGN})
  list(TRANSFORM ARG_SOURCES_OF_BASEAPI PREPEND ${PROJECT_SOURCE_DIR}/baseapi/)
  add_library(${name} STATIC ${ARG_SOURCES})
  add_library(${name}_shared SHARED $<TARGET_OBJECTS:${name}> ${ARG_SOURCES_OF_BASEAPI})
  foreach(kind "" _shared)
    target_include_directories(${name}${kind} PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>)
    target_compile_features(${name}${kind} PUBLIC cxx_std_20)
    target_link_libraries(${name}${kind} PRIVATE ${ARG_LIBRARIES} $<BUILD_INTERFACE:baseapi_options>)
    if(ARG_ON_BASEAPI)
      target_link_libraries(${name}${kind} PUBLIC baseapi${kind})
    endif()
    set_target_properties(${name}${kind} PROPERTIES
      POSITION_INDEPENDENT_CODE ON CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
  endforeach()
  target_link_options(${name}_shared PRIVATE
    -Wl,--version-script=${PROJECT_SOURCE_DIR}/cmake/exported.map -Wl,-z,defs
    $<$<CONFIG:MinSizeRel>:-Wl,-Map=$<TARGET_FILE:${name}_shared>.map>)
  # While the major version is 0, each minor one may break.
  set_target_properties(${name}_shared PROPERTIES
    OUTPUT_NAME ${name} LINKER_LANGUAGE CXX
    VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}
    LINK_DEPENDS ${PROJECT_SOURCE_DIR}/cmake/exported.map)

  if(BUILD_SHARED_LIBS)
    set(asked ${name}_shared)
    set(other ${name})
  else()
    set(asked ${name})
    set(other ${name}_shared)
  endif()
  add_library(baseapi::${name} ALIAS ${asked})
  if(NOT BASEAPI_BOTH_KINDS)
    set_target_properties(${other} PROPERTIES EXCLUDE_FROM_ALL ON)
  endif()
endfunction()
