# What holds for every file of the project: language, warnings, floating-point rules, sanitizers.

option(DUNKMAN_TESTS "Build the tests, where GoogleTest is" ON)
option(DUNKMAN_BENCHMARKS "Build the benchmarks (needs Google Benchmark)" OFF)
option(DUNKMAN_FUZZERS "Build the libFuzzer targets (Clang only)" OFF)
option(DUNKMAN_WARNINGS_AS_ERRORS "Stop the build at a warning; for the project's own checks, not for a person's build" OFF)
option(DUNKMAN_COVERAGE "Count which lines and branches run (Clang only); tools/coverage reads the counts" OFF)
set(DUNKMAN_SANITIZE "" CACHE STRING "Comma-separated sanitizers for all code, for example address,undefined")

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set_property(GLOBAL PROPERTY USE_FOLDERS ON)

# dunkman_flags carries the warnings; it is linked by our own targets only, never by a third-party one.
add_library(dunkman_flags INTERFACE)
target_include_directories(dunkman_flags INTERFACE ${CMAKE_CURRENT_SOURCE_DIR})

if(MSVC)
    # Nobody has to install a redistributable first.
    set(CMAKE_MSVC_RUNTIME_LIBRARY "MultiThreaded$<$<CONFIG:Debug>:Debug>")
    # /fp:precise does not contract a*b+c on x64 unless asked to; /fp:contract is off by default since VS 2022.
    add_compile_options(/utf-8 /permissive- /fp:precise)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
        add_compile_options(/clang:-ffp-contract=off) # clang-cl takes precise for leave to contract
    endif()
    target_compile_options(dunkman_flags INTERFACE /W4 $<$<BOOL:${DUNKMAN_WARNINGS_AS_ERRORS}>:/WX>)
    target_compile_definitions(dunkman_flags INTERFACE NOMINMAX WIN32_LEAN_AND_MEAN _CRT_SECURE_NO_WARNINGS)
else()
    # A recording replays to the last bit only if no compiler fuses a multiplication with an addition.
    add_compile_options(-ffp-contract=off)
    target_compile_options(dunkman_flags INTERFACE
        $<$<BOOL:${DUNKMAN_WARNINGS_AS_ERRORS}>:-Werror>
        -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wcast-qual
        -Wformat=2 -Wundef -Wdouble-promotion -Wold-style-cast -Wno-missing-field-initializers)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
        # GCC 12 sees overlapping copies in every inlined "literal" + string.
        target_compile_options(dunkman_flags INTERFACE -Wno-restrict)
    endif()
    # Asserts guard invariants of the game; they stay on in every build but the shipped one.
    if(CMAKE_BUILD_TYPE STREQUAL "RelWithDebInfo")
        string(REPLACE "-DNDEBUG" "" CMAKE_CXX_FLAGS_RELWITHDEBINFO "${CMAKE_CXX_FLAGS_RELWITHDEBINFO}")
    endif()
endif()

if(MINGW)
    # A player's machine has no MinGW runtime: link it in.
    add_link_options(-static -static-libgcc -static-libstdc++ $<$<CONFIG:Release>:-s>)
    # The same sources give the same bytes.
    add_link_options(-Wl,--no-insert-timestamp)
    add_compile_definitions(NOMINMAX WIN32_LEAN_AND_MEAN _WIN32_WINNT=0x0A00 __USE_MINGW_ANSI_STDIO=1)
endif()

if(DUNKMAN_SANITIZE)
    add_compile_options(-fsanitize=${DUNKMAN_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${DUNKMAN_SANITIZE})
    if(CMAKE_BUILD_TYPE STREQUAL "Debug")
        add_compile_options(-O1)
    endif()
endif()

if(DUNKMAN_COVERAGE)
    target_compile_options(dunkman_flags INTERFACE -fprofile-instr-generate -fcoverage-mapping)
    add_link_options(-fprofile-instr-generate)
    set(CMAKE_CXX_FLAGS_RELEASE "-O1 -DNDEBUG") # counting is exact at any level
endif()

if(DUNKMAN_FUZZERS)
    # The entries alone would see no coverage of the libraries that they are for.
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()
