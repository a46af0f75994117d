#include "audio/mp3_file.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace dunkman {

namespace {

struct FrameHeader {
    std::size_t length = 0; // bytes, with the header
    bool isVersion1 = false;
    bool isMono = false;
    std::uint32_t rate = 0; // samples a second
};

class Mp3Walker {
public:
    explicit Mp3Walker(std::span<const std::byte> itsFile) : file(itsFile) {}

    Mp3Fault walk() {
        if (file.empty()) {
            return Mp3Fault::Empty;
        }
        std::size_t at = behindFrontTags();
        if (at > file.size()) {
            return Mp3Fault::CutOff;
        }
        const std::optional<std::size_t> first = findFirstFrame(at);
        if (!first) {
            return Mp3Fault::NotMp3;
        }
        at = *first;
        const FrameHeader firstHeader = *headerAt(at);
        std::uint32_t frames = 0;
        while (at < file.size()) {
            const std::optional<FrameHeader> header = headerAt(at);
            if (!header || header->rate != firstHeader.rate) {
                break;
            }
            if (header->length > file.size() - at) {
                return Mp3Fault::CutOff;
            }
            at += header->length;
            ++frames;
        }
        // Anything else behind the last frame is a tag or padding, but the start of a header is half a frame.
        if (at < file.size() && file.size() - at < 4 && byteAt(at) == 0xFF) {
            return Mp3Fault::CutOff;
        }
        return frames < statedFrames(*first, firstHeader) ? Mp3Fault::CutOff : Mp3Fault::None;
    }

private:
    std::uint32_t byteAt(std::size_t at) const { return static_cast<std::uint32_t>(file[at]); }

    std::uint32_t bigEndianAt(std::size_t at) const {
        return byteAt(at) << 24 | byteAt(at + 1) << 16 | byteAt(at + 2) << 8 | byteAt(at + 3);
    }

    bool hasTextAt(std::size_t at, std::string_view text) const {
        if (at > file.size() || file.size() - at < text.size()) {
            return false;
        }
        for (std::size_t index = 0; index < text.size(); ++index) {
            if (byteAt(at + index) != static_cast<unsigned char>(text[index])) {
                return false;
            }
        }
        return true;
    }

    // An ID3v2 tag states its size in four bytes of seven bits. May point behind the end of a cut file.
    std::size_t behindFrontTags() const {
        constexpr std::size_t tagHeaderBytes = 10;
        std::size_t at = 0;
        while (hasTextAt(at, "ID3") && file.size() - at >= tagHeaderBytes) {
            const std::size_t size = (byteAt(at + 6) & 0x7F) << 21 | (byteAt(at + 7) & 0x7F) << 14 |
                                     (byteAt(at + 8) & 0x7F) << 7 | (byteAt(at + 9) & 0x7F);
            const bool hasFooter = (byteAt(at + 5) & 0x10) != 0;
            at += tagHeaderBytes + size + (hasFooter ? tagHeaderBytes : 0);
        }
        return at;
    }

    std::optional<FrameHeader> headerAt(std::size_t at) const {
        constexpr std::array<std::uint32_t, 16> version1Kilobits = {0,   32,  40,  48,  56,  64,  80,  96,
                                                                    112, 128, 160, 192, 224, 256, 320, 0};
        constexpr std::array<std::uint32_t, 16> version2Kilobits = {0,  8,  16, 24,  32,  40,  48,  56,
                                                                    64, 80, 96, 112, 128, 144, 160, 0};
        constexpr std::array<std::uint32_t, 4> version1Rates = {44100, 48000, 32000, 0};
        if (at > file.size() || file.size() - at < 4) {
            return std::nullopt;
        }
        const std::uint32_t bits = bigEndianAt(at);
        const std::uint32_t version = bits >> 19 & 3; // 3: version 1, 2: version 2, 0: version 2.5
        const std::uint32_t layer = bits >> 17 & 3;   // 1: layer III
        const bool isVersion1 = version == 3;
        const std::uint32_t kilobits = (isVersion1 ? version1Kilobits : version2Kilobits)[bits >> 12 & 15];
        const std::uint32_t fullRate = version1Rates[bits >> 10 & 3];
        if (bits >> 21 != 0x7FF || version == 1 || layer != 1 || kilobits == 0 || fullRate == 0) {
            return std::nullopt;
        }
        const std::uint32_t rate = isVersion1 ? fullRate : version == 2 ? fullRate / 2 : fullRate / 4;
        const std::uint32_t padding = bits >> 9 & 1;
        const std::uint32_t length = (isVersion1 ? 144000 : 72000) * kilobits / rate + padding;
        return FrameHeader{length, isVersion1, (bits >> 6 & 3) == 3, rate};
    }

    // Four bytes look like a header by chance; two headers at the right distance do not.
    std::optional<std::size_t> findFirstFrame(std::size_t from) const {
        for (std::size_t at = from; at + 4 <= file.size(); ++at) {
            const std::optional<FrameHeader> header = headerAt(at);
            if (!header) {
                continue;
            }
            const bool isOnlyFrame = at == from && header->length >= file.size() - at;
            if (isOnlyFrame || headerAt(at + header->length)) {
                return at;
            }
        }
        return std::nullopt;
    }

    // Encoders put the number of frames into a silent first one; 0 where there is none. Some count it in and
    // some do not.
    std::uint32_t statedFrames(std::size_t first, const FrameHeader& header) const {
        const std::size_t sideBytes =
            header.isVersion1 ? (header.isMono ? 17 : 32) : (header.isMono ? 9 : 17);
        const std::size_t at = first + 4 + sideBytes;
        if (!hasTextAt(at, "Xing") && !hasTextAt(at, "Info")) {
            return 0;
        }
        const bool hasCount = file.size() - at >= 12 && (bigEndianAt(at + 4) & 1) != 0;
        return hasCount ? bigEndianAt(at + 8) : 0;
    }

    std::span<const std::byte> file;
};

} // namespace

Mp3Fault examineMp3(std::span<const std::byte> file) { return Mp3Walker(file).walk(); }

const char* describe(Mp3Fault fault) {
    switch (fault) {
    case Mp3Fault::Empty:
        return "is empty";
    case Mp3Fault::NotMp3:
        return "is no MP3 file";
    case Mp3Fault::CutOff:
        return "is cut off";
    case Mp3Fault::None:
        break;
    }
    return "";
}

} // namespace dunkman
