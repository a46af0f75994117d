#include "audio/media_foundation_win32.h"

#include <optional>
#include <string>

#include "base/debug_output.h"

namespace dunkman {

namespace {

// Looks functions up in one library of the system's own folder.
class Library {
public:
    explicit Library(const char* itsName)
        : name(itsName), module(LoadLibraryExA(itsName, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32)) {}

    template <typename Function> void find(Function*& pointer, const char* function) {
        const FARPROC address = module == nullptr ? nullptr : GetProcAddress(module, function);
        pointer = reinterpret_cast<Function*>(reinterpret_cast<void*>(address));
        isComplete = isComplete && pointer != nullptr;
    }

    const char* const name;
    bool isComplete = true;

private:
    HMODULE module;
};

std::optional<MediaFoundationFunctions> load() {
    MediaFoundationFunctions functions;
    Library platform("mfplat.dll");
    platform.find(functions.startup, "MFStartup");
    platform.find(functions.shutdown, "MFShutdown");
    platform.find(functions.createMediaType, "MFCreateMediaType");
    platform.find(functions.initMediaTypeFromWaveFormat, "MFInitMediaTypeFromWaveFormatEx");
    Library reader("mfreadwrite.dll");
    reader.find(functions.createSourceReaderFromUrl, "MFCreateSourceReaderFromURL");
    if (!platform.isComplete || !reader.isComplete) {
        debugText(std::string("audio: this Windows comes without media features (") +
                  (platform.isComplete ? reader.name : platform.name) + "): no music");
        return std::nullopt;
    }
    return functions;
}

} // namespace

const MediaFoundationFunctions* mediaFoundation() {
    static const std::optional<MediaFoundationFunctions> functions = load();
    return functions ? &*functions : nullptr;
}

} // namespace dunkman
