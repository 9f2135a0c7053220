# Debian packages by CPack, one per component, of a build that is to be installed below /usr: cmake --preset package,
# cmake --build --preset package, then cpack in its build folder.
set(VEXLOR_MAINTAINER "the libvexlor authors <libvexlor@localhost>" CACHE STRING "Maintainer named in the packages")
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME libvexlor)
set(CPACK_PACKAGE_CONTACT "${VEXLOR_MAINTAINER}")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_COMPONENTS_ALL lib dev doc)
if(VEXLOR_TOOLS)
    list(APPEND CPACK_COMPONENTS_ALL tools)
endif()
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
if(CMAKE_SIZEOF_VOID_P EQUAL 4 AND CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|i.86")
    set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE i386)
endif()
set(full_version ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})

set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # each package has its own
function(vexlor_package component name section synopsis extended)
    string(TOUPPER ${component} component)
    set(CPACK_DEBIAN_${component}_PACKAGE_NAME ${name} PARENT_SCOPE)
    set(CPACK_DEBIAN_${component}_PACKAGE_SECTION ${section} PARENT_SCOPE)
    set(CPACK_COMPONENT_${component}_DESCRIPTION "software blitter for pixels in ordinary memory${synopsis}
Fills, copies, blends, converts and scales rectangles of 565, YUV 4:2:2 and
32-bit RGB pixels without a graphics processor. It needs the C library alone.

${extended}" PARENT_SCOPE)
endfunction()
vexlor_package(lib libvexlor1 libs "" "This is the shared library.")
vexlor_package(dev libvexlor-dev libdevel " - development files"
"The headers for C and C++, the static library, and files for CMake and
pkg-config.")
vexlor_package(tools vexlor-tools graphics " - command-line tool and viewer"
"The program vexlor draws with the library, on PNG, JPEG and raw files.
The viewer vexlor-view shows them and raw streams, and compares settings.")
vexlor_package(doc libvexlor-doc doc " - documentation"
"What the library's numbers mean, and example programs.")

set(CPACK_DEBIAN_LIB_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS "libvexlor1 (= ${full_version})")
set(CPACK_DEBIAN_DEV_PACKAGE_SUGGESTS libvexlor-doc)
set(CPACK_DEBIAN_DOC_PACKAGE_ARCHITECTURE all)

# Every name since which version: from the version map.
set(package_files ${CMAKE_CURRENT_BINARY_DIR}/package)
set(symbols "libvexlor.so.${PROJECT_VERSION_MAJOR} libvexlor1 (>= 1.0.0)\n VEXLOR_1@VEXLOR_1 1.0.0\n")
file(READ src/vexlor.map map)
string(REGEX MATCHALL "\n    (vexlor|VEXLOR)_[A-Za-z0-9_]+" names "${map}")
foreach(name IN LISTS names)
    string(STRIP "${name}" name)
    string(APPEND symbols " ${name}@VEXLOR_1 1.0.0\n")
endforeach()
file(WRITE ${package_files}/symbols "${symbols}")
file(WRITE ${package_files}/shlibs "libvexlor ${PROJECT_VERSION_MAJOR} libvexlor1 (>= 1.0.0)\n")
file(WRITE ${package_files}/triggers "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_LIB_PACKAGE_CONTROL_EXTRA
    "${package_files}/symbols;${package_files}/shlibs;${package_files}/triggers")

# Every package has a copyright file and a changelog. gzip without name and time: the same bytes in every build.
file(READ LICENSE license)
string(REGEX REPLACE "^MIT License\n\nCopyright \\(c\\) ([^\n]*)\n\n" "" license "${license}")
set(holder "${CMAKE_MATCH_1}")
string(REGEX REPLACE "\n\n" "\n.\n" license "${license}")
string(REGEX REPLACE "\n$" "" license "${license}")
string(REPLACE "\n" "\n " license "${license}")
file(WRITE ${package_files}/copyright "Format: https://www.debian.org/doc/packaging-manuals/copyright-format/1.0/
Upstream-Name: libvexlor

Files: *
Copyright: ${holder}
License: Expat
 ${license}
")
configure_file(packaging/changelog.in ${package_files}/changelog.Debian @ONLY)
execute_process(COMMAND gzip -9nc ${package_files}/changelog.Debian
                OUTPUT_FILE ${package_files}/changelog.Debian.gz COMMAND_ERROR_IS_FATAL ANY)
foreach(pair lib:libvexlor1 dev:libvexlor-dev tools:vexlor-tools doc:libvexlor-doc)
    string(REPLACE ":" ";" pair ${pair})
    list(GET pair 0 component)
    list(GET pair 1 name)
    install(FILES ${package_files}/copyright ${package_files}/changelog.Debian.gz
            DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/${name} COMPONENT ${component})
endforeach()
# CPack writes scripts that call ldconfig, beside the trigger.
file(WRITE ${package_files}/libvexlor1 "libvexlor1: maintscript-calls-ldconfig *\n")
install(FILES ${package_files}/libvexlor1 DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/lintian/overrides COMPONENT lib)
include(CPack)

enable_testing()
if(VEXLOR_TOOLS)
    add_test(NAME package.debs
        COMMAND sh ${PROJECT_SOURCE_DIR}/tests/package/debs.sh ${PROJECT_BINARY_DIR} ${CMAKE_CPACK_COMMAND}
                ${PROJECT_SOURCE_DIR})
endif()
