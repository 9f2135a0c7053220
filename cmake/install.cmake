# What is installed, in the components lib, dev, tools and doc, and how other projects find it: a CMake package, a
# pkg-config file, and the target uninstall.
include(CMakePackageConfigHelpers)

install(TARGETS vexlor_shared vexlor_static EXPORT vexlor
    LIBRARY COMPONENT lib NAMELINK_COMPONENT dev
    ARCHIVE COMPONENT dev
)
install(FILES include/vexlor.h include/vexlor.hpp include/vexlor_detail.hpp include/vexlor_parallel.hpp
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT dev)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/vexlor)
install(EXPORT vexlor NAMESPACE vexlor:: FILE vexlorTargets.cmake DESTINATION ${package_dir} COMPONENT dev)
write_basic_package_version_file(vexlorConfigVersion.cmake COMPATIBILITY SameMajorVersion)
configure_package_config_file(cmake/vexlorConfig.cmake.in vexlorConfig.cmake INSTALL_DESTINATION ${package_dir})
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/vexlorConfig.cmake ${CMAKE_CURRENT_BINARY_DIR}/vexlorConfigVersion.cmake
        DESTINATION ${package_dir} COMPONENT dev)

# Relative to where the file lies, so that an installed tree may be moved.
file(RELATIVE_PATH pc_prefix /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
string(REGEX REPLACE "/$" "" pc_prefix "${pc_prefix}")
configure_file(cmake/vexlor.pc.in vexlor.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/vexlor.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT dev)

set(doc_dir ${CMAKE_INSTALL_DATAROOTDIR}/doc/libvexlor-doc)
# Laid out as in the sources, so that the pages' links lead somewhere; without what the pages are made with.
install(DIRECTORY docs DESTINATION ${doc_dir} COMPONENT doc
        FILES_MATCHING PATTERN "*.md" PATTERN "*.png" PATTERN "*.svg" PATTERN "bench.json" PATTERN reference EXCLUDE)
install(DIRECTORY examples DESTINATION ${doc_dir} COMPONENT doc PATTERN CMakeLists.txt EXCLUDE PATTERN "*.sha256" EXCLUDE)
install(FILES README.md SECURITY.md CONTRIBUTING.md DESTINATION ${doc_dir} COMPONENT doc)

if(PROJECT_IS_TOP_LEVEL)
    configure_file(cmake/uninstall.cmake.in uninstall.cmake @ONLY)
    add_custom_target(uninstall COMMAND ${CMAKE_COMMAND} -P ${CMAKE_CURRENT_BINARY_DIR}/uninstall.cmake
                      COMMENT "Removing what the last install put into place")
endif()
