#pragma once

#include <cstddef>
#include <cstdint>

#include "audio/call_result.h"

namespace dunkman {

// The system's calls for mapping one section of memory twice, each under the name that it has there.
// Addresses and handles are null after a failure. Tests bring their own and let each fail in turn.
class MirrorCalls {
public:
    // Reserves address space that views can be put into. Null also where the system does not know the call.
    virtual void* virtualAlloc2(std::size_t bytes) = 0;
    virtual bool virtualFreeSplit(void* base, std::size_t firstBytes) = 0; // of one placeholder makes two
    virtual void virtualFree(void* placeholder) = 0; // does nothing where a view has taken the place
    virtual void* createFileMapping(std::size_t bytes) = 0;
    virtual void closeHandle(void* section) = 0;
    virtual void* mapViewOfFile3(void* section, void* placeholder, std::size_t bytes) = 0;

    // An address at which this much is free at the moment.
    virtual void* probeFreeAddress(std::size_t bytes) = 0;
    virtual void* mapViewOfFileEx(void* section, void* address, std::size_t bytes) = 0;

    virtual void unmapViewOfFileEx(void* view) = 0;
    virtual std::int32_t lastError() = 0; // of the call that failed last

protected:
    ~MirrorCalls() = default;
};

struct MirrorViews {
    std::byte* first = nullptr;
    std::byte* second = nullptr; // directly behind the first
};

// Maps `bytes` twice, back to back: into placeholders, or where these are not to be had at an address that
// was free a moment ago. On failure the views are null, nothing is held, and the result names the last call
// that failed.
CallResult mapMirrored(MirrorCalls& calls, std::size_t bytes, MirrorViews& views);

} // namespace dunkman
