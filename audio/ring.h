#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>

#include "audio/mirrored_memory.h"
#include "audio/music_track.h"
#include "audio/slim_lock.h"
#include "audio/wave_format.h"

namespace dunkman {

// The stretch of mixed sound between the main thread, which feeds it, and the audio thread, which drains it;
// the two share nothing else. Positions are free-running byte counts that wrap at 2^32, a multiple of the
// ring's size.
//
//   readPosition .. readLimit     kept: being copied now, or left for the device's next request
//   readLimit .. writePosition    mixed ahead; each feed throws it away and mixes it anew
class AudioRing {
public:
    static constexpr std::uint32_t bytesPerFrame = streamFormat.blockAlign;
    static constexpr std::uint32_t framesAhead = streamFormat.samplesPerSecond / 10; // 100 ms

    // The ring that holds at least one second of the stream format: 524,288 bytes.
    static std::uint32_t sizeFor(std::uint32_t averageBytesPerSecond);

    // Takes the memory and starts all counters at `startPosition` (0, but for tests of the wrap), a multiple
    // of bytesPerFrame. Before any other call.
    CallResult allocate(std::uint32_t bytes, std::uint32_t startPosition = 0);
    void release() { memory.release(); }

    // The size of the device's buffer, which every feed leaves room and sound for. Any thread.
    void setDeviceBuffer(std::uint32_t frames);

    // Main thread, once per simulation step: moves `track` (null: silence) by what was heard since last time
    // and mixes the next 100 ms behind the kept stretch. A track that was not the last feed's is not moved: what was
    // heard was not it, and it begins with the sample at its position (0 for a looping one at its end).
    void feed(MusicTrack* track);

    // Audio thread. What the device gets: `frames` to be copied from `data`, or none: then it plays silence
    // for all that it asked for, and the music's clock runs on, so that the music does not fall behind real
    // time.
    struct Drain {
        const std::byte* data = nullptr;
        std::uint32_t frames = 0;
    };
    Drain beginDrain(std::uint32_t framesWanted);
    void endDrain(const Drain& drain); // after the copy

    // Audio thread, while there is no device: lets `frames` pass unheard.
    void skip(std::uint32_t frames);

    // What a test wants to see. Not for use while the other thread runs.
    struct Counters {
        std::uint32_t readPosition = 0;
        std::uint32_t readLimit = 0;
        std::uint32_t writePosition = 0;
        std::uint32_t consumedFrames = 0;
    };
    Counters counters() const;
    std::byte* at(std::uint32_t position) const { return memory.data() + (position & (memory.size() - 1)); }

private:
    // Under the lock. The positions wrap, their distances from the reader do not.
    bool positionsAreInOrder() const;

    // Main thread only.
    const MusicTrack* mixedTrack = nullptr; // in the last feed
    std::uint32_t leadFrames = 0;           // kept ahead when that track was selected

    MirroredMemory memory;
    SlimLock lock; // guards the next four, and the two positions where a decision rests on both

    std::uint32_t deviceBufferBytes = 0;
    std::uint32_t consumedFrames = 0; // handed to the device since the main thread last looked
    std::uint32_t readLimit = 0;
    std::uint32_t consumedLimit = 0; // end of the sound that consumedFrames counts; up to readLimit

    // Each is also advanced outside the lock, after the copy or the mixing that it stands for.
    std::atomic<std::uint32_t> readPosition = 0;
    std::atomic<std::uint32_t> writePosition = 0;
};

} // namespace dunkman
