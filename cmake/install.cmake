# The header, the library, and its descriptions for CMake and pkg-config. The installed tree may be moved as a whole.
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/zumcc)
install(TARGETS zumcc EXPORT zumcc LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(FILES ${CMAKE_CURRENT_SOURCE_DIR}/include/zumcc.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

# The library needs nothing of its users, so the list of targets is the whole package.
install(EXPORT zumcc NAMESPACE zumcc:: FILE zumcc-config.cmake DESTINATION ${package_dir})
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/zumcc-config-version.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/zumcc-config-version.cmake DESTINATION ${package_dir})

file(RELATIVE_PATH pc_prefix ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" pc_prefix "${pc_prefix}")
configure_file(${CMAKE_CURRENT_LIST_DIR}/zumcc.pc.in ${CMAKE_CURRENT_BINARY_DIR}/zumcc.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/zumcc.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

# Programs outside the tree would have to be built with the sanitizers too.
if(ZUM_BUILD_TESTS AND NOT ZUM_SANITIZE)
  add_subdirectory(tests/consumer)
endif()
