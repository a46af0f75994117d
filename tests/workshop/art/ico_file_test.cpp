#include "workshop/art/texture/ico_file.h"

#include "tests/workshop/art/cartoon.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

namespace dunkman {

namespace {

using Bytes = std::vector<std::uint8_t>;

std::uint32_t numberAt(const Bytes& bytes, std::size_t offset, std::size_t size) {
    std::uint32_t number = 0;
    for (std::size_t byte = 0; byte < size; ++byte) {
        number |= static_cast<std::uint32_t>(bytes.at(offset + byte)) << (8 * byte);
    }
    return number;
}

constexpr std::size_t bitmap = 6 + 16; // where the only picture begins
constexpr std::size_t texels = bitmap + 40;

} // namespace

TEST(IcoFile, ListsEveryPictureWithItsSizeAndPlace) {
    const Bytes png(100, 7);
    const Bytes bytes = icoBytes({{makeFlat(16, 16, {}), {}}, {makeFlat(256, 256, {}), png}});
    EXPECT_EQ(numberAt(bytes, 0, 2), 0U);
    EXPECT_EQ(numberAt(bytes, 2, 2), 1U) << "an icon";
    EXPECT_EQ(numberAt(bytes, 4, 2), 2U) << "pictures";
    const std::size_t first = 6;
    const std::size_t second = 6 + 16;
    EXPECT_EQ(bytes.at(first), 16) << "width";
    EXPECT_EQ(bytes.at(first + 1), 16) << "height";
    EXPECT_EQ(numberAt(bytes, first + 6, 2), 32U) << "bits of a texel";
    EXPECT_EQ(numberAt(bytes, first + 8, 4), 40U + 16U * 16U * 4U + 16U * 4U) << "header, texels, mask";
    EXPECT_EQ(numberAt(bytes, first + 12, 4), 6U + 2U * 16U);
    EXPECT_EQ(bytes.at(second), 0) << "stands for 256";
    EXPECT_EQ(numberAt(bytes, second + 8, 4), png.size());
    EXPECT_EQ(numberAt(bytes, second + 12, 4), bytes.size() - png.size());
    EXPECT_EQ(Bytes(bytes.end() - 100, bytes.end()), png);
}

TEST(IcoFile, HoldsRowsFromTheBottomUpInBlueGreenRedAlpha) {
    Picture picture = makeFlat(2, 2, {});
    picture.at(1, 1) = {1, 2, 3, 4};
    const Bytes bytes = icoBytes({{picture, {}}});
    EXPECT_EQ(numberAt(bytes, bitmap, 4), 40U);
    EXPECT_EQ(numberAt(bytes, bitmap + 8, 4), 4U) << "picture and mask";
    EXPECT_EQ(Bytes(bytes.begin() + texels + 4, bytes.begin() + texels + 8), (Bytes{3, 2, 1, 4}));
}

TEST(IcoFile, MasksWhatIsNotDrawnInRowsOfWholeWords) {
    Picture picture = makeFlat(20, 20, {9, 9, 9, 1});
    picture.at(0, 19).alpha = 0;
    picture.at(19, 19).alpha = 0;
    const Bytes bytes = icoBytes({{picture, {}}});
    const std::size_t mask = texels + 20 * 20 * 4;
    EXPECT_EQ(Bytes(bytes.begin() + static_cast<std::ptrdiff_t>(mask),
                    bytes.begin() + static_cast<std::ptrdiff_t>(mask) + 4),
              (Bytes{0x80, 0, 0x10, 0}));
    EXPECT_EQ(bytes.size(), mask + 20 * 4);
}

} // namespace dunkman
