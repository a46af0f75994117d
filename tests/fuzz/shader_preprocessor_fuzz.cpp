#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "base/fatal.h"
#include "render/shader_preprocessor.h"

// The input is a row of files with a NUL between them; the first is expanded, and the others are called b, c and so
// on. Expansion ends, by a text or by a message, and leaves a text without directives alone.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace dunkman;
    std::vector<std::string> files(1);
    for (std::size_t at = 0; at < size; ++at) {
        if (data[at] == 0) {
            files.emplace_back();
        } else {
            files.back().push_back(static_cast<char>(data[at]));
        }
    }
    const auto readFile = [&files](const std::string& path) {
        const std::size_t index =
            path.size() == 1 && path >= "a" ? static_cast<std::size_t>(path[0] - 'a') : files.size();
        return index < files.size() ? files[index] : std::string("unknown");
    };
    try {
        IncludeCache cache;
        const std::string expanded = expandIncludes("a", cache, readFile);
        const bool hasDirective = files[0].find("#include \"") != std::string::npos;
        if (expanded.size() > maxExpandedShaderBytes || (!hasDirective && expanded != files[0])) {
            std::abort();
        }
    } catch (const FatalError&) {
        // refused
    }
    return 0;
}
