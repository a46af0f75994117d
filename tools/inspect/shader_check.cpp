#include "tools/inspect/shader_check.h"

#include <algorithm>
#include <array>
#include <map>
#include <set>

#include "base/fatal.h"
#include "base/files.h"
#include "render/shader_preprocessor.h"
#include "tools/inspect/shader_text.h"

namespace dunkman::inspect {

namespace {

constexpr std::array<std::string_view, 8> requiredUniforms = {
    "mat4 uViewProjection", "vec4 uDestMinAndSize", "vec4 uPosCosSin",           "uint uMirrorFlags",
    "sampler2D uTexture",   "float zOffset",        "vec3 uGammaGainSaturation", "vec3 uTint"};

// One stage with the files that it includes.
class StageCheck {
public:
    // `missing`: files that have been reported, for whichever stage.
    StageCheck(const std::string& itsPath, std::set<std::string>& missingFiles, Faults& faultList)
        : path(itsPath), missing(missingFiles), faults(faultList) {}

    // The expanded text with marked lines; nothing but faults when it cannot be had.
    bool expand(std::string& marked) {
        IncludeCache cache;
        const auto read = [this](const std::string& file) { return take(file); };
        try {
            marked = expandIncludes(path, cache, read);
        } catch (const FatalError& error) {
            report(error.what());
            return false;
        }
        return !isIncomplete;
    }

private:
    std::string take(const std::string& file) {
        if (statusOf(file).kind != FileKind::Ordinary) {
            if (missing.insert(file).second) {
                reportMissing(file);
            }
            isIncomplete = true;
            return {};
        }
        const auto found = texts.emplace(file, scanShader(file, readTextFile(file))).first;
        return withMarkedLines(found->second);
    }

    void reportMissing(const std::string& file) {
        for (const auto& [name, shader] : texts) {
            for (const ShaderInclude& include : shader.includes) {
                if (include.file == file) {
                    faults.add(shader.spotAt(include.offset),
                               "There is no file " + inQuotes(file) + " to include.");
                    return;
                }
            }
        }
        faults.add({path, 1, 1}, file == path ? "The shader is missing."
                                              : "There is no file " + inQuotes(file) + " to include.");
    }

    void report(const std::string& message) {
        for (const auto& [name, shader] : texts) {
            if (shader.openComment) {
                faults.add(shader.spotAt(*shader.openComment), "The comment that begins here has no end.");
                return;
            }
            if (shader.openInclude) {
                faults.add(shader.spotAt(*shader.openInclude),
                           "The include that begins here has no closing quote.");
                return;
            }
        }
        std::set<std::string> open;
        std::set<std::string> done;
        if (!reportCycle(path, open, done)) {
            faults.add({path, 1, 1}, message);
        }
    }

    bool reportCycle(const std::string& file, std::set<std::string>& open, std::set<std::string>& done) {
        const auto found = texts.find(file);
        if (found == texts.end() || done.contains(file)) {
            return false;
        }
        open.insert(file);
        for (const ShaderInclude& include : found->second.includes) {
            if (open.contains(include.file)) {
                faults.add(found->second.spotAt(include.offset),
                           "This include leads back to where it stands.");
                return true;
            }
            if (reportCycle(include.file, open, done)) {
                return true;
            }
        }
        open.erase(file);
        done.insert(file);
        return false;
    }

    std::string path;
    std::set<std::string>& missing;
    Faults& faults;
    std::map<std::string, ShaderText> texts;
    bool isIncomplete = false;
};

} // namespace

bool checkShaders(Faults& faults, ShaderStage& vertex, ShaderStage& fragment) {
    vertex.path = "drawable_basic.vert";
    fragment.path = "drawable_basic.frag";
    std::set<std::string> missing;
    const bool hasVertex = StageCheck(vertex.path, missing, faults).expand(vertex.markedText);
    const bool hasFragment = StageCheck(fragment.path, missing, faults).expand(fragment.markedText);
    if (!hasVertex || !hasFragment) {
        return false;
    }
    const std::string sources = vertex.markedText + fragment.markedText;
    bool isWhole = true;
    for (const std::string_view uniform : requiredUniforms) {
        if (sources.find("uniform " + std::string(uniform) + ';') == std::string::npos) {
            faults.add({vertex.path, 1, 1},
                       "No shader declares \"uniform " + std::string(uniform) + ";\", which the game sets.");
            isWhole = false;
        }
    }
    return isWhole;
}

Spot sourceOfLine(const ShaderStage& stage, std::size_t line) {
    const std::string& text = stage.markedText;
    std::size_t start = 0;
    for (std::size_t number = 1; number < line && start != std::string::npos; ++number) {
        start = text.find('\n', start);
        start += start != std::string::npos ? 1 : 0;
    }
    const std::size_t mark = start != std::string::npos ? text.find(lineMark, start) : start;
    if (mark == std::string::npos) {
        return {stage.path, 1, 1};
    }
    const std::size_t end = text.find_first_of("\r\n", mark);
    const std::string place = text.substr(mark + lineMark.size(), end - mark - lineMark.size());
    const std::size_t colon = place.rfind(':');
    // A line without a mark stands in front of one with a mark, in the same file.
    const auto between = std::count(text.begin() + static_cast<std::ptrdiff_t>(start),
                                    text.begin() + static_cast<std::ptrdiff_t>(mark), '\n');
    const std::size_t marked = std::stoul(place.substr(colon + 1));
    return {place.substr(0, colon), marked - std::min(static_cast<std::size_t>(between), marked - 1), 1};
}

} // namespace dunkman::inspect
