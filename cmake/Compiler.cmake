# How all of our code is compiled.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)

if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE RelWithDebInfo CACHE STRING "" FORCE)
endif()

find_program(CCACHE ccache)
if(CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE})
endif()

# Nobody replaces functions of our libraries, so that they may be inlined there.
add_compile_options(-fno-semantic-interposition)
add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
# g++ 12 warns of std::string's own "text" + string at -O3 (GCC bug 105651).
add_compile_options($<$<AND:$<CXX_COMPILER_ID:GNU>,$<CONFIG:Release>>:-Wno-restrict>)

# What nothing refers to, mostly of templates, takes memory beside what is used.
add_compile_options("$<$<CONFIG:Release>:-ffunction-sections;-fdata-sections>")
add_link_options($<$<CONFIG:Release>:-Wl,--gc-sections>)

set(SANITIZE "" CACHE STRING "Sanitizers to build with, as for -fsanitize=, for example address,undefined")
if(SANITIZE)
    add_compile_options(-fsanitize=${SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${SANITIZE})
endif()

# Quoted includes start at the root: "engine/DRAVEngine.h".
include_directories(${CMAKE_SOURCE_DIR})
