# Run by cpack before it packs what was installed: adds what a Debian package has in share/doc, and puts the texts where Debian has them.
set(debian ${CMAKE_CURRENT_LIST_DIR}/../packaging/debian)
foreach(component IN LISTS CPACK_COMPONENTS_ALL)
  string(TOUPPER ${component} variable)
  set(share ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/${component}/usr/share)
  set(doc ${share}/doc/${CPACK_DEBIAN_${variable}_PACKAGE_NAME})
  file(COPY ${debian}/copyright ${debian}/changelog DESTINATION ${doc}
    FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
  file(GLOB manuals ${share}/man/man1/*.1)
  execute_process(COMMAND gzip --best --no-name ${doc}/changelog ${manuals} COMMAND_ERROR_IS_FATAL ANY)
  # Debian's zsh does not look into site-functions below /usr.
  if(EXISTS ${share}/zsh/site-functions)
    file(RENAME ${share}/zsh/site-functions ${share}/zsh/vendor-completions)
  endif()
endforeach()
