# Runs a portfile without vcpkg, with the commands that the port of baseapi calls. It says what the port asks for, a line each.
#
#   cmake -DPORTFILE=<portfile.cmake> -DFEATURES=<feature;...> -DCURRENT_PACKAGES_DIR=<folder> -P vcpkg_stand_in.cmake
cmake_minimum_required(VERSION 3.25)
set(PORT baseapi)

function(vcpkg_check_features)
  cmake_parse_arguments(PARSE_ARGV 0 ARG "" OUT_FEATURE_OPTIONS FEATURES)
  while(ARG_FEATURES)
    list(POP_FRONT ARG_FEATURES feature variable)
    set(value OFF)
    if(feature IN_LIST FEATURES)
      set(value ON)
    endif()
    list(APPEND options -D${variable}=${value})
  endwhile()
  set(${ARG_OUT_FEATURE_OPTIONS} ${options} PARENT_SCOPE)
endfunction()

function(vcpkg_find_acquire_program variable)
  find_program(${variable} NAMES pkg-config REQUIRED)
endfunction()

function(vcpkg_cmake_configure)
  cmake_parse_arguments(PARSE_ARGV 0 ARG "" SOURCE_PATH OPTIONS)
  message(NOTICE "source ${ARG_SOURCE_PATH}")
  foreach(option ${ARG_OPTIONS})
    message(NOTICE "option ${option}")
  endforeach()
endfunction()

function(vcpkg_cmake_config_fixup)
  cmake_parse_arguments(PARSE_ARGV 0 ARG "" CONFIG_PATH "")
  message(NOTICE "config ${ARG_CONFIG_PATH}")
endfunction()

function(vcpkg_copy_tools)
  cmake_parse_arguments(PARSE_ARGV 0 ARG AUTO_CLEAN "" TOOL_NAMES)
  foreach(program ${ARG_TOOL_NAMES})
    message(NOTICE "program ${program}")
  endforeach()
endfunction()

function(vcpkg_cmake_install)
endfunction()

function(vcpkg_fixup_pkgconfig)
endfunction()

function(vcpkg_install_copyright)
  cmake_parse_arguments(PARSE_ARGV 0 ARG "" COMMENT FILE_LIST)
  file(INSTALL ${ARG_FILE_LIST} DESTINATION ${CURRENT_PACKAGES_DIR}/share/${PORT})
endfunction()

include(${PORTFILE})
