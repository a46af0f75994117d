# The library of the tests. Where there is none, everything else is built: a player needs no test.

# Debian's sources, so that sanitized and cross-built tests get a library of their own kind.
set(DUNKMAN_GOOGLETEST_SOURCES /usr/src/googletest)

if(DUNKMAN_TESTS AND NOT EXISTS ${DUNKMAN_GOOGLETEST_SOURCES}/CMakeLists.txt)
    find_package(GTest QUIET)
    if(NOT TARGET GTest::gmock_main)
        message(STATUS "GoogleTest is not here: no tests are built")
        set(DUNKMAN_TESTS OFF)
    endif()
endif()
