# The warnings and sanitizers of every target of this project, and of no other.
add_library(baseapi_options INTERFACE)
target_compile_options(baseapi_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-qual -Wno-missing-field-initializers)
if(BASEAPI_WARNINGS_AS_ERRORS)
  target_compile_options(baseapi_options INTERFACE -Werror)
endif()
if(BASEAPI_SANITIZE)
  target_compile_options(baseapi_options INTERFACE
    -fsanitize=${BASEAPI_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(baseapi_options INTERFACE -fsanitize=${BASEAPI_SANITIZE})
  # clang 14 cannot mark the parts of a coroutine for its check of function pointers ("a difference across sections").
  target_compile_options(baseapi_options INTERFACE $<$<CXX_COMPILER_ID:Clang>:-fno-sanitize=function>)
endif()
# The whole library counts what it runs, so that libFuzzer sees where a new input leads.
if(BASEAPI_FUZZERS)
  target_compile_options(baseapi_options INTERFACE -fsanitize=fuzzer-no-link)
  target_link_options(baseapi_options INTERFACE -fsanitize=fuzzer-no-link)
endif()
# Files may be larger than what an address counts.
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
  target_compile_definitions(baseapi_options INTERFACE _FILE_OFFSET_BITS=64)
endif()
# What is built for size has each function and each variable in a section of its own, so that the linker leaves out what
# nobody uses.
target_compile_options(baseapi_options INTERFACE $<$<CONFIG:MinSizeRel>:-ffunction-sections;-fdata-sections>)
target_link_options(baseapi_options INTERFACE $<$<CONFIG:MinSizeRel>:-Wl,--gc-sections;-Wl,--as-needed>)
# g++ 12 warns of overlapping copies where a short literal is joined to a text, and there are none (its bug 105651).
target_compile_options(baseapi_options INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)

# clang takes what another of the joined sources declares for shadowed.
if(CMAKE_UNITY_BUILD)
  target_compile_options(baseapi_options INTERFACE $<$<CXX_COMPILER_ID:Clang>:-Wno-shadow>)
endif()

# Sources that a joined build (CMAKE_UNITY_BUILD) has to leave on their own, because of what follows each call.
function(baseapi_compile_alone target)
  set_source_files_properties(${ARGN} TARGET_DIRECTORY ${target} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
endfunction()
