#include "tools/console/about.h"

#include <cstdio>
#include <string_view>

namespace dunkman::console {

bool tellAbout(int argumentCount, const char* const* arguments, const char* program, const char* usage) {
    for (int i = 1; i < argumentCount; ++i) {
        const std::string_view word = arguments[i];
        if (word == "--help") {
            std::fputs(usage, stdout);
            return true;
        }
        if (word == "--version") {
            std::printf("%s %s\n", program, DUNKMAN_VERSION);
            return true;
        }
    }
    return false;
}

} // namespace dunkman::console
