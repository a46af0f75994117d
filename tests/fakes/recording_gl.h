#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace dunkman {

// A uniform that the fake's programs declare.
struct FakeUniform {
    std::string name;
    std::uint32_t type = 0; // GL type
    std::int32_t location = 0;
    std::int32_t unit = 0; // of a sampler or image: what its layout says
};

struct FakeStorageBlock {
    std::string name;
    std::int32_t binding = 0;
};

// Stands behind every pointer of render/gl.h while it lives and writes every call down, as `glEnable(GL_BLEND)`.
// Arrays whose contents matter are written out in braces, other pointers as `*`. Names are handed out from 1 on, over
// all kinds of object. Starts and ends with the process-wide state that drawing reads as it is before start-up.
class RecordingGl {
public:
    RecordingGl();
    ~RecordingGl();
    RecordingGl(const RecordingGl&) = delete;
    RecordingGl& operator=(const RecordingGl&) = delete;

    std::vector<std::string> calls;

    // The calls so far, which are then forgotten.
    std::vector<std::string> takeCalls();

    // What programs declare and how building them goes; to be set before a program is built.
    std::vector<FakeUniform> uniforms;
    std::vector<FakeStorageBlock> storageBlocks;
    bool compiles = true;
    bool links = true;
    bool validates = true;
    std::string log; // answered to every question for an info log

    std::uint32_t lastName = 0;
};

} // namespace dunkman
