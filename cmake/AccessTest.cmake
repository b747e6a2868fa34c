# access_test(<name> [THREADS] SOURCES <file>... LIBRARIES <target>...)
#
# One GoogleTest program build/bin/<name>; each of its cases is a test of ctest. THREADS says that
# threads run in it: its cases get the label "threads", and the target thread_tests builds it.

find_package(GTest REQUIRED)
include(GoogleTest)

add_custom_target(thread_tests)

# Matchers are slow to optimise, and nothing in a test needs it.
set(test_options $<$<NOT:$<CONFIG:Release>>:-O0>)

# The headers that most tests include are read once for all of them. This program is never run.
file(CONFIGURE OUTPUT test_headers.cpp CONTENT "int main() {}\n")
add_executable(test_headers ${CMAKE_CURRENT_BINARY_DIR}/test_headers.cpp)
target_link_libraries(test_headers PRIVATE GTest::gmock)
target_compile_options(test_headers PRIVATE ${test_options})
target_precompile_headers(test_headers PRIVATE
    ${standard_headers} <fstream> <sstream> <thread>
    <gmock/gmock.h> <gtest/gtest.h>)

function(access_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "THREADS" "" "SOURCES;LIBRARIES")
    add_executable(${name} ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE ${arg_LIBRARIES} GTest::gmock GTest::gtest_main)
    target_compile_options(${name} PRIVATE ${test_options})
    target_precompile_headers(${name} REUSE_FROM test_headers)
    set(labels "")
    if(arg_THREADS)
        set(labels LABELS threads)
        add_dependencies(thread_tests ${name})
    endif()
    gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST NO_PRETTY_VALUES
        PROPERTIES TIMEOUT 120 ${labels})
endfunction()
