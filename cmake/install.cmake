# The header, the library, and its descriptions for CMake and pkg-config. The installed tree may be moved as a whole.
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/zumcc)
install(TARGETS zumcc EXPORT zumcc
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
install(FILES ${CMAKE_CURRENT_SOURCE_DIR}/include/zumcc.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)

# The shared library needs nothing of its users; the static one needs what it is built on.
install(EXPORT zumcc NAMESPACE zumcc:: FILE zumcc-targets.cmake DESTINATION ${package_dir} COMPONENT development)
if(ZUM_STATIC)
  set(config static-config.cmake)
  set(pc_libs " -lhwy -lstdc++ -lm -lgomp -lpthread")
else()
  set(config shared-config.cmake)
endif()
install(FILES ${CMAKE_CURRENT_LIST_DIR}/${config} DESTINATION ${package_dir} RENAME zumcc-config.cmake
        COMPONENT development)
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/zumcc-config-version.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/zumcc-config-version.cmake DESTINATION ${package_dir} COMPONENT development)

file(RELATIVE_PATH pc_prefix ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" pc_prefix "${pc_prefix}")
configure_file(${CMAKE_CURRENT_LIST_DIR}/zumcc.pc.in ${CMAKE_CURRENT_BINARY_DIR}/zumcc.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/zumcc.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
        COMPONENT development)

# Debian packages, by cpack: the library, and what is needed to build with it.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_CONTACT "The maintainers of zumcc <maintainers@zumcc.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "bit-exact colour conversion for images and video")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL runtime development)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libzumcck4-${PROJECT_VERSION})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libzumcc-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "libzumcck4-${PROJECT_VERSION} (= ${PROJECT_VERSION})")
include(CPack)

# Programs outside the tree would have to be built with the sanitizers too.
if(ZUM_BUILD_TESTS AND NOT ZUM_SANITIZE AND NOT CMAKE_CROSSCOMPILING)
  add_subdirectory(tests/consumer)
endif()
