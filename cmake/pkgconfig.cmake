# Writes and installs the pkg-config file of ${component}, with the libraries
# ${targets}, for programs that are not built with CMake. Its paths are relative to
# where the file is. Headers of wxWidgets come from wx-config.
file(RELATIVE_PATH prefix ${CMAKE_INSTALL_PREFIX}/${pkgconfig} ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" prefix ${prefix})
set(description_core "the control and its pages")
set(description_headless "platform without a screen")
set(description_desktop "platform on wxWidgets and WebKit; add wx-config --cxxflags --libs")
set(description_sqlite "SQLite database files as instances")
set(description_recorded "recordings of instances")
set(description_postgres "PostgreSQL servers as instances")
set(description_web "platform for browsers elsewhere")
set(description_testing "test kit for authors of instances and pages")
set(requires_core)
set(requires_headless zelwbr3-core gumbo)
set(requires_desktop zelwbr3-core ${ZELWBR3_WEBKIT_MODULE})
set(requires_sqlite zelwbr3-core sqlite3)
set(requires_recorded zelwbr3-core)
set(requires_postgres zelwbr3-core libpq)
set(requires_web zelwbr3-core openssl zlib)
set(requires_testing zelwbr3-headless zelwbr3-recorded gtest)
# A shared library knows what it needs itself.
if(BUILD_SHARED_LIBS)
  list(FILTER requires_${component} INCLUDE REGEX "^(zelwbr3-|gtest)")
endif()
list(JOIN requires_${component} ", " requires)

# Those that need others come first.
set(libraries)
foreach(target IN LISTS targets)
  if(NOT target STREQUAL zelwbr3_ZELLib3)
    list(PREPEND libraries -l${target})
  endif()
endforeach()
if(component STREQUAL core)
  set(libraries -lzelwbr3_remote -lzelwbr3_core -lzelwbr3_instances_common -lzelwbr3_base)
elseif(component MATCHES "^(desktop|web)$" AND NOT BUILD_SHARED_LIBS)
  list(APPEND libraries -lchm)
endif()
list(JOIN libraries " " libraries)
set(description ${description_${component}})

file(CONFIGURE OUTPUT zelwbr3-${component}.pc @ONLY CONTENT [[
prefix=${pcfiledir}/@prefix@
libdir=${prefix}/@CMAKE_INSTALL_LIBDIR@
includedir=${prefix}/@CMAKE_INSTALL_INCLUDEDIR@
htmldir=${prefix}/@CMAKE_INSTALL_DATADIR@/zelwbr3/html

Name: zelwbr3-@component@
Description: zelwbr3: @description@
Version: @PROJECT_VERSION@
Requires: @requires@
Libs: -L${libdir} @libraries@
Cflags: -I${includedir}
]])
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/zelwbr3-${component}.pc DESTINATION ${pkgconfig} COMPONENT ${package})
