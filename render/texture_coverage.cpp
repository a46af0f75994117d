#include "render/texture_coverage.h"

#include <algorithm>
#include <bit>
#include <span>

#include "render/dds.h"

namespace dunkman {
namespace {

constexpr std::uint32_t blockTexels = 4;
constexpr std::uint32_t blockBytes = 8;

// Texels of a DXT1 block, each a bit where the low bit of its index is: bit 2 (4 y + x).
using BlockMask = std::uint32_t;
constexpr BlockMask wholeBlock = 0x55555555;
constexpr BlockMask firstRow = 0x55;
constexpr unsigned int rowBits = 8;

// Two colours of 16 bits, then an index of 2 bits for each texel, little-endian.
struct Block {
    std::uint32_t colours;
    std::uint32_t indices;
};

std::uint32_t wordAt(std::span<const std::byte, 4> bytes) {
    const auto byte = [bytes](std::size_t index) { return std::to_integer<std::uint32_t>(bytes[index]); };
    return byte(0) | byte(1) << 8 | byte(2) << 16 | byte(3) << 24;
}

Block blockAt(std::span<const std::byte, blockBytes> bytes) {
    return {wordAt(bytes.first<4>()), wordAt(bytes.last<4>())};
}

// Those with index 3, if the first colour is not above the second.
BlockMask transparentTexels(const Block& block) {
    const bool allOpaque = (block.colours & 0xFFFF) > block.colours >> 16;
    return block.indices & block.indices >> 1 & (allOpaque ? 0 : wholeBlock);
}

// From a first one to the one behind the last.
struct Range {
    std::uint32_t begin = 0;
    std::uint32_t end = 0;

    bool isEmpty() const { return begin >= end; }
    bool contains(std::uint32_t from, std::uint32_t to) const { return begin <= from && to <= end; }
    void include(const Range& other) {
        *this = isEmpty() ? other : Range{std::min(begin, other.begin), std::max(end, other.end)};
    }
};

// A row of blocks of a level, which has this many columns and rows of texels from here on.
class BlockRow {
public:
    BlockRow(std::span<const std::byte> blockRow, std::uint32_t columns, std::uint32_t rows)
        : bytes(blockRow), lastBlock((columns - 1) / blockTexels),
          insideOfMost(insideTexels(blockTexels, rows)),
          insideOfLast(insideTexels(columns - lastBlock * blockTexels, rows)) {}

    std::uint32_t blocks() const { return lastBlock + 1; }

    // The texels of a block that lie within the picture and are not transparent.
    BlockMask seen(std::uint32_t block) const {
        const auto data = bytes.subspan(std::size_t{block} * blockBytes).first<blockBytes>();
        return (block < lastBlock ? insideOfMost : insideOfLast) & ~transparentTexels(blockAt(data));
    }

private:
    // `columns` and `rows` of texels are left of the picture.
    static BlockMask insideTexels(std::uint32_t columns, std::uint32_t rows) {
        const BlockMask row = firstRow & ((1u << (2 * std::min(columns, blockTexels))) - 1u);
        const BlockMask block = row | row << rowBits | row << (2 * rowBits) | row << (3 * rowBits);
        return rows >= blockTexels ? block : block & ((1u << (rowBits * rows)) - 1u);
    }

    std::span<const std::byte> bytes;
    std::uint32_t lastBlock;
    BlockMask insideOfMost;
    BlockMask insideOfLast;
};

// The columns of texels that are seen in a block.
Range columnsOf(BlockMask seen, std::uint32_t block) {
    const BlockMask columns =
        (seen | seen >> rowBits | seen >> (2 * rowBits) | seen >> (3 * rowBits)) & firstRow;
    return {block * blockTexels + static_cast<std::uint32_t>(std::countr_zero(columns)) / 2,
            block * blockTexels + static_cast<std::uint32_t>(std::bit_width(columns) + 1) / 2};
}

// What is seen in the blocks of the row, laid over each other, as far as it was looked at; widens `columns` to all that is
// seen in it. Start-up looks at a million blocks, so it does not look longer than it must: once there is something in every
// row of texels, only the right edge is of interest.
BlockMask lookAtRow(const BlockRow& row, Range& columns) {
    BlockMask seenAnywhere = 0;
    const std::uint32_t blocks = row.blocks();
    std::uint32_t block = 0;
    for (; block < blocks && seenAnywhere != wholeBlock; ++block) {
        const BlockMask seen = row.seen(block);
        seenAnywhere |= seen;
        if (seen != 0 && !columns.contains(block * blockTexels, (block + 1) * blockTexels)) {
            columns.include(columnsOf(seen, block));
        }
    }
    for (std::uint32_t last = blocks; last > block && last * blockTexels > columns.end; --last) {
        if (const BlockMask seen = row.seen(last - 1); seen != 0) {
            columns.include(columnsOf(seen, last - 1));
            break;
        }
    }
    return seenAnywhere;
}

// What one level holds, in its own texels.
struct LevelCoverage {
    Range columns; // with a texel that is not transparent
    Range rows;
};

LevelCoverage lookAt(std::span<const std::byte> pixels, std::uint32_t width, std::uint32_t height) {
    LevelCoverage level;
    const std::size_t rowBytes = std::size_t{(width + blockTexels - 1) / blockTexels} * blockBytes;
    for (std::uint32_t y = 0; y < height; y += blockTexels) {
        const std::uint32_t rows = std::min(blockTexels, height - y);
        const BlockMask seen = lookAtRow(BlockRow(pixels.first(rowBytes), width, rows), level.columns);
        pixels = pixels.subspan(rowBytes);
        for (std::uint32_t row = 0; row < rows; ++row) {
            if ((seen & firstRow << (rowBits * row)) != 0) {
                level.rows.include({y + row, y + row + 1});
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

// A sample mixes the texels within one texel of it.
Range grown(const Range& seen, std::uint32_t full, std::uint32_t level) {
    if (seen.isEmpty()) {
        return {};
    }
    return {scaledDown(std::max(seen.begin, 1u) - 1, full, level),
            scaledUp(std::min(seen.end + 1, level), full, level)};
}

} // namespace

CoverageByLevel coverageOf(const DdsImage& image) {
    const std::uint32_t width = image.header.width;
    const std::uint32_t height = image.header.height;
    const std::uint32_t levels = ddsStorageLevels(image.header);
    CoverageByLevel result;
    Range columns;
    Range rows;
    for (const DdsUpload& upload : ddsUploads(image.header)) {
        if (upload.level >= std::min<std::uint32_t>(levels, coverageLevels)) {
            break;
        }
        const LevelCoverage level =
            lookAt(image.pixels().subspan(upload.offset, upload.bytes), upload.width, upload.height);
        if (const Range seen = grown(level.columns, width, upload.width); !seen.isEmpty()) {
            columns.include(seen);
        }
        if (const Range seen = grown(level.rows, height, upload.height); !seen.isEmpty()) {
            rows.include(seen);
        }
        TextureCoverage& coverage = result[upload.level];
        if (!columns.isEmpty() && !rows.isEmpty()) {
            coverage.left = static_cast<std::uint16_t>(columns.begin);
            coverage.right = static_cast<std::uint16_t>(width - columns.end);
            coverage.top = static_cast<std::uint16_t>(rows.begin);
            coverage.bottom = static_cast<std::uint16_t>(height - rows.end);
        }
    }
    // Sampling does not go beyond the last level that there is.
    for (std::size_t level = levels; level < coverageLevels; ++level) {
        result[level] = result[levels - 1];
    }
    return result;
}

} // namespace dunkman
