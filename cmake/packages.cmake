# What a desktop and a shell find the programs by, and the Debian packages:
# cpack -G DEB. They are made of static libraries.
set(packaging ${PROJECT_SOURCE_DIR}/packaging)
if(ZELWBR3_PROGRAMS)
  set(programs zelreport zelanalyzer)
  if(ZELWBR3_WEB)
    list(APPEND programs zelweb)
    install(FILES ${packaging}/zelweb.service DESTINATION lib/systemd/system COMPONENT programs)
  endif()
  if(ZELWBR3_DESKTOP)
    list(APPEND programs zelview)
    install(FILES ${packaging}/org.zelwbr3.zelview.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications COMPONENT programs)
    install(FILES ${packaging}/org.zelwbr3.zelview.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps COMPONENT programs)
    install(FILES ${packaging}/org.zelwbr3.zelview.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo COMPONENT programs)
  endif()
  # A page of the manual is what the program says with --help.
  find_program(ZELWBR3_HELP2MAN help2man)
  mark_as_advanced(ZELWBR3_HELP2MAN)
  set(manuals)
  set(does_zelreport "write pages of a database instance as HTML")
  set(does_zelanalyzer "evaluate a database instance in the background")
  set(does_zelweb "show the state of database instances in any browser")
  set(does_zelview "show the state of a database instance in a window")
  foreach(program IN LISTS programs)
    install(FILES ${packaging}/completion.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions
      RENAME ${program} COMPONENT programs)
    if(ZELWBR3_HELP2MAN)
      set(manual ${CMAKE_CURRENT_BINARY_DIR}/man/${program}.1)
      add_custom_command(OUTPUT ${manual}
        COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_CURRENT_BINARY_DIR}/man
        COMMAND ${ZELWBR3_HELP2MAN} --no-info --locale=C.UTF-8 --name=${does_${program}} --output=${manual} $<TARGET_FILE:zelwbr3_${program}>
        DEPENDS zelwbr3_${program}
        COMMENT "Writing the manual of ${program}" VERBATIM)
      list(APPEND manuals ${manual})
    endif()
  endforeach()
  if(manuals)
    add_custom_target(zelwbr3_manuals ALL DEPENDS ${manuals})
    install(FILES ${manuals} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT programs)
  endif()
endif()

# What scripts/reference has written.
set(ZELWBR3_REFERENCE "" CACHE PATH "A folder with the reference of the public headers, to be installed")
mark_as_advanced(ZELWBR3_REFERENCE)
if(ZELWBR3_REFERENCE)
  install(DIRECTORY ${ZELWBR3_REFERENCE}/ DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/libzelwbr3-doc/html COMPONENT doc)
endif()

if(NOT PROJECT_IS_TOP_LEVEL OR BUILD_SHARED_LIBS)
  return()
endif()
set(CPACK_PACKAGE_NAME zelwbr3)
set(CPACK_PACKAGE_CONTACT "zelwbr3 developers <zelwbr3@users.noreply.github.com>")
set(CPACK_PACKAGE_VENDOR "zelwbr3 developers")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
# The default is not put before the packages' own synopses.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_NAME} built using CMake")
set(CPACK_COMPONENTS_ALL programs data dev)
if(ZELWBR3_DESKTOP)
  list(APPEND CPACK_COMPONENTS_ALL desktop)
endif()
if(ZELWBR3_REFERENCE)
  list(APPEND CPACK_COMPONENTS_ALL doc)
endif()
set(CPACK_PRE_BUILD_SCRIPTS ${packaging}/finish-packages.cmake)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS OFF)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(CPACK_DEBIAN_PROGRAMS_PACKAGE_NAME zelwbr3)
set(CPACK_DEBIAN_PROGRAMS_PACKAGE_SECTION database)
set(CPACK_DEBIAN_PROGRAMS_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PROGRAMS_PACKAGE_DEPENDS "zelwbr3-data (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_PROGRAMS_DEBUGINFO_PACKAGE ON)
set(CPACK_COMPONENT_PROGRAMS_DESCRIPTION "state of database instances as pages
zelview shows the state of a PostgreSQL server or a SQLite database file in
a window, zelweb in any browser, zelreport writes the same pages as HTML or
a line for monitoring, and zelanalyzer writes figures at intervals.")

set(CPACK_DEBIAN_DATA_PACKAGE_NAME zelwbr3-data)
set(CPACK_DEBIAN_DATA_PACKAGE_SECTION database)
set(CPACK_DEBIAN_DATA_PACKAGE_ARCHITECTURE all)
set(CPACK_COMPONENT_DATA_DESCRIPTION "state of database instances as pages - page files and help
The page files that zelview, zelreport and programs with the control of zelwbr3
show, and the topics of their help.")

set(CPACK_DEBIAN_DEV_PACKAGE_NAME libzelwbr3-dev)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS "zelwbr3-data (= ${PROJECT_VERSION}), libgumbo-dev, libsqlite3-dev, libpq-dev, libssl-dev, zlib1g-dev, libchm-dev")
set(CPACK_DEBIAN_DEV_PACKAGE_SUGGESTS "libzelwbr3-desktop, libzelwbr3-doc, libgtest-dev")
set(CPACK_COMPONENT_DEV_DESCRIPTION "browser control for database instances - development files
Headers, static libraries, CMake and pkg-config files of the control that
shows the state of a database instance as HTML pages: its core, the platform
without a screen, instances for SQLite, PostgreSQL and recordings, and a test
kit.")

set(CPACK_DEBIAN_DESKTOP_PACKAGE_NAME libzelwbr3-desktop)
set(CPACK_DEBIAN_DESKTOP_PACKAGE_SECTION libdevel)
string(REGEX REPLACE "^webkit2gtk" "libwebkit2gtk" webkit "${ZELWBR3_WEBKIT_MODULE}-dev")
set(CPACK_DEBIAN_DESKTOP_PACKAGE_DEPENDS
  "libzelwbr3-dev (= ${PROJECT_VERSION}), libwxgtk3.2-dev, ${webkit}")
set(CPACK_COMPONENT_DESKTOP_DESCRIPTION "browser control for database instances - wxWidgets development files
Headers and static library of the control's platform for programs with
wxWidgets, on WebKitGTK.")

set(CPACK_DEBIAN_DOC_PACKAGE_NAME libzelwbr3-doc)
set(CPACK_DEBIAN_DOC_PACKAGE_SECTION doc)
set(CPACK_DEBIAN_DOC_PACKAGE_ARCHITECTURE all)
set(CPACK_COMPONENT_DOC_DESCRIPTION "browser control for database instances - reference
The public headers of zelwbr3 and how a program embeds the control, as HTML.")
include(CPack)
