# moxelcore_module(NAME DEPENDS ... SOURCES ... TESTS ...)
#
# A module of the library: an OBJECT library of its sources, and its tests. DEPENDS names the modules below it.

set_property(GLOBAL PROPERTY MOXELCORE_MODULES "")
set_property(GLOBAL PROPERTY MOXELCORE_TESTS "")

function(moxelcore_module name)
    cmake_parse_arguments(PARSE_ARGV 1 module "" "" "DEPENDS;SOURCES;TESTS")
    set(target moxelcore_${name})
    add_library(${target} OBJECT ${module_SOURCES})
    target_include_directories(${target} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR}/include ${PROJECT_SOURCE_DIR})
    target_link_libraries(${target} PUBLIC Boost::headers TBB::tbb PkgConfig::libcpuid Eigen3::Eigen
        Boost::serialization Boost::filesystem PRIVATE moxelcore_options)
    foreach(dependency ${module_DEPENDS})
        target_include_directories(${target} PUBLIC ${PROJECT_SOURCE_DIR}/${dependency}/include)
    endforeach()

    list(TRANSFORM module_TESTS PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/test/)
    set_property(GLOBAL APPEND PROPERTY MOXELCORE_MODULES ${name})
    set_property(GLOBAL APPEND PROPERTY MOXELCORE_TESTS ${module_TESTS})
endfunction()

# Links the objects of all modules into a target, with all that they need.
function(moxelcore_link_modules target)
    get_property(modules GLOBAL PROPERTY MOXELCORE_MODULES)
    foreach(module ${modules})
        target_link_libraries(${target} PRIVATE moxelcore_${module} moxelcore_options)
        target_include_directories(${target} PUBLIC
            $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/${module}/include>)
    endforeach()
    target_link_libraries(${target} PUBLIC Boost::headers)
endfunction()
