# The second compiler for 64-bit Windows: Clang with the headers and libraries of MinGW-w64's GCC. What two compilers
# take, a third is more likely to.
include(${CMAKE_CURRENT_LIST_DIR}/mingw-w64.cmake)
set(windows_gcc ${CMAKE_CXX_COMPILER})
set(CMAKE_C_COMPILER clang)
set(CMAKE_CXX_COMPILER clang++)
set(CMAKE_C_COMPILER_TARGET x86_64-w64-windows-gnu)
set(CMAKE_CXX_COMPILER_TARGET x86_64-w64-windows-gnu)

# Debian's GCC lives in a folder with the thread model in its name, which not every Clang finds by itself.
execute_process(COMMAND ${windows_gcc} -print-libgcc-file-name OUTPUT_VARIABLE windows_gcc_folder
    OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
get_filename_component(windows_gcc_folder ${windows_gcc_folder} DIRECTORY)
set(windows_headers ${windows_gcc_folder}/include/c++)
set(CMAKE_CXX_STANDARD_INCLUDE_DIRECTORIES
    ${windows_headers} ${windows_headers}/x86_64-w64-mingw32 ${windows_headers}/backward)
# The linker of GCC's libraries: with LLVM's, exceptions are not caught in them. It tells of every type name that the two
# compilers pad differently, and would stop at the comparison of types, which the library holds and its header too.
find_program(windows_linker x86_64-w64-mingw32-ld REQUIRED)
set(CMAKE_EXE_LINKER_FLAGS_INIT
    "--ld-path=${windows_linker} -Wl,--allow-multiple-definition -pthread -B${windows_gcc_folder} -L${windows_gcc_folder}")
