# What Debian wants in every package, put in before it is packed: the licences, the
# changelog, libraries without debug information (that of the programs goes into
# zelwbr3-dbgsym), compressed pages of the manual, and modes that do not come from
# the umask of whoever builds.
foreach(pair programs:zelwbr3 data:zelwbr3-data dev:libzelwbr3-dev desktop:libzelwbr3-desktop doc:libzelwbr3-doc)
  string(REPLACE ":" ";" pair ${pair})
  list(GET pair 0 component)
  list(GET pair 1 package)
  set(root ${CPACK_TEMPORARY_DIRECTORY}/${component})
  if(NOT IS_DIRECTORY ${root})
    continue()
  endif()
  set(doc ${root}/usr/share/doc/${package})
  file(MAKE_DIRECTORY ${doc})
  file(COPY ${CMAKE_CURRENT_LIST_DIR}/copyright DESTINATION ${doc})
  file(WRITE ${doc}/changelog "zelwbr3 (${CPACK_PACKAGE_VERSION}) unstable; urgency=medium\n\n"
    "  * New version; its changes stand in CHANGELOG.md of the source.\n\n"
    " -- ${CPACK_PACKAGE_CONTACT}  Sun, 22 Nov 2026 00:00:00 +0000\n")
  file(GLOB manuals ${root}/usr/share/man/man1/*.1)
  foreach(file IN LISTS manuals ITEMS ${doc}/changelog)
    execute_process(COMMAND gzip -9nf ${file} COMMAND_ERROR_IS_FATAL ANY)
  endforeach()
  file(GLOB_RECURSE archives ${root}/*.a)
  foreach(archive IN LISTS archives)
    execute_process(COMMAND strip --strip-debug --enable-deterministic-archives ${archive} COMMAND_ERROR_IS_FATAL ANY)
  endforeach()
  execute_process(COMMAND chmod -R u=rwX,go=rX ${root} COMMAND_ERROR_IS_FATAL ANY)
endforeach()
