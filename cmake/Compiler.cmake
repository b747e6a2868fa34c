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

# What ccache has to be told for headers that are compiled before (see below).
find_program(CCACHE ccache)
if(CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER env CCACHE_SLOPPINESS=pch_defines,time_macros ${CCACHE})
endif()

find_program(MOLD mold)
if(MOLD)
    add_link_options(-fuse-ld=mold)
endif()

# Nobody replaces functions of our libraries, so that they may be inlined there.
add_compile_options(-fno-semantic-interposition)
add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wconversion)
# g++ 12 warns of std::string's own "text" + string at -O3 (GCC bug 105651).
add_compile_options($<$<AND:$<CXX_COMPILER_ID:GNU>,$<CONFIG:Release>>:-Wno-restrict>)
option(WARNINGS_AS_ERRORS "Refuse code that the compiler warns of" OFF)
set(CMAKE_COMPILE_WARNING_AS_ERROR ${WARNINGS_AS_ERRORS})

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

# Headers that most files need are read once for each library. No file relies on that: each includes
# what it uses, and the presets "tsan" and "package" do without (CMAKE_DISABLE_PRECOMPILE_HEADERS).
# None of CLI11, spdlog or Boost.Asio is among them: each makes objects of its own in every file that
# sees it, which takes the compiler longer than reading the header.
set(standard_headers
    <algorithm> <atomic> <chrono> <cstdint> <filesystem> <functional> <map> <memory> <mutex>
    <optional> <set> <stdexcept> <string> <string_view> <utility> <vector>)
# ccache needs these to know such a header again.
add_compile_options(
    $<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>
    "$<$<CXX_COMPILER_ID:Clang>:SHELL:-Xclang -fno-pch-timestamp>")
