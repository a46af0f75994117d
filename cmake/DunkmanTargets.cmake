# The four kinds of target, so that a folder's CMakeLists.txt is only its list of files.

# dunkman_library(NAME SOURCES ... [LINKS ...])
function(dunkman_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
    add_library(${name} STATIC ${ARG_SOURCES})
    target_link_libraries(${name} PUBLIC ${ARG_LINKS} PRIVATE dunkman_flags)
    target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR})
endfunction()

# dunkman_program(NAME SOURCES ... [LINKS ...])
function(dunkman_program name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE ${ARG_LINKS} dunkman_flags)
endfunction()

# Everything that tests need.
add_custom_target(dunkman_tests)

# What test programs are compiled with beyond dunkman_flags. GoogleTest's macros take compilers longer than the game does;
# little is gained by optimising them, and much by reading its headers once.
add_library(dunkman_test_flags INTERFACE)
if(NOT MSVC)
    target_compile_options(dunkman_test_flags INTERFACE -O0 -g1)
endif()
if(DUNKMAN_COVERAGE) # of the game, not of its tests
    target_compile_options(dunkman_test_flags INTERFACE -fno-profile-instr-generate -fno-coverage-mapping)
endif()

# dunkman_test(NAME SOURCES ... [LINKS ...] [TIMEOUT SECONDS]): one GoogleTest program, one CTest entry.
# Tests run in the source folder, so that "data" and "tests/..." are found by relative paths.
function(dunkman_test name)
    cmake_parse_arguments(ARG "" "TIMEOUT" "SOURCES;LINKS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE ${ARG_LINKS} dunkman_flags dunkman_test_flags gmock_main)
    if(TARGET dunkman_test_headers)
        target_precompile_headers(${name} REUSE_FROM dunkman_test_headers)
    endif()
    add_dependencies(dunkman_tests ${name})
    add_test(NAME ${DUNKMAN_TEST_PREFIX}${name} COMMAND ${name} WORKING_DIRECTORY ${PROJECT_SOURCE_DIR})
    if(NOT ARG_TIMEOUT)
        set(ARG_TIMEOUT 300)
    endif()
    set_tests_properties(${DUNKMAN_TEST_PREFIX}${name} PROPERTIES TIMEOUT ${ARG_TIMEOUT})
endfunction()

# dunkman_command_test(NAME COMMAND WORDS ... [NEEDS TARGETS ...] [TIMEOUT SECONDS]): a command of another kind as a test,
# run in the source folder. The target NAME builds the programs that it needs. Exit status 77 says that it was skipped.
function(dunkman_command_test name)
    cmake_parse_arguments(ARG "" "TIMEOUT" "COMMAND;NEEDS" ${ARGN})
    add_custom_target(${name})
    add_dependencies(dunkman_tests ${name})
    foreach(program IN LISTS ARG_NEEDS)
        add_dependencies(${name} ${program})
    endforeach()
    add_test(NAME ${DUNKMAN_TEST_PREFIX}${name} COMMAND ${ARG_COMMAND} WORKING_DIRECTORY ${PROJECT_SOURCE_DIR})
    set_tests_properties(${DUNKMAN_TEST_PREFIX}${name} PROPERTIES SKIP_RETURN_CODE 77)
    if(ARG_TIMEOUT)
        set_tests_properties(${DUNKMAN_TEST_PREFIX}${name} PROPERTIES TIMEOUT ${ARG_TIMEOUT})
    endif()
endfunction()

# dunkman_benchmark(NAME SOURCES ... [LINKS ...]): a Google Benchmark program; never part of the tests.
function(dunkman_benchmark name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE ${ARG_LINKS} dunkman_flags benchmark::benchmark benchmark::benchmark_main)
endfunction()

# dunkman_fuzzer(NAME SOURCES ... [LINKS ...]): libFuzzer entry; its sources define LLVMFuzzerTestOneInput.
# With DUNKMAN_FUZZERS off nothing is built here: the same sources also run over their corpus as a plain test.
function(dunkman_fuzzer name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
    if(DUNKMAN_FUZZERS)
        add_executable(${name} ${ARG_SOURCES})
        target_compile_options(${name} PRIVATE -fsanitize=fuzzer)
        target_link_options(${name} PRIVATE -fsanitize=fuzzer)
        target_link_libraries(${name} PRIVATE ${ARG_LINKS} dunkman_flags)
    endif()
endfunction()
