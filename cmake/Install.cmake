# The install tree: library, public headers, the package files for find_package and pkg-config.

include(CMakePackageConfigHelpers)

set(packageDir ${CMAKE_INSTALL_LIBDIR}/cmake/Moxelcore)

target_compile_features(Moxelcore PUBLIC cxx_std_20)
target_include_directories(Moxelcore PUBLIC $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)

install(TARGETS Moxelcore EXPORT MoxelcoreTargets LIBRARY COMPONENT library NAMELINK_COMPONENT development)

get_property(modules GLOBAL PROPERTY MOXELCORE_MODULES)
foreach(module ${modules})
    install(DIRECTORY ${PROJECT_SOURCE_DIR}/${module}/include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
        COMPONENT development)
endforeach()

install(EXPORT MoxelcoreTargets NAMESPACE Moxelcore:: DESTINATION ${packageDir} COMPONENT development)
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/MoxelcoreConfig.cmake.in
    ${PROJECT_BINARY_DIR}/MoxelcoreConfig.cmake INSTALL_DESTINATION ${packageDir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/MoxelcoreConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/MoxelcoreConfig.cmake ${PROJECT_BINARY_DIR}/MoxelcoreConfigVersion.cmake
    DESTINATION ${packageDir} COMPONENT development)

# Told relative to the file itself, so that the tree may be moved.
file(RELATIVE_PATH prefixFromPkgConfig /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
configure_file(${CMAKE_CURRENT_LIST_DIR}/moxelcore.pc.in ${PROJECT_BINARY_DIR}/moxelcore.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/moxelcore.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
