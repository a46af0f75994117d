#include "render/texture_coverage.h"

#include <algorithm>
#include <bit>
#include <span>

#include "render/dds.h"

namespace dunkman {
namespace {

constexpr std::uint32_t blockTexels = 4;
constexpr std::uint32_t blockBytes = 8;

// A bit for each texel of a block, row after row: bit 4 y + x.
using BlockMask = std::uint32_t;
constexpr BlockMask wholeBlock = 0xFFFF;

// The transparent texels of a DXT1 block: those with index 3, if the first colour is not above the second.
BlockMask transparentTexels(std::span<const std::byte, blockBytes> block) {
    const auto byte = [block](std::size_t index) { return std::to_integer<std::uint32_t>(block[index]); };
    if ((byte(0) | byte(1) << 8) > (byte(2) | byte(3) << 8)) {
        return 0;
    }
    const std::uint32_t indices = byte(4) | byte(5) << 8 | byte(6) << 16 | byte(7) << 24;
    const std::uint32_t threes = indices & (indices >> 1) & 0x55555555u;
    if (threes == 0) {
        return 0;
    }
    BlockMask texels = 0;
    for (unsigned int texel = 0; texel < blockTexels * blockTexels; ++texel) {
        texels |= (threes >> (2 * texel) & 1u) << texel;
    }
    return texels;
}

// The texels of a block that lie within the picture, of which this many columns and rows are left.
BlockMask insideTexels(std::uint32_t columns, std::uint32_t rows) {
    const BlockMask row = (1u << std::min(columns, blockTexels)) - 1u;
    const BlockMask block = row | row << 4 | row << 8 | row << 12;
    return rows >= blockTexels ? block : block & ((1u << (4 * rows)) - 1u);
}

BlockMask columnsOf(BlockMask texels) { return (texels | texels >> 4 | texels >> 8 | texels >> 12) & 0xFu; }

// From a first one to the one behind the last.
struct Range {
    std::uint32_t begin = 0;
    std::uint32_t end = 0;

    bool isEmpty() const { return begin >= end; }
    void include(std::uint32_t from, std::uint32_t to) {
        *this = isEmpty() ? Range{from, to} : Range{std::min(begin, from), std::max(end, to)};
    }
};

// What one level holds, in its own texels.
struct LevelCoverage {
    Range columns; // with a texel that is not transparent
    Range rows;
    Range opaqueRows; // the longest run
};

LevelCoverage lookAt(std::span<const std::byte> pixels, std::uint32_t width, std::uint32_t height) {
    LevelCoverage level;
    Range run;
    const std::uint32_t across = (width + blockTexels - 1) / blockTexels;
    for (std::uint32_t y = 0; y < height; y += blockTexels) {
        BlockMask seenAnywhere = 0;
        BlockMask opaqueEverywhere = wholeBlock;
        for (std::uint32_t column = 0; column < across; ++column) {
            const std::uint32_t x = column * blockTexels;
            const BlockMask inside = insideTexels(width - x, height - y);
            const BlockMask transparent = transparentTexels(pixels.first<blockBytes>());
            pixels = pixels.subspan(blockBytes);
            opaqueEverywhere &= ~(transparent & inside);
            const BlockMask seen = inside & ~transparent;
            if (seen != 0) {
                seenAnywhere |= seen;
                const BlockMask columns = columnsOf(seen);
                level.columns.include(x + static_cast<std::uint32_t>(std::countr_zero(columns)),
                                      x + static_cast<std::uint32_t>(std::bit_width(columns)));
            }
        }
        for (std::uint32_t row = 0; row < std::min(blockTexels, height - y); ++row) {
            const BlockMask rowMask = 0xFu << (4 * row);
            if ((seenAnywhere & rowMask) != 0) {
                level.rows.include(y + row, y + row + 1);
            }
            if ((opaqueEverywhere & rowMask) != rowMask) {
                run = {};
                continue;
            }
            run.include(y + row, y + row + 1);
            if (run.end - run.begin > level.opaqueRows.end - level.opaqueRows.begin) {
                level.opaqueRows = run;
            }
        }
    }
    return level;
}

// A place between the texels of a level, in texels of the full size.
std::uint32_t scaledDown(std::uint32_t place, std::uint32_t full, std::uint32_t level) {
    return static_cast<std::uint32_t>(std::uint64_t{place} * full / level);
}
std::uint32_t scaledUp(std::uint32_t place, std::uint32_t full, std::uint32_t level) {
    return static_cast<std::uint32_t>((std::uint64_t{place} * full + level - 1) / level);
}

// A sample mixes the texels within one texel of it: seen ranges grow by one at both ends ...
Range grown(const Range& seen, std::uint32_t full, std::uint32_t level) {
    if (seen.isEmpty()) {
        return {};
    }
    return {scaledDown(std::max(seen.begin, 1u) - 1, full, level),
            scaledUp(std::min(seen.end + 1, level), full, level)};
}

// ... and opaque ones shrink, but not at the edge of the texture, beyond which its last texels go on.
Range shrunk(const Range& opaque, std::uint32_t full, std::uint32_t level) {
    if (opaque.isEmpty()) {
        return {};
    }
    return {scaledUp(opaque.begin == 0 ? 0 : opaque.begin + 1, full, level),
            scaledDown(opaque.end == level ? level : opaque.end - 1, full, level)};
}

} // namespace

CoverageByLevel coverageOf(const DdsImage& image) {
    const std::uint32_t width = image.header.width;
    const std::uint32_t height = image.header.height;
    const std::uint32_t levels = ddsStorageLevels(image.header);
    CoverageByLevel result;
    Range columns;
    Range rows;
    Range opaque = {0, height};
    for (const DdsUpload& upload : ddsUploads(image.header)) {
        if (upload.level >= std::min<std::uint32_t>(levels, coverageLevels)) {
            break;
        }
        const LevelCoverage level =
            lookAt(std::span(image.pixels).subspan(upload.offset, upload.bytes), upload.width, upload.height);
        if (const Range seen = grown(level.columns, width, upload.width); !seen.isEmpty()) {
            columns.include(seen.begin, seen.end);
        }
        if (const Range seen = grown(level.rows, height, upload.height); !seen.isEmpty()) {
            rows.include(seen.begin, seen.end);
        }
        const Range hidden = shrunk(level.opaqueRows, height, upload.height);
        opaque = {std::max(opaque.begin, hidden.begin), std::min(opaque.end, hidden.end)};

        TextureCoverage& coverage = result[upload.level];
        if (!columns.isEmpty() && !rows.isEmpty()) {
            coverage.left = static_cast<std::uint16_t>(columns.begin);
            coverage.right = static_cast<std::uint16_t>(width - columns.end);
            coverage.top = static_cast<std::uint16_t>(rows.begin);
            coverage.bottom = static_cast<std::uint16_t>(height - rows.end);
        }
        if (!opaque.isEmpty()) {
            coverage.opaqueBegin = static_cast<std::uint16_t>(opaque.begin);
            coverage.opaqueEnd = static_cast<std::uint16_t>(opaque.end);
        }
    }
    // Sampling does not go beyond the last level that there is.
    for (std::size_t level = levels; level < coverageLevels; ++level) {
        result[level] = result[levels - 1];
    }
    return result;
}

} // namespace dunkman
