# Run by cpack, once what goes into the package is staged: the zip, with its files in the order of their names and all with
# one date. CPack's own takes them in the order and with the dates of the disk.
set(top ${CPACK_PACKAGE_FILE_NAME})
set(staged ${CPACK_TEMPORARY_DIRECTORY}/staged)
file(REMOVE_RECURSE ${staged})
file(GLOB parts ${CPACK_TEMPORARY_DIRECTORY}/*)
file(MAKE_DIRECTORY ${staged}/${top})
foreach(part ${parts})
    get_filename_component(name ${part} NAME)
    file(RENAME ${part} ${staged}/${top}/${name})
endforeach()

file(GLOB_RECURSE files RELATIVE ${staged} ${staged}/*)
list(SORT files)
list(JOIN files "\n" lines)
file(WRITE ${CPACK_TEMPORARY_DIRECTORY}/files.txt "${lines}\n")

set(zip ${CPACK_PACKAGE_DIRECTORY}/${CPACK_PACKAGE_FILE_NAME}.zip)
file(REMOVE ${zip})
execute_process(
    COMMAND ${CMAKE_COMMAND} -E env SOURCE_DATE_EPOCH=${CPACK_DUNKMAN_DATE} TZ=UTC
        ${CMAKE_COMMAND} -E tar cf ${zip} --format=zip --files-from=${CPACK_TEMPORARY_DIRECTORY}/files.txt
    WORKING_DIRECTORY ${staged}
    COMMAND_ERROR_IS_FATAL ANY)
set(CPACK_EXTERNAL_BUILT_PACKAGES ${zip})
