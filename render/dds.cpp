#include "render/dds.h"

#include <algorithm>
#include <bit>
#include <utility>

#include "base/fatal.h"
#include "base/file_contents.h"

namespace dunkman {
namespace {

constexpr std::size_t magicBytes = 4;
constexpr std::size_t extensionBytes = 20;
constexpr std::uint32_t blockTexels = 4; // DXT1 packs blocks of 4 x 4 texels
constexpr std::uint32_t blockBytes = 8;

[[noreturn]] void reject(const std::string& fileName, const std::string& reason) {
    fatal("The texture file \"" + fileName + "\" " + reason + ". Build the game's pictures again.");
}

// Words of a file, little-endian on every machine.
class WordReader {
public:
    explicit WordReader(std::span<const std::byte> source) : bytes(source) {}

    std::uint32_t next() {
        std::uint32_t word = 0;
        for (unsigned int byte = 0; byte < 4; ++byte) {
            word |= std::to_integer<std::uint32_t>(bytes[byte]) << (8 * byte);
        }
        bytes = bytes.subspan(4);
        return word;
    }

private:
    std::span<const std::byte> bytes;
};

DdsHeader readHeader(std::span<const std::byte> bytes) {
    std::array<std::uint32_t, sizeof(DdsHeader) / 4> words{};
    WordReader reader(bytes);
    std::generate(words.begin(), words.end(), [&reader] { return reader.next(); });
    return std::bit_cast<DdsHeader>(words);
}

std::uint32_t blocksAcross(std::uint32_t texels) {
    return std::max(1u, (texels + blockTexels - 1) / blockTexels);
}

template <typename Take> void forEachUpload(const DdsHeader& header, Take take) {
    DdsUpload upload{0, header.width, header.height, 0, 0};
    for (; upload.level < header.mipMapCount; ++upload.level) {
        upload.bytes = blocksAcross(upload.width) * blocksAcross(upload.height) * blockBytes;
        take(upload);
        upload.offset += upload.bytes;
        upload.width = std::max(1u, upload.width / 2);
        upload.height = std::max(1u, upload.height / 2);
    }
}

// A header may promise four billion levels, so the walk stops at the first one that the file lacks.
void requireAllLevels(const DdsImage& image, const std::string& fileName) {
    forEachUpload(image.header, [&](const DdsUpload& upload) {
        if (upload.offset + upload.bytes > image.pixels().size()) {
            reject(fileName, "ends too early: level " + std::to_string(upload.level) + " of " +
                                 std::to_string(image.header.mipMapCount) + " is not all there");
        }
    });
}

void requireSaneHeader(const DdsHeader& header, const std::string& fileName) {
    if (header.width == 0 || header.height == 0 || header.width > maxDdsExtent ||
        header.height > maxDdsExtent) {
        reject(fileName, "says that it is " + std::to_string(header.width) + " by " +
                             std::to_string(header.height) + " texels large; 1 to " +
                             std::to_string(maxDdsExtent) + " are possible");
    }
    if (ddsStorageLevels(header) == 0) {
        reject(fileName, "has a mip map count of " + std::to_string(header.mipMapCount) +
                             ", which leaves no level to draw");
    }
}

} // namespace

DdsImage parseDds(Bytes file, const std::string& fileName) {
    std::span<const std::byte> bytes = std::as_bytes(std::span(file.text()));
    if (bytes.size() < magicBytes || WordReader(bytes).next() != ddsMagic) {
        reject(fileName, "is no DDS file");
    }
    bytes = bytes.subspan(magicBytes);
    if (bytes.size() < sizeof(DdsHeader)) {
        reject(fileName, "ends within its header");
    }
    DdsImage image;
    image.header = readHeader(bytes);
    bytes = bytes.subspan(sizeof(DdsHeader));
    if (image.header.fourCc == ddsFourCcDx10) {
        if (bytes.size() < extensionBytes) {
            reject(fileName, "ends within its extended header");
        }
        WordReader reader(bytes);
        std::generate(image.extension.begin(), image.extension.end(), [&reader] { return reader.next(); });
        bytes = bytes.subspan(extensionBytes);
    }
    requireSaneHeader(image.header, fileName);
    image.headerBytes = file.size() - bytes.size();
    image.bytes = std::move(file);
    requireAllLevels(image, fileName);
    if (image.header.mipMapCount > maxDdsLevels) {
        reject(fileName, "has a mip map count of " + std::to_string(image.header.mipMapCount) + "; up to " +
                             std::to_string(maxDdsLevels) + " are possible");
    }
    return image;
}

DdsImage readDds(const std::string& path) {
    return namingFile(path, [&path] {
        FileContents file = readDataFile(path, maxDdsFileBytes);
        if (file.fault != FileFault::None) {
            reject(path, file.bytes.empty() ? "cannot be opened" : "cannot be read");
        }
        return parseDds(std::move(file.bytes), path);
    });
}

std::uint32_t ddsStorageLevels(const DdsHeader& header) {
    const auto possible =
        static_cast<std::uint32_t>(std::bit_width(std::max({header.width, header.height, 1u})));
    return std::min(possible, header.mipMapCount & 0xFFu);
}

std::vector<DdsUpload> ddsUploads(const DdsHeader& header) {
    std::vector<DdsUpload> uploads;
    forEachUpload(header, [&uploads](const DdsUpload& upload) { uploads.push_back(upload); });
    return uploads;
}

} // namespace dunkman
