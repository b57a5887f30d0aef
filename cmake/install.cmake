# What a program that embeds the control needs, in four installation components,
# which are the packages: libraries (dev, and desktop for what needs a desktop's
# libraries), programs and data (page files and help).
include(CMakePackageConfigHelpers)

set(core base ZELLib3 core remote instances_common)
set(components core)
foreach(component headless recorded sqlite postgres desktop web testing)
  if(TARGET zelwbr3_${component})
    set(${component} ${component})
    list(APPEND components ${component})
  endif()
endforeach()

set(config ${CMAKE_INSTALL_LIBDIR}/cmake/zelwbr3)
set(pkgconfig ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
foreach(component IN LISTS components)
  set(package dev)
  if(component STREQUAL desktop)
    set(package desktop)
  endif()
  set(targets ${${component}})
  list(TRANSFORM targets PREPEND zelwbr3_)
  install(TARGETS ${targets} EXPORT zelwbr3-${component}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT ${package}
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT ${package} NAMELINK_COMPONENT ${package})
  install(EXPORT zelwbr3-${component} FILE zelwbr3-${component}-targets.cmake NAMESPACE zelwbr3:: DESTINATION ${config}
    COMPONENT ${package})
  include(${CMAKE_CURRENT_LIST_DIR}/pkgconfig.cmake)
endforeach()

# The headers that docs/public-headers.md names.
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS docs/public-headers.md)
file(STRINGS docs/public-headers.md rows REGEX "^\\| `zelwbr3/")
foreach(row IN LISTS rows)
  string(REGEX MATCH "zelwbr3/([A-Za-z0-9]+)/[^`]+" header ${row})
  set(component ${CMAKE_MATCH_1})
  if(component STREQUAL instances AND header MATCHES "instances/([a-z]+)/")
    set(component ${CMAKE_MATCH_1})
  endif()
  cmake_path(GET header PARENT_PATH folder)
  if(component STREQUAL desktop)
    set(package desktop)
  else()
    set(package dev)
  endif()
  if(component MATCHES "^(headless|desktop|web|testing|recorded|sqlite|postgres)$" AND NOT component IN_LIST components)
    continue()
  endif()
  install(FILES ${header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/${folder} COMPONENT ${package})
endforeach()

set(ZELWBR3_DATADIR ${CMAKE_INSTALL_DATADIR}/zelwbr3)
install(DIRECTORY html/ DESTINATION ${ZELWBR3_DATADIR}/html COMPONENT data PATTERN "*.md" EXCLUDE)
configure_package_config_file(cmake/zelwbr3-config.cmake.in zelwbr3-config.cmake INSTALL_DESTINATION ${config}
  PATH_VARS ZELWBR3_DATADIR NO_CHECK_REQUIRED_COMPONENTS_MACRO)
write_basic_package_version_file(zelwbr3-config-version.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/zelwbr3-config.cmake ${CMAKE_CURRENT_BINARY_DIR}/zelwbr3-config-version.cmake
  cmake/zelwbr3-dependencies.cmake DESTINATION ${config} COMPONENT dev)

if(PROJECT_IS_TOP_LEVEL)
  configure_file(cmake/uninstall.cmake.in uninstall.cmake @ONLY)
  add_custom_target(zelwbr3_uninstall COMMAND ${CMAKE_COMMAND} -P ${CMAKE_CURRENT_BINARY_DIR}/uninstall.cmake
    COMMENT "Removing what was installed" VERBATIM)
endif()

foreach(program zelreport zelanalyzer zelweb zelview)
  if(TARGET zelwbr3_${program})
    install(TARGETS zelwbr3_${program} COMPONENT programs)
  endif()
endforeach()
include(${CMAKE_CURRENT_LIST_DIR}/packages.cmake)
