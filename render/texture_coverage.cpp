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
    std::uint32_t length() const { return isEmpty() ? 0 : end - begin; }
    void include(const Range& other) {
        if (!other.isEmpty()) {
            *this = isEmpty() ? other : Range{std::min(begin, other.begin), std::max(end, other.end)};
        }
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

// Something that is seen within this rectangle.
struct Extent {
    Range columns;
    Range rows;

    void include(const Extent& other) {
        columns.include(other.columns);
        rows.include(other.rows);
    }
    std::uint64_t area() const { return std::uint64_t{columns.length()} * rows.length(); }
};

Range columnsOf(BlockMask seen, std::uint32_t block) {
    const BlockMask columns =
        (seen | seen >> rowBits | seen >> (2 * rowBits) | seen >> (3 * rowBits)) & firstRow;
    return {block * blockTexels + static_cast<std::uint32_t>(std::countr_zero(columns)) / 2,
            block * blockTexels + static_cast<std::uint32_t>(std::bit_width(columns) + 1) / 2};
}

Range rowsOf(BlockMask seen) {
    return {static_cast<std::uint32_t>(std::countr_zero(seen)) / rowBits,
            static_cast<std::uint32_t>(std::bit_width(seen) - 1) / rowBits + 1};
}

// Rows count from the first of the blocks'. Start-up looks at a million blocks, so it does not look longer than it must: once
// there is something in the first and the last row, only the right edge is of interest.
Extent extentOf(const BlockRow& row, std::uint32_t rowCount) {
    Extent extent;
    const std::uint32_t blocks = row.blocks();
    std::uint32_t block = 0;
    for (; block < blocks && extent.rows.length() < rowCount; ++block) {
        if (const BlockMask seen = row.seen(block); seen != 0) {
            extent.include({columnsOf(seen, block), rowsOf(seen)});
        }
    }
    for (std::uint32_t last = blocks; last > block; --last) {
        if (const BlockMask seen = row.seen(last - 1); seen != 0) {
            extent.columns.include(columnsOf(seen, last - 1));
            break;
        }
    }
    return extent;
}

// A place between the texels of a level, in texels of the full size.
std::uint32_t scaledDown(std::uint32_t place, std::uint32_t full, std::uint32_t level) {
    return static_cast<std::uint32_t>(std::uint64_t{place} * full / level);
}
std::uint32_t scaledUp(std::uint32_t place, std::uint32_t full, std::uint32_t level) {
    return static_cast<std::uint32_t>((std::uint64_t{place} * full + level - 1) / level);
}

// Where something of it may be sampled, in texels of the full size: a sample mixes the texels within one texel of it.
Range sampledFrom(const Range& seen, std::uint32_t full, std::uint32_t level) {
    return {scaledDown(std::max(seen.begin, 1u) - 1, full, level),
            scaledUp(std::min(seen.end + 1, level), full, level)};
}

// The texture cut into strips of so many rows, with what may be sampled in each of them.
class Strips {
public:
    static constexpr std::uint32_t mostStrips = 40;

    Strips(std::uint32_t textureWidth, std::uint32_t textureHeight)
        : width(textureWidth), height(textureHeight), rows((height + mostStrips - 1) / mostStrips),
          count((height + rows - 1) / rows) {}

    // What is seen in that level, too.
    void include(std::span<const std::byte> pixels, std::uint32_t levelWidth, std::uint32_t levelHeight) {
        const std::size_t rowBytes = std::size_t{(levelWidth + blockTexels - 1) / blockTexels} * blockBytes;
        for (std::uint32_t y = 0; y < levelHeight; y += blockTexels) {
            const std::uint32_t rowCount = std::min(blockTexels, levelHeight - y);
            Extent seen = extentOf(BlockRow(pixels.first(rowBytes), levelWidth, rowCount), rowCount);
            pixels = pixels.subspan(rowBytes);
            if (seen.columns.isEmpty()) {
                continue;
            }
            seen.rows = sampledFrom({y + seen.rows.begin, y + seen.rows.end}, height, levelHeight);
            seen.columns = sampledFrom(seen.columns, width, levelWidth);
            include(seen);
        }
    }

    std::size_t size() const { return count; }
    const Extent& operator[](std::size_t index) const { return strips[index]; }

private:
    void include(const Extent& seen) {
        for (std::uint32_t index = seen.rows.begin / rows; index <= (seen.rows.end - 1) / rows; ++index) {
            strips[index].include(
                {seen.columns,
                 {std::max(seen.rows.begin, index * rows), std::min(seen.rows.end, (index + 1) * rows)}});
        }
    }

    std::uint32_t width;
    std::uint32_t height;
    std::uint32_t rows;
    std::size_t count;
    std::array<Extent, mostStrips> strips{};
};

// Where parts begin: the strips that they are made of.
struct Cuts {
    std::array<std::size_t, mostTextureParts + 1> places{}; // the last: the number of strips
    std::size_t parts = 0;
};

// The cuts that leave the least to draw, where each part beyond the first has to spare this much. Step by step: the best way
// to put the first strips into some parts goes on from the best ways to put fewer strips into one part less.
Cuts bestCuts(const Strips& strips, std::uint64_t areaOfAPart) {
    constexpr std::size_t most = Strips::mostStrips + 1; // and none
    const std::size_t end = strips.size();
    std::array<std::array<std::uint64_t, most>, mostTextureParts> area{}; // by parts less 1, by strips
    std::array<std::array<std::size_t, most>, mostTextureParts> begin{};  // of the last of these parts
    for (std::size_t from = 0; from < end; ++from) {
        Extent part;
        for (std::size_t to = from + 1; to <= end; ++to) {
            part.include(strips[to - 1]);
            const std::uint64_t own = part.area() + areaOfAPart;
            if (from == 0) {
                area[0][to] = own;
            }
            for (std::size_t parts = 1; parts < mostTextureParts && parts <= from; ++parts) {
                const std::uint64_t all = area[parts - 1][from] + own;
                if (begin[parts][to] == 0 || all < area[parts][to]) {
                    area[parts][to] = all;
                    begin[parts][to] = from;
                }
            }
        }
    }
    Cuts cuts;
    cuts.parts = 1;
    for (std::size_t parts = 2; parts <= std::min(end, mostTextureParts); ++parts) {
        if (area[parts - 1][end] < area[cuts.parts - 1][end]) {
            cuts.parts = parts;
        }
    }
    std::size_t place = end;
    for (std::size_t part = cuts.parts; part > 0; --part) {
        cuts.places[part] = place;
        place = begin[part - 1][place];
    }
    return cuts;
}

TextureCoverage coverageOf(const Strips& strips, const Cuts& cuts) {
    TextureCoverage coverage;
    for (std::size_t part = 0; part < cuts.parts; ++part) {
        Extent extent;
        for (std::size_t index = cuts.places[part]; index < cuts.places[part + 1]; ++index) {
            extent.include(strips[index]);
        }
        if (extent.area() > 0) {
            coverage.parts[coverage.count] = {.left = static_cast<std::uint16_t>(extent.columns.begin),
                                              .top = static_cast<std::uint16_t>(extent.rows.begin),
                                              .right = static_cast<std::uint16_t>(extent.columns.end),
                                              .bottom = static_cast<std::uint16_t>(extent.rows.end)};
            ++coverage.count;
        }
    }
    return coverage;
}

// What says no more than that the texture may be seen all over.
bool isWhole(const TextureCoverage& coverage, std::uint32_t width, std::uint32_t height) {
    return coverage.count == 1 && coverage.parts[0].left == 0 && coverage.parts[0].top == 0 &&
           coverage.parts[0].right == width && coverage.parts[0].bottom == height;
}

} // namespace

CoverageByLevel coverageOf(const DdsImage& image) {
    const std::uint32_t width = image.header.width;
    const std::uint32_t height = image.header.height;
    const std::uint32_t levels = std::min<std::uint32_t>(ddsStorageLevels(image.header), coverageLevels);
    CoverageByLevel result;
    Strips strips(width, height);
    Cuts cuts;
    for (const DdsUpload& upload : ddsUploads(image.header)) {
        if (upload.level >= levels) {
            break;
        }
        strips.include(image.pixels().subspan(upload.offset, upload.bytes), upload.width, upload.height);
        if (upload.level == 0) {
            constexpr std::uint64_t partsOfATexture =
                64; // that one more part has to spare: its draw has a price, too
            cuts = bestCuts(strips, std::uint64_t{width} * height / partsOfATexture);
        }
        result[upload.level] = coverageOf(strips, cuts);
        if (isWhole(result[upload.level], width, height)) {
            result[upload.level] = {};
        }
    }
    // Sampling does not go beyond the last level that there is.
    for (std::size_t level = levels; level < coverageLevels; ++level) {
        result[level] = result[levels - 1];
    }
    return result;
}

} // namespace dunkman
