#include <gtest/gtest.h>

#include <new>
#include <stdexcept>
#include <string>

#include "base/fatal.h"
#include "tools/console/fault.h"

namespace dunkman {

namespace {

std::string toldOf(const std::exception& fault) {
    testing::internal::CaptureStderr();
    EXPECT_EQ(console::endWithFault(fault), 1);
    return testing::internal::GetCapturedStderr();
}

TEST(FaultOfADeveloperProgram, IsToldInItsOwnWords) {
    EXPECT_EQ(toldOf(FatalError("The file \"a\" is not there.")), "The file \"a\" is not there.\n");
    EXPECT_EQ(toldOf(std::runtime_error("picture.ppm cannot be written")), "picture.ppm cannot be written\n");
}

TEST(FaultOfADeveloperProgram, IsToldAsTheGameDoesWhenMemoryIsMissing) {
    EXPECT_EQ(toldOf(std::bad_alloc()),
              "There is not enough memory to go on. Close other programs and start again.\n");
}

} // namespace

} // namespace dunkman
