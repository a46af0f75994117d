#pragma once

#include "exact/triple_double.h"

#include <array>
#include <cstdint>

// Constants of the exact functions to 159 bits and more, written by workshop/exact/generate_exact_math_tables.py.
namespace dunkman {

struct SineAndCosine {
    TripleDouble sine;
    TripleDouble cosine;
};

extern const TripleDouble halfPi;
extern const TripleDouble logarithmOf2By64;                  // ln 2 / 64
extern const std::array<SineAndCosine, 51> sinesAndCosines;  // of k / 64 radians, up to just under pi / 4
extern const std::array<TripleDouble, 64> powersOf2;         // 2^(k / 64)
extern const std::array<TripleDouble, 65> arctangents;       // of k / 64
extern const std::array<TripleDouble, 20> inverseFactorials; // 1 / k!
extern const std::array<TripleDouble, 12> inverseOddNumbers; // 1 / (2 k + 1)
extern const std::array<std::uint32_t, 40> wordsOf2ByPi;     // the fraction 2 / pi, highest bits first

} // namespace dunkman
