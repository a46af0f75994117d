#include "audio/mirrored_memory.h"

#include <gtest/gtest.h>

namespace dunkman {
namespace {

TEST(MirroredMemory, StartsZeroedAndBackToBack) {
    MirroredMemory memory;
    ASSERT_FALSE(memory.allocate(65536).failed());
    EXPECT_EQ(memory.size(), 65536u);
    EXPECT_EQ(memory.mirror(), memory.data() + 65536);
    for (std::size_t at = 0; at < 2 * 65536; ++at) {
        ASSERT_EQ(memory.data()[at], std::byte{0}) << at;
    }
}

TEST(MirroredMemory, ShowsEveryByteTwice) {
    MirroredMemory memory;
    ASSERT_FALSE(memory.allocate(524288).failed());
    for (std::size_t at = 0; at < 524288; ++at) {
        // Written through either view in turn.
        memory.data()[at % 2 == 0 ? at : at + 524288] = static_cast<std::byte>(at * 7 + at / 251);
    }
    for (std::size_t at = 0; at < 524288; ++at) {
        ASSERT_EQ(memory.data()[at], static_cast<std::byte>(at * 7 + at / 251)) << at;
        ASSERT_EQ(memory.mirror()[at], memory.data()[at]) << at;
    }
}

TEST(MirroredMemory, HoldsNothingAfterRelease) {
    MirroredMemory memory;
    ASSERT_FALSE(memory.allocate(65536).failed());
    memory.release();
    EXPECT_EQ(memory.data(), nullptr);
    EXPECT_EQ(memory.mirror(), nullptr);
    EXPECT_EQ(memory.size(), 0u);
    memory.release();
    EXPECT_FALSE(memory.allocate(65536).failed());
}

TEST(MirroredMemory, CanBeTakenAgainAndAgain) {
    // 20,000 times half a megabyte: a view or section left behind each time would run out of something.
    for (int round = 0; round < 20000; ++round) {
        MirroredMemory memory;
        const CallResult result = memory.allocate(524288);
        ASSERT_FALSE(result.failed()) << "round " << round << ": " << result.call;
        memory.mirror()[round % 524288] = std::byte{1};
        ASSERT_EQ(memory.data()[round % 524288], std::byte{1});
    }
}

} // namespace
} // namespace dunkman
