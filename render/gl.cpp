#include "render/gl.h"

namespace dunkman {

#define GL_FUNCTION(result, name, parameters, arguments) result(*name) parameters = nullptr;
#define GL_SYSTEM_FUNCTION GL_FUNCTION
#include "render/gl_functions.inc"
#undef GL_SYSTEM_FUNCTION
#undef GL_FUNCTION

void resetGlFunctions() {
#define GL_FUNCTION(result, name, parameters, arguments) name = nullptr;
#define GL_SYSTEM_FUNCTION GL_FUNCTION
#include "render/gl_functions.inc"
#undef GL_SYSTEM_FUNCTION
#undef GL_FUNCTION
}

} // namespace dunkman
