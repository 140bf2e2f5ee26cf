# Debian packages of the library, the development files and the host: cpack --config build/release/CPackConfig.cmake

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_CONTACT "The Moxelcore developers <moxelcore@localhost>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL library development)
if(TARGET moxel)
    list(APPEND CPACK_COMPONENTS_ALL host)
endif()
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}) # where the host finds the library
set(CPACK_DEBIAN_PACKAGE_SECTION science)

set(version ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME libmoxelcore${version})
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libmoxelcore-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "libmoxelcore${version} (= ${PROJECT_VERSION}), libboost-dev")
set(CPACK_DEBIAN_HOST_PACKAGE_NAME moxel)
set(CPACK_DEBIAN_HOST_PACKAGE_DEPENDS "libmoxelcore${version} (= ${PROJECT_VERSION})")

set(CPACK_COMPONENT_LIBRARY_DESCRIPTION "Voxel image processing: the shared library")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "Voxel image processing: headers, and files for CMake and pkg-config")
set(CPACK_COMPONENT_HOST_DESCRIPTION "Voxel image processing: the command-line program")
include(CPack)
