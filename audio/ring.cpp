#include "audio/ring.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <cstring>
#include <mutex>

#include "audio/mixer.h"

namespace dunkman {

namespace {

constexpr std::uint32_t smallestRing = 65536; // bytes; mappings come in units of this size

} // namespace

std::uint32_t AudioRing::sizeFor(std::uint32_t averageBytesPerSecond) {
    return std::bit_ceil(std::max(averageBytesPerSecond, smallestRing));
}

CallResult AudioRing::allocate(std::uint32_t bytes, std::uint32_t startPosition) {
    assert(std::has_single_bit(bytes) && startPosition % bytesPerFrame == 0);
    readPosition = startPosition;
    writePosition = startPosition;
    readLimit = startPosition;
    consumedLimit = startPosition;
    return memory.allocate(bytes);
}

void AudioRing::setDeviceBuffer(std::uint32_t frames) {
    const std::lock_guard guard(lock);
    deviceBufferBytes = frames * bytesPerFrame;
}

void AudioRing::feed(MusicTrack* track) {
    std::uint32_t kept = 0;
    std::uint32_t consumed = 0;
    std::uint32_t framesKeptAhead = 0;
    std::uint32_t mixPosition = 0;
    {
        const std::lock_guard guard(lock);
        const std::uint32_t read = readPosition.load(std::memory_order_acquire);
        kept = readLimit - read;
        if (kept < deviceBufferBytes) {
            kept = std::min(deviceBufferBytes, writePosition.load(std::memory_order_relaxed) - read);
            readLimit = read + kept;
        }
        mixPosition = readLimit;
        writePosition.store(mixPosition, std::memory_order_relaxed);
        consumed = consumedFrames;
        consumedFrames = 0;
        framesKeptAhead = (readLimit - consumedLimit) / bytesPerFrame;
        assert(positionsAreInOrder());
    }

    const std::uint32_t frames = std::min((memory.size() - kept) / bytesPerFrame, framesAhead);
    std::byte* const stretch = at(mixPosition);
    std::memset(stretch, 0, std::size_t{frames} * bytesPerFrame);
    if (track != mixedTrack) {
        mixedTrack = track;
        leadFrames = framesKeptAhead;
        consumed = 0; // of something else
    }
    if (track != nullptr) {
        track->advance(consumed);
        // A piece starts at its position, behind what was kept of something else when it was selected: its
        // position leads what is heard by that much. Mixing goes on behind what is kept now, which is as long as
        // a rule; at the position itself, every change in the kept length (an underrun, a feed in the middle of a
        // copy) would be heard as a repeat or a jump.
        mixTrackFrom(reinterpret_cast<float*>(stretch), frames, 1.0f, *track,
                     track->positionAfter(std::int64_t{framesKeptAhead} - std::int64_t{leadFrames}));
    }
    writePosition.fetch_add(frames * bytesPerFrame, std::memory_order_release);
}

AudioRing::Drain AudioRing::beginDrain(std::uint32_t framesWanted) {
    const std::lock_guard guard(lock);
    const std::uint32_t read = readPosition.load(std::memory_order_relaxed);
    const std::uint32_t mixed = writePosition.load(std::memory_order_acquire) - read;
    const std::uint32_t frames = std::min(mixed / bytesPerFrame, framesWanted);
    readLimit = read + frames * bytesPerFrame;
    consumedLimit = readLimit;
    consumedFrames += frames > 0 ? frames : framesWanted;
    assert(positionsAreInOrder());
    return {at(read), frames};
}

void AudioRing::endDrain(const Drain& drain) {
    readPosition.fetch_add(drain.frames * bytesPerFrame, std::memory_order_release);
}

void AudioRing::skip(std::uint32_t frames) {
    const std::lock_guard guard(lock);
    const std::uint32_t read = readPosition.load(std::memory_order_relaxed);
    const std::uint32_t mixed = writePosition.load(std::memory_order_acquire) - read;
    readLimit = read + std::min(mixed / bytesPerFrame, frames) * bytesPerFrame;
    consumedLimit = readLimit;
    consumedFrames += frames;
    readPosition.store(readLimit, std::memory_order_release);
    assert(positionsAreInOrder());
}

bool AudioRing::positionsAreInOrder() const {
    const std::uint32_t read = readPosition.load(std::memory_order_relaxed);
    const std::uint32_t counted = consumedLimit - read;
    const std::uint32_t promised = readLimit - read;
    const std::uint32_t mixed = writePosition.load(std::memory_order_relaxed) - read;
    return counted <= promised && promised <= mixed && mixed <= memory.size();
}

AudioRing::Counters AudioRing::counters() const {
    return {readPosition.load(), readLimit, writePosition.load(), consumedFrames};
}

} // namespace dunkman
