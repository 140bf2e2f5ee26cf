# Options of every target of the project; none of them reaches a user of the library.

if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE Release)
endif()

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

add_library(moxelcore_options INTERFACE)
target_compile_options(moxelcore_options INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    target_compile_options(moxelcore_options INTERFACE -Wno-restrict) # false alarms of g++ 12 at "text" + std::string
else()
    target_compile_options(moxelcore_options INTERFACE -Wno-sign-conversion  # part of clang's -Wconversion only
                                                      -Wno-unknown-pragmas) # `GCC ivdep`
endif()
if(MOXELCORE_WARNINGS_AS_ERRORS)
    target_compile_options(moxelcore_options INTERFACE -Werror)
endif()
# To check each pointer for null and each object for its type takes about a quarter of the time to compile a test; the
# address sanitizer finds the former too.
if(MOXELCORE_SANITIZE)
    target_compile_options(moxelcore_options INTERFACE -fsanitize=${MOXELCORE_SANITIZE} -fno-sanitize=null,vptr
                                                      -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(moxelcore_options INTERFACE -fsanitize=${MOXELCORE_SANITIZE})
endif()
