#include <algorithm>
#include <array>
#include <filesystem>
#include <set>

#include "base/fatal.h"
#include "base/files.h"
#include "render/dds.h"
#include "tools/inspect/file_checks.h"
#include "tools/inspect/level_files.h"
#include "tools/inspect/nearest.h"
#include "world/object_class.h"

namespace dunkman::inspect {

namespace {

constexpr std::uint32_t fourCcDxt1 = 0x31545844; // "DXT1"

// Keys that the screens look up.
constexpr std::array<std::string_view, 12> screenImages = {
    "sunset",        "menuBackground", "logo",     "logoTheGame", "pineappleHeart", "cocktailFull",
    "cocktailSpill", "palmTree",       "btnArrow", "btnZ",        "btnX",           "btnEsc"};

std::set<std::string_view> keysThatTheGameNeeds() {
    std::set<std::string_view> keys(screenImages.begin(), screenImages.end());
    for (const ObjectType type : subtypeWalk(ObjectType::Object)) {
        keys.insert(classOf(type).images.begin(), classOf(type).images.end());
    }
    return keys;
}

// A missing key has most likely become another one, which nothing else asks for.
void requireImages(const DataFile& images, Faults& faults) {
    const std::set<std::string_view> needed = keysThatTheGameNeeds();
    std::vector<std::string_view> others = keysOf(images.top());
    std::erase_if(others, [&needed](std::string_view key) { return needed.contains(key); });
    for (const std::string_view key : needed) {
        if (images.top()->contains(key)) {
            continue;
        }
        const std::string fault = "There is no image " + inQuotes(key) + ", which the game needs.";
        Spot spot = images.top().spot();
        const std::string_view mistyped = nearestName(key, others);
        for (const LocatedMember& image : images.top().members()) {
            if (!mistyped.empty() && image.key == mistyped) {
                spot = image.keySpot();
            }
        }
        faults.add(spot, fault + (mistyped.empty() ? "" : " Is it meant by " + inQuotes(mistyped) + '?'));
    }
}

std::string suggestFile(const std::string& path) {
    const std::size_t slash = path.find_last_of('/');
    if (slash == std::string::npos || statusOf(path.substr(0, slash)).kind != FileKind::Folder) {
        return {};
    }
    std::vector<std::string> names;
    std::error_code failure;
    for (std::filesystem::directory_iterator entry(path.substr(0, slash), failure), end;
         !failure && entry != end; entry.increment(failure)) {
        const std::u8string name = entry->path().filename().u8string();
        names.emplace_back(name.begin(), name.end());
    }
    std::sort(names.begin(), names.end());
    const std::vector<std::string_view> known(names.begin(), names.end());
    return suggestion(std::string_view(path).substr(slash + 1), known);
}

void checkTexture(const Spot& spot, const std::string& name, const std::string& path, Faults& faults) {
    const std::string start = name + "The texture " + inQuotes(path);
    try {
        const DdsImage image = readDds(path);
        const std::vector<DdsUpload> levels = ddsUploads(image.header);
        const std::size_t end = levels.empty() ? 0 : levels.back().offset + levels.back().bytes;
        if (image.header.fourCc != fourCcDxt1) {
            faults.add(spot, start + " is not marked as DXT1, yet the game reads it as that.");
        } else if (ddsStorageLevels(image.header) < image.header.mipMapCount) {
            faults.add(spot, start + " counts more levels than one of its size has.");
        } else if (image.pixels().size() > end) {
            faults.add(spot, start + " has " + std::to_string(image.pixels().size() - end) +
                                 " bytes behind its last level.");
        }
    } catch (const FatalError& error) {
        faults.add(spot, name + error.what());
    }
}

} // namespace

void checkImages(const DataFile& images, Faults& faults) {
    if (!images.isSound()) {
        return;
    }
    for (const LocatedMember& image : images.top().members()) {
        const std::string name = "image " + inQuotes(image.key) + ": ";
        if (image.value->kind != JsonKind::String) {
            faults.add(image.value.spot(), name + "it is no path in quotes.");
        } else {
            const std::string path(image.value->stringValue());
            if (statusOf(path).kind == FileKind::Ordinary) {
                checkTexture(image.value.spot(), name, path, faults);
            } else {
                faults.add(image.value.spot(),
                           name + "there is no file " + inQuotes(path) + '.' + suggestFile(path));
            }
        }
    }
    requireImages(images, faults);
}

void checkGlyphs(Faults& faults) {
    for (char letter = 'A'; letter <= 'Z'; ++letter) {
        const std::string path = std::string("AssetsCompressed/Font/") + letter + ".dds";
        if (statusOf(path).kind == FileKind::Ordinary) {
            checkTexture({path, 1, 1}, "", path, faults);
        } else {
            faults.add({path, 1, 1}, "The file is missing.");
        }
    }
}

} // namespace dunkman::inspect
