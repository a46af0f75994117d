#include "render/shader_preprocessor.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "base/debug_output.h"
#include "base/fatal.h"
#include "base/file_contents.h"

namespace dunkman {
namespace {

constexpr std::string_view directive = "#include \"";
constexpr std::string_view parentStep = "\\..\\";

// One run of the preprocessor: the cache and the files whose expansion has begun but not ended, outermost first.
class Expander {
public:
    Expander(IncludeCache& includeCache, const TextFileReader& fileReader)
        : cache(includeCache), readFile(fileReader) {}

    std::string expand(const std::string& path);

private:
    std::string expandText(const std::string& path, const std::string& fileName);
    void append(std::string& output, std::string_view piece, const std::string& fileName);

    IncludeCache& cache;
    const TextFileReader& readFile;
    std::vector<std::string> openFiles;
};

std::string Expander::expand(const std::string& path) {
    if (const auto cached = cache.find(path); cached != cache.end()) {
        return cached->second;
    }
    const std::string fileName = reducedIncludePath(path);
    if (std::find(openFiles.begin(), openFiles.end(), fileName) != openFiles.end()) {
        fatal("The shader file \"" + fileName + "\" includes itself, directly or through other files. " +
              "Take one of the includes out.");
    }
    openFiles.push_back(fileName);
    std::string output = expandText(path, fileName);
    openFiles.pop_back();
    cache.emplace(path, output);
    return output;
}

std::string Expander::expandText(const std::string& path, const std::string& fileName) {
    const std::string text = readFile(fileName);
    const std::string_view view = text;
    std::string output;
    std::size_t segmentStart = 0;
    std::size_t cursor = 0;
    while (cursor < view.size()) {
        const std::string_view rest = view.substr(cursor);
        if (rest.substr(0, 2) == "/*") {
            const std::size_t end = view.find("*/", cursor + 2);
            if (end == std::string_view::npos) {
                fatal("A comment in the shader file \"" + fileName +
                      "\" is opened with /* but never closed.");
            }
            cursor = end + 2;
        } else if (rest.substr(0, 2) == "//") {
            cursor = view.find_first_of("\n\r", cursor + 2);
        } else if (rest.substr(0, directive.size()) == directive) {
            const std::size_t nameStart = cursor + directive.size();
            const std::size_t nameEnd = view.find('"', nameStart);
            if (nameEnd == std::string_view::npos) {
                fatal("An #include in the shader file \"" + fileName + "\" lacks its closing quote.");
            }
            append(output, view.substr(segmentStart, cursor - segmentStart), fileName);
            std::string includePath = path;
            includePath.append(parentStep).append(view.substr(nameStart, nameEnd - nameStart));
            append(output, expand(includePath), fileName);
            segmentStart = cursor = nameEnd + 1;
        } else {
            ++cursor;
        }
    }
    append(output, view.substr(segmentStart), fileName);
    return output;
}

// Files that include each other twice and again double their text at each step; without a bound a few lines could
// ask for all memory.
void Expander::append(std::string& output, std::string_view piece, const std::string& fileName) {
    if (piece.size() > maxExpandedShaderBytes - output.size()) {
        fatal("The shader file \"" + fileName + "\" grows beyond 1 MiB with its includes.");
    }
    output.append(piece);
}

} // namespace

std::string readTextFile(const std::string& path) {
    const FileContents file = readDataFile(path, maxExpandedShaderBytes);
    if (file.fault != FileFault::None) {
        debugBreak("The shader file \"" + path +
                   "\" cannot be opened. It belongs into the folder of the game's data.");
        return {};
    }
    return std::string(file.bytes.text());
}

std::string preprocessShaderFile(const std::string& path) {
    IncludeCache cache;
    return expandIncludes(path, cache, readTextFile);
}

std::string expandIncludes(const std::string& path, IncludeCache& cache, const TextFileReader& readFile) {
    return Expander(cache, readFile).expand(path);
}

namespace {

bool isAbsolute(std::string_view path) {
    return path.starts_with('/') || (path.size() > 1 && path[1] == ':'); // a drive's letter
}

// Without ".", without ".." behind the name of a folder, with single slashes.
std::string normalised(std::string_view path) {
    std::vector<std::string_view> names;
    const bool hasRoot = path.starts_with('/');
    while (!path.empty()) {
        const std::string_view name = path.substr(0, path.find('/'));
        path.remove_prefix(std::min(name.size() + 1, path.size()));
        if (name != "..") {
            if (!name.empty() && name != ".") {
                names.push_back(name);
            }
        } else if (!names.empty() && names.back() != "..") {
            names.pop_back();
        } else if (!hasRoot) {
            names.push_back(name);
        }
    }
    std::string result = hasRoot ? "/" : "";
    for (const std::string_view name : names) {
        result.append(name).append("/");
    }
    if (!names.empty()) {
        result.pop_back();
    }
    return result;
}

} // namespace

std::string reducedIncludePath(std::string_view formedPath) {
    std::string reduced;
    while (true) {
        const std::size_t stepAt = formedPath.find(parentStep);
        std::string part(formedPath.substr(0, stepAt));
        std::replace(part.begin(), part.end(), '\\', '/');
        if (isAbsolute(part)) {
            reduced.clear();
        } else {
            reduced.resize(reduced.rfind('/') + 1); // its folder; none: npos + 1 is 0
        }
        reduced += part;
        if (stepAt == std::string_view::npos) {
            break;
        }
        formedPath.remove_prefix(stepAt + parentStep.size());
    }
    return normalised(reduced);
}

} // namespace dunkman
