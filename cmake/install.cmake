# What a program that embeds the control needs: headers, libraries, page files.
include(CMakePackageConfigHelpers)

set(targets zelwbr3_base zelwbr3_ZELLib3 zelwbr3_core zelwbr3_remote zelwbr3_headless zelwbr3_instances_common zelwbr3_recorded zelwbr3_sqlite)
set(programs zelreport zelanalyzer)
set(headers base ZELLib3 platform dom framework pages shell remote headless instances)
if(ZELWBR3_POSTGRES)
  list(APPEND targets zelwbr3_postgres)
endif()
if(ZELWBR3_DESKTOP)
  list(APPEND targets zelwbr3_desktop zelwbr3_wx)
  list(APPEND programs zelview)
  list(APPEND headers desktop)
endif()

foreach(program IN LISTS programs)
  if(TARGET ${program})
    install(TARGETS ${program})
  endif()
endforeach()
install(TARGETS ${targets} EXPORT zelwbr3-targets ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
foreach(folder IN LISTS headers)
  install(DIRECTORY zelwbr3/${folder} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/zelwbr3 FILES_MATCHING PATTERN "*.h")
endforeach()
install(DIRECTORY html/ DESTINATION ${CMAKE_INSTALL_DATADIR}/zelwbr3/html PATTERN "*.md" EXCLUDE)

set(config ${CMAKE_INSTALL_LIBDIR}/cmake/zelwbr3)
install(EXPORT zelwbr3-targets NAMESPACE zelwbr3:: DESTINATION ${config})
configure_package_config_file(cmake/zelwbr3-config.cmake.in zelwbr3-config.cmake INSTALL_DESTINATION ${config}
  PATH_VARS CMAKE_INSTALL_DATADIR)
write_basic_package_version_file(zelwbr3-config-version.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/zelwbr3-config.cmake ${CMAKE_CURRENT_BINARY_DIR}/zelwbr3-config-version.cmake
  DESTINATION ${config})
