# The programs the build runs to write bundle files. A native build runs its
# own; a cross build cannot run what it builds, so it builds them once more
# for this machine, in a build of its own.
#
# Sets WAKELOFT_LAUNCHD_PLIST_WRITER (the command) and
# WAKELOFT_LAUNCHD_PLIST_WRITER_DEPENDS (what a step that runs it depends on).
if(NOT CMAKE_CROSSCOMPILING)
  set(WAKELOFT_LAUNCHD_PLIST_WRITER $<TARGET_FILE:write_launchd_plist>)
  set(WAKELOFT_LAUNCHD_PLIST_WRITER_DEPENDS write_launchd_plist)
  return()
endif()

include(ExternalProject)
set(host_tools_dir ${CMAKE_BINARY_DIR}/host-tools)
set(WAKELOFT_LAUNCHD_PLIST_WRITER ${host_tools_dir}/tools/write_launchd_plist)
ExternalProject_Add(host_tools
  SOURCE_DIR ${PROJECT_SOURCE_DIR}
  BINARY_DIR ${host_tools_dir}
  CMAKE_ARGS -DCMAKE_BUILD_TYPE=Release -DWAKELOFT_TESTS=OFF
  CMAKE_CACHE_ARGS -DCMAKE_TOOLCHAIN_FILE:FILEPATH=
  BUILD_COMMAND ${CMAKE_COMMAND} --build <BINARY_DIR> --target write_launchd_plist
  BUILD_ALWAYS ON
  BUILD_BYPRODUCTS ${WAKELOFT_LAUNCHD_PLIST_WRITER}
  INSTALL_COMMAND ""
)
set(WAKELOFT_LAUNCHD_PLIST_WRITER_DEPENDS host_tools ${WAKELOFT_LAUNCHD_PLIST_WRITER})
