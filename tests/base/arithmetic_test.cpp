#include "base/arithmetic.h"

#include <gtest/gtest.h>

#include <cfenv>

#if defined(__x86_64__) || defined(_M_X64)
#include <xmmintrin.h>
#define DUNKMAN_TEST_CONTROL_WORD 1
#endif

namespace dunkman {
namespace {

class Arithmetic : public testing::Test {
protected:
    ~Arithmetic() override { std::fesetenv(FE_DFL_ENV); }
};

TEST_F(Arithmetic, IsTheDefaultInAFreshThread) { EXPECT_TRUE(hasDefaultArithmetic()); }

TEST_F(Arithmetic, IsNotTheDefaultWithAnyOtherRounding) {
    for (const int rounding : {FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO}) {
        ASSERT_EQ(std::fesetround(rounding), 0);
        const bool isDefault = hasDefaultArithmetic();
        std::fesetround(FE_TONEAREST);
        EXPECT_FALSE(isDefault) << rounding;
    }
}

#ifdef DUNKMAN_TEST_CONTROL_WORD
TEST_F(Arithmetic, IsNotTheDefaultWhereSmallNumbersBecomeZero) {
    const unsigned flushToZero = 0x8000;
    const unsigned denormalsAreZero = 0x0040;
    for (const unsigned bit : {flushToZero, denormalsAreZero}) {
        const unsigned before = _mm_getcsr();
        _mm_setcsr(before | bit);
        const bool isDefault = hasDefaultArithmetic();
        _mm_setcsr(before);
        EXPECT_FALSE(isDefault) << bit;
    }
}
#endif

} // namespace
} // namespace dunkman
