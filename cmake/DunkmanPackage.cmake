# The zip for players, by CPack: the three programs with all that they read, in one folder. ./package makes it from Debian.

set(texts ${CMAKE_BINARY_DIR}/package_texts)
configure_file(app/windows/readme.txt.in ${texts}/README.txt @ONLY NEWLINE_STYLE DOS)
configure_file(CREDITS.md ${texts}/CREDITS.txt @ONLY NEWLINE_STYLE DOS)

# Parts of the compiler's runtime are in the programs, and its licences ask for their text beside them. It is taken from where
# the compiler's package has it; whoever packs with another compiler names that one's.
if(MINGW)
    find_file(DUNKMAN_RUNTIME_LICENCES copyright
        PATHS /usr/share/doc/mingw-w64-x86-64-dev NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH
        DOC "Licences of the compiler's runtime, for the zip")
    if(DUNKMAN_RUNTIME_LICENCES)
        configure_file(${DUNKMAN_RUNTIME_LICENCES} ${texts}/RUNTIME-LICENCES.txt @ONLY NEWLINE_STYLE DOS)
        install(FILES ${texts}/RUNTIME-LICENCES.txt DESTINATION . COMPONENT player)
    else()
        message(WARNING "The zip for players will lack the licences of the compiler's runtime: "
            "give their file as -DDUNKMAN_RUNTIME_LICENCES=FILE before you hand the zip out.")
    endif()
endif()

set(CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
install(TARGETS dunkman dunkman-live dunkman-record RUNTIME DESTINATION . COMPONENT player)
install(FILES ${texts}/README.txt ${texts}/CREDITS.txt DESTINATION . COMPONENT player)
install(DIRECTORY data/ DESTINATION data COMPONENT player
    FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ
    PATTERN "*.new" EXCLUDE)

# The same sources give the same bytes, whenever and wherever they are packed: see the script.
set(CPACK_GENERATOR External)
set(CPACK_EXTERNAL_ENABLE_STAGING ON)
set(CPACK_EXTERNAL_PACKAGE_SCRIPT ${PROJECT_SOURCE_DIR}/cmake/pack_zip.cmake)
set(CPACK_DUNKMAN_DATE ${DUNKMAN_VERSION_DATE})
set(CPACK_PACKAGE_NAME dunkman)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_FILE_NAME dunkman-${PROJECT_VERSION}-windows-x64)
set(CPACK_INSTALL_CMAKE_PROJECTS "${CMAKE_BINARY_DIR};Dunkman;player;/")
set(CPACK_VERBATIM_VARIABLES ON)
include(CPack)
