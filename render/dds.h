#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "base/bytes.h"

// DDS texture files.
namespace dunkman {

// The 124 bytes behind the magic "DDS ", all fields little-endian.
struct DdsHeader {
    std::uint32_t size;
    std::uint32_t flags;
    std::uint32_t height;
    std::uint32_t width;
    std::uint32_t pitchOrLinearSize;
    std::uint32_t depth;
    std::uint32_t mipMapCount;
    std::array<std::uint32_t, 11> reserved1;
    std::uint32_t pixelFormatSize;
    std::uint32_t pixelFormatFlags;
    std::uint32_t fourCc;
    std::uint32_t rgbBitCount;
    std::array<std::uint32_t, 4> bitMasks; // red, green, blue, alpha
    std::array<std::uint32_t, 4> caps;
    std::uint32_t reserved2;
};
static_assert(sizeof(DdsHeader) == 124 && offsetof(DdsHeader, fourCc) == 80);

inline constexpr std::uint32_t ddsMagic = 0x20534444;      // "DDS "
inline constexpr std::uint32_t ddsFourCcDx10 = 0x30315844; // "DX10": five more words follow the header
inline constexpr std::uint32_t maxDdsExtent = 16384;       // texels; every OpenGL 4.5 driver takes as much
inline constexpr std::uint32_t maxDdsLevels = 1000; // a full chain has 15; each more is a call for nothing
inline constexpr std::uint32_t maxDdsFileBytes = 256u
                                                 << 20u; // the largest extent with all levels has 171 MiB

struct DdsImage {
    DdsHeader header{};
    std::array<std::uint32_t, 5> extension{}; // the words of "DX10", kept but used by nobody
    Bytes bytes;                              // the whole file
    std::size_t headerBytes = 0;              // of it, before the pixels

    // All bytes behind the headers.
    std::span<const std::byte> pixels() const {
        return std::as_bytes(std::span(bytes.text())).subspan(headerBytes);
    }
};

// One level as it goes to OpenGL.
struct DdsUpload {
    std::uint32_t level;
    std::uint32_t width;  // texels
    std::uint32_t height; // texels
    std::uint32_t bytes;
    std::size_t offset; // into the pixels

    friend bool operator==(const DdsUpload&, const DdsUpload&) = default;
};

// Reads a DDS file, whose pixels are taken as DXT1 whatever it says. Both stop the game with a message that names
// the file when it is missing, no ordinary file or too large, is no DDS file, has no texels, no levels, more extent or
// levels than the bounds above, or ends before the last level that its header promises.
DdsImage readDds(const std::string& path);
DdsImage parseDds(Bytes file, const std::string& fileName);

// Levels of storage: what the mip count's low 8 bits say, but no more than halving the larger extent down to 1 gives.
std::uint32_t ddsStorageLevels(const DdsHeader& header);

// Every level that the header counts, also those beyond the storage.
std::vector<DdsUpload> ddsUploads(const DdsHeader& header);

} // namespace dunkman
