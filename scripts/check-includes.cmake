# Fails if a source file includes what its folder may not include, or if folders
# include each other in a circle. From the ground up:
#   base <- ZELLib3 <- instances
#   base <- platform, dom <- framework (with ZELLib3) <- pages <- shell <- headless, desktop <- host
#   framework <- remote <- desktop, web
# Instances only see the interface that they implement and what they share, the
# core only itself and the C++ standard library, and each vendor library belongs
# to one leaf folder. docs/architecture.md has the same rules as a table.
cmake_minimum_required(VERSION 3.25)

set(may_base base)
set(may_ZELLib3 base ZELLib3)
set(may_platform base platform)
set(may_dom base dom)
set(may_framework base ZELLib3 platform dom framework)
set(may_pages ${may_framework} pages)
set(may_shell ${may_pages} shell)
set(may_headless ${may_shell} headless)
set(may_remote base platform dom framework remote)
set(may_desktop ${may_shell} remote desktop)
set(may_web ${may_shell} remote web)
set(may_instances_common base ZELLib3 instances/common)
set(may_instances_recorded ${may_instances_common} instances/recorded)
set(may_instances_sqlite ${may_instances_common} instances/sqlite)
set(may_instances_postgres ${may_instances_common} instances/postgres)
set(may_testing ${may_headless} instances/recorded testing)
set(may_host ${may_shell} headless remote desktop web instances)

# Vendor and system headers, by the folder that may include them.
set(vendor_headless "gumbo\\.h")
set(vendor_desktop "(wx|webkit2|gtk|gdk|glib|gio|jsc)/.*|webkit2/.*|chm_lib\\.h|glib\\.h|(unistd|fcntl)\\.h|sys/.*")
set(vendor_web "boost/(asio|beast|system)/.*|boost/(asio|beast)\\.hpp|openssl/.*|zlib\\.h")
set(vendor_instances_common "(unistd|fcntl|pwd|signal|spawn|dirent)\\.h|sys/.*")
set(vendor_instances_recorded "nlohmann/.*")
set(vendor_instances_sqlite "sqlite3\\.h|${vendor_instances_common}")
set(vendor_instances_postgres "libpq-fe\\.h|(poll|time)\\.h|${vendor_instances_common}")
set(vendor_testing "gtest/.*|nlohmann/.*")
set(vendor_host "nlohmann/.*|CLI/.*|wx/.*|(unistd|fcntl)\\.h|sys/.*")

set(wrong 0)
set(arrows)
foreach(folder base ZELLib3 platform dom framework pages shell remote headless desktop web
    instances/common instances/recorded instances/sqlite
    instances/postgres testing host)
  string(REPLACE "/" "_" key ${folder})
  set(root zelwbr3/)
  if(folder STREQUAL host)
    set(root)
  endif()
  file(GLOB_RECURSE files RELATIVE ${CMAKE_SOURCE_DIR} ${root}${folder}/*.h ${root}${folder}/*.cpp)
  foreach(path IN LISTS files)
    cmake_path(GET path PARENT_PATH room)
    file(STRINGS ${path} includes REGEX "^[ \t]*#[ \t]*include")
    foreach(line IN LISTS includes)
      set(ok FALSE)
      if(line MATCHES "\"([^\"]+)\"")
        set(header ${CMAKE_MATCH_1})
        foreach(allowed IN LISTS may_${key})
          if(header MATCHES "^zelwbr3/${allowed}/")
            set(ok TRUE)
          endif()
        endforeach()
        if(folder STREQUAL host AND header MATCHES "^host/")
          set(ok TRUE)
        endif()
        cmake_path(GET header PARENT_PATH other)
        list(APPEND arrows "${room} ${other}")
      elseif(line MATCHES "<([a-z_0-9]+)>")
        set(ok TRUE)  # headers of the standard library have no extension
      elseif(line MATCHES "<([^>]+)>" AND DEFINED vendor_${key})
        set(header ${CMAKE_MATCH_1})
        if(header MATCHES "^(${vendor_${key}})$")
          set(ok TRUE)
        endif()
      endif()
      if(NOT ok)
        message(SEND_ERROR "${path}: not allowed in ${folder}/: ${line}")
        set(wrong 1)
      endif()
    endforeach()
  endforeach()
endforeach()
if(wrong)
  message(FATAL_ERROR "Some includes break the dependency rules in docs/architecture.md.")
endif()

# tsort fails on a circle and names its members.
list(REMOVE_DUPLICATES arrows)
execute_process(COMMAND ${CMAKE_COMMAND} -E echo ${arrows} COMMAND tsort
  OUTPUT_QUIET ERROR_VARIABLE circle RESULT_VARIABLE failed)
if(failed)
  message(FATAL_ERROR "Folders include each other in a circle:\n${circle}")
endif()
