#include "world/random.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

namespace dunkman {

namespace {

class RandomTest : public testing::Test {
protected:
    RandomTest() { resetRandom(); }
    ~RandomTest() override { resetRandom(); }
};

// Reckoned with arbitrary-precision integers.
constexpr std::array<std::uint64_t, 10> firstNumbers = {
    0x882b82e4df0a96c2u, 0x3e6d02a5eba43647u, 0x337fe9ae22c8fd1au, 0x3f46ff497e5efd98u, 0x48f80488c0a83b6du,
    0xd1e6016267bad441u, 0xc251fe01a3b7a6deu, 0xe93a4f4a2fafe7bfu, 0x8b6a4e5bbe1b3551u, 0xdca622bbaf9b11b4u};

TEST_F(RandomTest, DrawsTheSameNumbersInEveryRun) {
    for (const std::uint64_t expected : firstNumbers) {
        EXPECT_EQ(nextRandom(), expected);
    }
}

TEST_F(RandomTest, TheThousandthNumberIsRight) {
    for (int draw = 1; draw < 1000; ++draw) {
        nextRandom();
    }
    EXPECT_EQ(nextRandom(), 0x1108a13b76899a53u);
}

TEST_F(RandomTest, TheLastNumberIsTheState) {
    const std::uint64_t drawn = nextRandom();
    EXPECT_EQ(randomState, drawn);
}

TEST_F(RandomTest, AFractionIsTheNumberInUnitsOf2ToTheMinus64) {
    for (const std::uint64_t number : firstNumbers) {
        EXPECT_EQ(nextRandomFraction(), std::ldexp(static_cast<double>(number), -64));
    }
}

TEST_F(RandomTest, ResettingStartsAgain) {
    const std::uint64_t first = nextRandom();
    nextRandom();
    resetRandom();
    EXPECT_EQ(nextRandom(), first);
}

} // namespace

} // namespace dunkman
