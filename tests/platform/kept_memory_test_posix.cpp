#include <gtest/gtest.h>
#include <sys/resource.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "platform/simulated/gl_sim.h"

namespace dunkman {
namespace {

// Pages, or several at once, that the system has put into place so far.
std::int64_t newPages() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_minflt;
}

// Takes as much memory as Mesa does for a frame, in pieces as large as its own, and gives it back.
void takeAndGiveBack() {
    constexpr std::size_t pieces = 160;
    constexpr std::size_t bytes = 65536;
    std::vector<std::unique_ptr<std::uint8_t[]>> frame;
    for (std::size_t piece = 0; piece < pieces; ++piece) {
        frame.push_back(std::make_unique<std::uint8_t[]>(bytes)); // cleared: every page is touched
    }
}

std::int64_t newPagesOfTenFrames() {
    takeAndGiveBack();
    const std::int64_t before = newPages();
    for (int frame = 0; frame < 10; ++frame) {
        takeAndGiveBack();
    }
    return newPages() - before;
}

TEST(MemoryInSoftware, ServesFrameAfterFrame) {
    const std::int64_t without = newPagesOfTenFrames();
    if (without < 1000) {
        GTEST_SKIP() << "here memory stays anyway, or comes in large pages";
    }
    simulated::loadGlFunctions();
    EXPECT_LT(newPagesOfTenFrames(), without / 10);
    simulated::resetGl();
}

} // namespace
} // namespace dunkman
