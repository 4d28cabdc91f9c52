# What `cmake --install` puts where. Everything finds its neighbours from where it lies, so that the tree may be moved.
#
# Components: baseapi_runtime and hostkit_photos_runtime (the shared libraries), baseapi_development, quillbox, quillboxd.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(baseapi_config_dir ${CMAKE_INSTALL_LIBDIR}/cmake/baseapi)

# Exports a library as baseapi::<name>, each kind in the file <name>_<kind>.cmake of the package. The shared one is of the component.
function(baseapi_install_library name runtime)
  if(BASEAPI_BOTH_KINDS)
    set(kinds static shared)
  elseif(BUILD_SHARED_LIBS)
    set(kinds shared)
  else()
    set(kinds static)
  endif()
  foreach(kind ${kinds})
    set(target ${name})
    if(kind STREQUAL shared)
      set(target ${name}_shared)
    endif()
    set_target_properties(${target} PROPERTIES EXPORT_NAME ${name})
    if(NOT name STREQUAL baseapi)
      set_target_properties(${target} PROPERTIES INSTALL_RPATH $ORIGIN)
    endif()
    install(TARGETS ${target} EXPORT ${name}_${kind}
      ARCHIVE COMPONENT baseapi_development
      LIBRARY COMPONENT ${runtime} NAMELINK_COMPONENT baseapi_development
      INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
    install(EXPORT ${name}_${kind} NAMESPACE baseapi:: DESTINATION ${baseapi_config_dir} COMPONENT baseapi_development)
  endforeach()

  file(RELATIVE_PATH to_prefix /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/${name}.pc.in ${PROJECT_BINARY_DIR}/package/${name}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/package/${name}.pc
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT baseapi_development)
endfunction()

baseapi_install_library(baseapi baseapi_runtime)
baseapi_install_library(hostkit baseapi_runtime)
baseapi_install_library(hostkit_photos hostkit_photos_runtime)

install(CODE "
  set(source \"${PROJECT_SOURCE_DIR}\")
  set(include_dir \"${CMAKE_INSTALL_INCLUDEDIR}\")
  include(\"${PROJECT_SOURCE_DIR}/cmake/install_headers.cmake\")"
  COMPONENT baseapi_development)

configure_package_config_file(cmake/baseapiConfig.cmake.in ${PROJECT_BINARY_DIR}/package/baseapiConfig.cmake
  INSTALL_DESTINATION ${baseapi_config_dir} NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/package/baseapiConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES
  ${PROJECT_BINARY_DIR}/package/baseapiConfig.cmake ${PROJECT_BINARY_DIR}/package/baseapiConfigVersion.cmake
  cmake/quillboxd_test.cmake
  DESTINATION ${baseapi_config_dir} COMPONENT baseapi_development)

if(BASEAPI_PROGRAMS)
  install(TARGETS quillbox RUNTIME COMPONENT quillbox)
  install(TARGETS quillboxd RUNTIME COMPONENT quillboxd)
  set(texts ${PROJECT_BINARY_DIR}/package)
  install(FILES ${texts}/quillbox.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT quillbox)
  install(FILES docs/quillboxd.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT quillboxd)
  install(FILES ${texts}/quillbox.bash RENAME quillbox
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT quillbox)
  install(FILES ${texts}/quillbox.zsh RENAME _quillbox
    DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions COMPONENT quillbox)
  install(FILES ${texts}/quillbox.fish
    DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d COMPONENT quillbox)
endif()
