#include "exact/argument_reduction.h"

#include "exact/exact_math_tables.h"
#include "exact/powers_of_two.h"
#include "exact/rounding_phase.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace dunkman {
namespace {

constexpr double quarterOfPi = 0.78539816339744828;
constexpr double twoByPi = 0.63661977236758138;

// How many words of 2 / pi take part, from the first one that can change the last two bits of the quarter
// turns. What is left out is below 2^-232 quarter turns; no double but 0 comes nearer than 2^-66 to a
// multiple of pi / 2.
constexpr std::size_t wordsTaken = 10;

// A whole number of 32-bit words, lowest first: a mantissa of 53 bits times wordsTaken words.
using WideNumber = std::array<std::uint32_t, wordsTaken + 2>;

WideNumber multiplied(std::uint64_t mantissa, std::size_t firstWord) {
    WideNumber product = {};
    for (std::size_t half = 0; half < 2; ++half) {
        const std::uint64_t factor = half == 0 ? mantissa & 0xFFFFFFFFu : mantissa >> 32;
        std::uint64_t carry = 0;
        for (std::size_t word = 0; word < wordsTaken; ++word) {
            carry += factor * wordsOf2ByPi[firstWord + wordsTaken - 1 - word] + product[word + half];
            product[word + half] = static_cast<std::uint32_t>(carry);
            carry >>= 32;
        }
        product[wordsTaken + half] = static_cast<std::uint32_t>(carry);
    }
    return product;
}

unsigned bitAt(const WideNumber& number, int position) {
    const std::size_t word = static_cast<std::size_t>(position) / 32;
    return word < number.size() ? (number[word] >> (position % 32)) & 1u : 0u;
}

// Keeps the lowest `bits` bits.
void keepLowest(WideNumber& number, int bits) {
    for (std::size_t word = 0; word < number.size(); ++word) {
        const int kept = bits - 32 * static_cast<int>(word);
        if (kept <= 0) {
            number[word] = 0;
        } else if (kept < 32) {
            number[word] &= (1u << kept) - 1u;
        }
    }
}

void negate(WideNumber& number) {
    std::uint64_t carry = 1;
    for (std::uint32_t& word : number) {
        carry += static_cast<std::uint32_t>(~word);
        word = static_cast<std::uint32_t>(carry);
        carry >>= 32;
    }
}

// number / 2^fractionBits
TripleDouble toTriple(const WideNumber& number, int fractionBits) {
    TripleDouble sum;
    for (std::size_t word = number.size(); word-- > 0;) {
        sum = sum + TripleDouble{number[word] * powerOf2(32 * static_cast<int>(word) - fractionBits)};
    }
    return sum;
}

} // namespace

// Payne and Hanek: radians * 2 / pi in whole numbers, without the words of 2 / pi that give only full turns.
TurnedAngle<TripleDouble> reduceAngleAccurately(double radians) {
    const bool negative = radians < 0.0;
    const double size = negative ? -radians : radians;
    if (size <= quarterOfPi) {
        return {0, TripleDouble{radians}};
    }
    const std::uint64_t bits = std::bit_cast<std::uint64_t>(size);
    const std::uint64_t mantissa = (bits & 0xFFFFFFFFFFFFFu) | 0x10000000000000u;
    const int exponent = static_cast<int>(bits >> 52) - 1075; // size = mantissa * 2^exponent
    const int firstWord = exponent < 34 ? 0 : (exponent - 2) / 32;
    const int fractionBits = 32 * (firstWord + static_cast<int>(wordsTaken)) - exponent;

    WideNumber turns = multiplied(mantissa, static_cast<std::size_t>(firstWord));
    unsigned quarterTurns = bitAt(turns, fractionBits) + 2 * bitAt(turns, fractionBits + 1);
    const bool pastHalf = bitAt(turns, fractionBits - 1) != 0;
    if (pastHalf) { // count from the next quarter turn backwards
        ++quarterTurns;
        negate(turns);
    }
    keepLowest(turns, fractionBits);
    const TripleDouble rest = toTriple(turns, fractionBits) * halfPi;
    return {negative ? 0u - quarterTurns : quarterTurns, negative != pastHalf ? -rest : rest};
}

// Close to a multiple of pi / 2 the absolute bound of subtractMultiple says too little about the rest.
TurnedAngle<DoubleDouble> reduceAngle(double radians) {
    const double size = radians < 0.0 ? -radians : radians;
    if (size <= quarterOfPi) {
        return {0, {radians, 0.0}};
    }
    if (size < 0x1p31) {
        const double count = roundToWhole(radians * twoByPi);
        const DoubleDouble rest = subtractMultiple(radians, count, halfPi);
        if (rest.high > 0x1p-20 || rest.high < -0x1p-20) {
            return {static_cast<unsigned>(static_cast<std::int64_t>(count)), rest};
        }
    }
    const TurnedAngle<TripleDouble> accurate = reduceAngleAccurately(radians);
    return {accurate.quarterTurns, accurate.rest.upperPart()};
}

// value - upper.high is exact, and both of the two sums. The four parts of the low word are below 2^-51 in
// all and take three operations; what the unit itself leaves out is below 2^-128.
DoubleDouble subtractMultiple(double value, double count, TripleDouble unit) {
    const DoubleDouble upper = twoProduct(count, unit.high);
    const DoubleDouble middle = twoProduct(count, unit.middle);
    const DoubleDouble first = twoSum(value - upper.high, -upper.low);
    const DoubleDouble second = twoSum(first.high, -middle.high);
    const double low = ((first.low + second.low) - middle.low) - count * unit.low;
    return twoSum(second.high, low);
}

TripleDouble subtractMultipleAccurately(double value, double count, TripleDouble unit) {
    const DoubleDouble upper = twoProduct(count, unit.high);
    const DoubleDouble middle = twoProduct(count, unit.middle);
    const DoubleDouble first = twoSum(value - upper.high, -upper.low);
    return (toTriple(first) - toTriple(middle)) - TripleDouble{count * unit.low};
}

} // namespace dunkman
