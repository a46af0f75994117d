# Writes the OpenGL lists anew and compares them with the committed ones.
#   cmake -D PYTHON=... -D SOURCE=... -D SCRATCH=... -P gl_registry.cmake
file(MAKE_DIRECTORY ${SCRATCH})
execute_process(COMMAND ${PYTHON} ${SOURCE}/tools/generate_gl_loader.py --output ${SCRATCH}
    COMMAND_ERROR_IS_FATAL ANY)
foreach(list gl_functions.inc gl_constants.inc)
    execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${SCRATCH}/${list} ${SOURCE}/render/${list}
        RESULT_VARIABLE differs)
    if(differs)
        message(FATAL_ERROR "render/${list} is not what tools/generate_gl_loader.py writes")
    endif()
endforeach()
