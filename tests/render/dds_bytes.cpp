#include "tests/render/dds_bytes.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace dunkman {

std::string DdsBytes::build() const {
    std::vector<std::uint32_t> words(32, 0);
    words[0] = 0x20534444; // "DDS "
    words[1] = 124;        // header size
    words[3] = height;
    words[4] = width;
    words[7] = mipMapCount;
    words[19] = 32; // pixel format size
    words[21] = fourCc;
    if (fourCc == 0x30315844) { // "DX10"
        words.insert(words.end(), {71, 3, 0, 1, 0});
    }
    std::string bytes;
    for (const std::uint32_t word : words) {
        for (unsigned int shift = 0; shift < 32; shift += 8) {
            bytes.push_back(static_cast<char>(word >> shift & 0xFFu));
        }
    }
    std::uint32_t w = width;
    std::uint32_t h = height;
    for (std::uint32_t level = 0; level < mipMapCount; ++level) {
        bytes.append(std::size_t{8} * ((w + 3) / 4) * ((h + 3) / 4), static_cast<char>(level + 1));
        w = std::max(1u, w / 2);
        h = std::max(1u, h / 2);
    }
    return bytes;
}

} // namespace dunkman
