# access_test(<name> [THREADS] SOURCES <file>... LIBRARIES <target>...)
#
# One GoogleTest program build/bin/<name>; each of its cases is a test of ctest. THREADS says that
# threads run in it: its cases get the label "threads", and the target thread_tests builds it.

find_package(GTest REQUIRED)
include(GoogleTest)

add_custom_target(thread_tests)

function(access_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "THREADS" "" "SOURCES;LIBRARIES")
    add_executable(${name} ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE ${arg_LIBRARIES} GTest::gmock GTest::gtest_main)
    # Matchers are slow to optimise, and nothing in a test needs it.
    target_compile_options(${name} PRIVATE $<$<CONFIG:RelWithDebInfo>:-O0>)
    set(labels "")
    if(arg_THREADS)
        set(labels LABELS threads)
        add_dependencies(thread_tests ${name})
    endif()
    gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST NO_PRETTY_VALUES
        PROPERTIES TIMEOUT 120 ${labels})
endfunction()
