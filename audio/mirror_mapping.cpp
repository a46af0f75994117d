#include "audio/mirror_mapping.h"

namespace dunkman {

namespace {

// Another thread may take the probed address before both views are there. Losing the race this often is no
// accident.
constexpr int probeAttempts = 32;

std::byte* bytesAt(void* address) { return static_cast<std::byte*>(address); }

class Mapping {
public:
    Mapping(MirrorCalls& itsCalls, std::size_t itsBytes) : calls(itsCalls), bytes(itsBytes) {}

    CallResult map(MirrorViews& views) {
        std::byte* const placeholders = reservePlaceholders();
        section = calls.createFileMapping(bytes);
        const CallResult created = section == nullptr ? failure("CreateFileMappingW") : CallResult{};
        if (placeholders != nullptr) {
            if (!created.failed()) {
                views.first = bytesAt(calls.mapViewOfFile3(section, placeholders, bytes));
                views.second = bytesAt(calls.mapViewOfFile3(section, placeholders + bytes, bytes));
            }
            // Whatever a mapping has not replaced would stay reserved for good.
            calls.virtualFree(placeholders);
            calls.virtualFree(placeholders + bytes);
        }
        if (created.failed()) {
            return created;
        }
        CallResult result;
        if (!isComplete(views)) {
            result = mapAtFreeAddress(views);
        }
        calls.closeHandle(section);
        return result;
    }

private:
    // Two placeholders of `bytes` each; null if the system has none to give.
    std::byte* reservePlaceholders() {
        void* const base = calls.virtualAlloc2(2 * bytes);
        if (base == nullptr) {
            return nullptr;
        }
        if (!calls.virtualFreeSplit(base, bytes)) {
            calls.virtualFree(base);
            return nullptr;
        }
        return bytesAt(base);
    }

    CallResult mapAtFreeAddress(MirrorViews& views) {
        CallResult result;
        for (int attempt = 0; attempt < probeAttempts; ++attempt) {
            void* const free = calls.probeFreeAddress(2 * bytes);
            if (free == nullptr) {
                return failure("VirtualAlloc");
            }
            views.first = bytesAt(calls.mapViewOfFileEx(section, free, bytes));
            if (views.first != nullptr) {
                views.second = bytesAt(calls.mapViewOfFileEx(section, bytesAt(free) + bytes, bytes));
            }
            result = views.second == nullptr ? failure("MapViewOfFileEx") : CallResult{};
            if (isComplete(views)) {
                return result;
            }
        }
        return result;
    }

    // Whether both views are there; if not, gives back the one that is.
    bool isComplete(MirrorViews& views) {
        if (views.first != nullptr && views.second != nullptr) {
            return true;
        }
        for (std::byte* const view : {views.first, views.second}) {
            if (view != nullptr) {
                calls.unmapViewOfFileEx(view);
            }
        }
        views = {};
        return false;
    }

    CallResult failure(const char* call) { return {call, calls.lastError()}; }

    MirrorCalls& calls;
    std::size_t bytes;
    void* section = nullptr;
};

} // namespace

CallResult mapMirrored(MirrorCalls& calls, std::size_t bytes, MirrorViews& views) {
    views = {};
    return Mapping(calls, bytes).map(views);
}

} // namespace dunkman
