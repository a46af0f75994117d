#include "json5/decimal.h"

#include "json5/big_natural.h"

#include <algorithm>
#include <array>
#include <bit>
#include <limits>
#include <stdexcept>

// Float literals go through the standard library's long double conversion and are stored as a double, and on
// the compilers that build the game long double is the 80-bit extended type. Its two roundings show: 0.002877
// ends one unit in the last place away from the nearest double, as do some 256 of the million six-digit
// fractions. Where long double is the plain double that second rounding would be missing, so the conversion
// is done here, in integers.

namespace dunkman {

namespace {

// mantissa * 2^exponent, the top bit of the mantissa set.
struct Extended {
    std::uint64_t mantissa;
    int exponent;
};

struct Product {
    std::uint64_t high;
    std::uint64_t low;
};

struct Division {
    std::uint64_t quotient;
    std::uint64_t remainder;
};

// The significant digits (no zeros at either end), as digits * 10^scale.
struct Significand {
    std::string_view head; // from the integer digits
    std::string_view tail; // from the fraction digits
    std::int64_t scale;

    std::size_t size() const { return head.size() + tail.size(); }
};

constexpr int topBit = 63;
constexpr int maxExtendedExponent = 16383;
constexpr int minExtendedExponent = -16382;
constexpr int maxDoubleExponent = 1023;
constexpr int minDoubleExponent = -1022;
constexpr int doubleBits = 53;

// Powers of ten whose neighbours decide without arithmetic; a value is at least 10^(place - 1), below
// 10^place.
constexpr std::int64_t placeAboveExtended = 4934;  // 10^4933 does not fit
constexpr std::int64_t placeInsideExtended = 4932; // below 10^4932 fits
constexpr std::int64_t placeAboveDouble = 310;     // 10^309 is an infinity
constexpr std::int64_t placeBelowDouble = -324;    // below 10^-324 is zero
constexpr std::int64_t placeBelowExtended = -4932; // below 10^-4932 does not fit
constexpr std::int64_t placeLowestSafe = -4930;    // 10^-4931 fits

// More digits than any halfway point between two extended numbers in the double's range has (1139). Digits
// beyond only say whether something is left.
constexpr std::size_t maxDigits = 1200;

constexpr std::size_t maxFastDigits = 19; // below 2^64
constexpr std::int64_t maxFastScale = 27; // 5^27 is below 2^64

constexpr std::array<std::uint64_t, maxFastScale + 1> makePowersOfFive() {
    std::array<std::uint64_t, maxFastScale + 1> powers{};
    powers[0] = 1;
    for (std::size_t index = 1; index < powers.size(); ++index) {
        powers[index] = 5 * powers[index - 1];
    }
    return powers;
}

constexpr std::array<std::uint64_t, maxFastScale + 1> powersOfFive = makePowersOfFive();

[[noreturn]] void throwFloatOutOfRange() { throw std::out_of_range("stold argument out of range"); }

constexpr Product multiply(std::uint64_t left, std::uint64_t right) {
    constexpr std::uint64_t lowHalf = 0xffffffffu;
    const std::uint64_t low = (left & lowHalf) * (right & lowHalf);
    const std::uint64_t cross = (left >> 32) * (right & lowHalf) + (low >> 32);
    const std::uint64_t otherCross = (left & lowHalf) * (right >> 32) + (cross & lowHalf);
    return {(left >> 32) * (right >> 32) + (cross >> 32) + (otherCross >> 32),
            (otherCross << 32) | (low & lowHalf)};
}

// One 32-bit digit of a quotient: (high * 2^32 + nextDigit) / divisor, where high < divisor and the divisor
// has its top bit set. A guess from the divisor's upper half is at most two too large.
constexpr Division divideDigit(std::uint64_t high, std::uint64_t nextDigit, std::uint64_t divisor) {
    const std::uint64_t upper = divisor >> 32;
    const std::uint64_t lower = divisor & 0xffffffffu;
    std::uint64_t guess = high / upper;
    std::uint64_t rest = high % upper;
    while ((guess >> 32) != 0 || guess * lower > ((rest << 32) | nextDigit)) {
        --guess;
        rest += upper;
        if ((rest >> 32) != 0) {
            break;
        }
    }
    return {guess,
            (high << 32) + nextDigit - guess * divisor}; // modulo 2^64; the true rest is below the divisor
}

// high * 2^64 + low by a divisor with its top bit set; high < divisor.
constexpr Division divide(std::uint64_t high, std::uint64_t low, std::uint64_t divisor) {
    const Division upper = divideDigit(high, low >> 32, divisor);
    const Division lower = divideDigit(upper.remainder, low & 0xffffffffu, divisor);
    return {(upper.quotient << 32) | lower.quotient, lower.remainder};
}

// What numbers are divided by, with its top bit set, and the 64 bits of 2^128 / divisor behind the leading
// one.
struct Divisor {
    std::uint64_t value;
    std::uint64_t reciprocal;
    int shift; // value = the power << shift
};

constexpr std::array<Divisor, maxFastScale + 1> makeDivisors() {
    std::array<Divisor, maxFastScale + 1> divisors{};
    for (std::size_t index = 0; index < divisors.size(); ++index) {
        const int shift = std::countl_zero(powersOfFive[index]);
        const std::uint64_t value = powersOfFive[index] << shift;
        divisors[index] = {value, divide(~value, ~std::uint64_t{0}, value).quotient, shift};
    }
    return divisors;
}

constexpr std::array<Divisor, maxFastScale + 1> divisors = makeDivisors();

// The same as divide(), by multiplication: the reciprocal gives a quotient that is at most one off either
// way.
Division divide(std::uint64_t high, std::uint64_t low, const Divisor& divisor) {
    const Product product = multiply(divisor.reciprocal, high);
    const std::uint64_t fraction = product.low + low;
    const std::uint64_t carry = fraction < low ? 1 : 0;
    std::uint64_t quotient = product.high + high + carry + 1;
    std::uint64_t remainder = low - quotient * divisor.value; // modulo 2^64
    if (remainder > fraction) {
        --quotient;
        remainder += divisor.value;
    }
    if (remainder >= divisor.value) {
        ++quotient;
        remainder -= divisor.value;
    }
    return {quotient, remainder};
}

enum class Remainder { BelowHalf, Half, AboveHalf };

Extended roundToEven(Extended value, Remainder remainder) {
    const bool odd = (value.mantissa & 1) != 0;
    if (remainder == Remainder::AboveHalf || (remainder == Remainder::Half && odd)) {
        if (++value.mantissa == 0) {
            value.mantissa = std::uint64_t{1} << topBit;
            ++value.exponent;
        }
    }
    return value;
}

Remainder compareToHalf(std::uint64_t rest, std::uint64_t half) {
    if (rest == half) {
        return Remainder::Half;
    }
    return rest < half ? Remainder::BelowHalf : Remainder::AboveHalf;
}

// digits * 10^scale, digits not zero, scale from 0 to maxFastScale.
Extended scaleUp(std::uint64_t digits, int scale) {
    Product product = multiply(digits, powersOfFive[static_cast<std::size_t>(scale)]);
    if (product.high == 0) {
        const int shift = std::countl_zero(product.low);
        return {product.low << shift, scale - shift};
    }
    const int shift = std::countl_zero(product.high);
    if (shift != 0) {
        product.high = (product.high << shift) | (product.low >> (64 - shift));
        product.low <<= shift;
    }
    return roundToEven({product.high, scale + 64 - shift},
                       compareToHalf(product.low, std::uint64_t{1} << topBit));
}

// digits / 10^scale, digits not zero, scale from 1 to maxFastScale.
Extended scaleDown(std::uint64_t digits, int scale) {
    const Divisor& divisor = divisors[static_cast<std::size_t>(scale)];
    const int digitShift = std::countl_zero(digits);
    const std::uint64_t numerator = digits << digitShift;
    // One bit less when the first quotient bit would be the 65th.
    const bool large = numerator >= divisor.value;
    const Division division =
        large ? divide(numerator >> 1, numerator << topBit, divisor) : divide(numerator, 0, divisor);
    const int exponent = divisor.shift - digitShift - scale - (large ? 63 : 64);
    const std::uint64_t untilDivisor = divisor.value - division.remainder;
    return roundToEven({division.quotient, exponent}, compareToHalf(division.remainder, untilDivisor));
}

Extended scaleLong(const Significand& significand) {
    BigNatural numerator;
    std::size_t used = 0;
    for (const std::string_view digits : {significand.head, significand.tail}) {
        for (const char digit : digits.substr(0, maxDigits - used)) {
            numerator.multiplyAdd(10, static_cast<std::uint32_t>(digit - '0'));
            ++used;
        }
    }
    std::int64_t scale = significand.scale + static_cast<std::int64_t>(significand.size() - used);
    if (used < significand.size()) {
        numerator.multiplyAdd(10, 1); // stands for the digits left out, which are not all zero
        --scale;
    }

    BigNatural denominator;
    denominator.multiplyAdd(1, 1);
    BigNatural& scaled = scale < 0 ? denominator : numerator;
    for (std::int64_t step = 0; step < (scale < 0 ? -scale : scale); ++step) {
        scaled.multiplyAdd(5, 0);
    }

    // Bring the quotient to [1, 2), then take its bits one by one.
    int exponent = static_cast<int>(scale);
    const int lead = numerator.bitCount() - denominator.bitCount();
    (lead < 0 ? numerator : denominator).shiftLeft(lead < 0 ? -lead : lead);
    exponent += lead;
    if (numerator < denominator) {
        numerator.shiftLeft(1);
        --exponent;
    }
    std::uint64_t mantissa = 0;
    for (int bit = 0; bit <= topBit; ++bit) {
        mantissa <<= 1;
        if (!(numerator < denominator)) {
            numerator.subtract(denominator);
            mantissa |= 1;
        }
        numerator.shiftLeft(1);
    }
    const Remainder remainder = numerator < denominator   ? Remainder::BelowHalf
                                : denominator < numerator ? Remainder::AboveHalf
                                                          : Remainder::Half;
    return roundToEven({mantissa, exponent - topBit}, remainder);
}

double toDouble(Extended value) {
    const int exponent = value.exponent + topBit; // of the leading bit
    if (exponent > maxDoubleExponent) {
        return std::numeric_limits<double>::infinity();
    }
    const int bits = doubleBits - std::max(0, minDoubleExponent - exponent);
    if (bits < 0) {
        return 0.0;
    }
    const int dropped = 64 - bits;
    std::uint64_t kept = dropped == 64 ? 0 : value.mantissa >> dropped;
    const std::uint64_t rest = value.mantissa << bits;
    const Remainder remainder =
        compareToHalf(dropped == 64 ? value.mantissa : rest, std::uint64_t{1} << topBit);
    if (remainder == Remainder::AboveHalf || (remainder == Remainder::Half && (kept & 1) != 0)) {
        ++kept;
    }
    // A carry out of the kept bits runs into the exponent field, which is just where it belongs.
    const int field = exponent < minDoubleExponent ? 0 : exponent - minDoubleExponent;
    return std::bit_cast<double>((static_cast<std::uint64_t>(field) << (doubleBits - 1)) + kept);
}

std::string_view withoutLeadingZeros(std::string_view digits) {
    const std::size_t first = digits.find_first_not_of('0');
    return first == std::string_view::npos ? std::string_view{} : digits.substr(first);
}

std::string_view withoutTrailingZeros(std::string_view digits) {
    return digits.substr(0, digits.find_last_not_of('0') + 1);
}

std::int64_t exponentOf(const DecimalLiteral& literal) {
    constexpr std::int64_t farAway = 1'000'000'000'000; // beyond any text's number of digits
    std::int64_t exponent = 0;
    for (const char digit : literal.exponentDigits) {
        exponent = std::min(farAway, 10 * exponent + (digit - '0'));
    }
    return literal.exponentNegative ? -exponent : exponent;
}

Significand significandOf(const DecimalLiteral& literal) {
    std::string_view head = withoutLeadingZeros(literal.integerDigits);
    std::string_view tail = withoutTrailingZeros(literal.fractionDigits);
    std::int64_t scale = exponentOf(literal) - static_cast<std::int64_t>(tail.size());
    if (head.empty()) {
        tail = withoutLeadingZeros(tail);
    }
    if (tail.empty()) {
        const std::size_t full = head.size();
        head = withoutTrailingZeros(head);
        scale += static_cast<std::int64_t>(full - head.size());
    }
    return {head, tail, scale};
}

double magnitudeOf(const Significand& significand) {
    const std::int64_t place = significand.scale + static_cast<std::int64_t>(significand.size());
    if (place >= placeAboveExtended || place <= placeBelowExtended) {
        throwFloatOutOfRange();
    }
    if (place >= placeAboveDouble && place <= placeInsideExtended) {
        return std::numeric_limits<double>::infinity();
    }
    if (place <= placeBelowDouble && place >= placeLowestSafe) {
        return 0.0;
    }
    const bool few = significand.size() <= maxFastDigits;
    Extended value{};
    if (few && significand.scale >= -maxFastScale && significand.scale <= maxFastScale) {
        std::uint64_t digits = 0;
        for (const char digit : significand.head) {
            digits = 10 * digits + static_cast<std::uint64_t>(digit - '0');
        }
        for (const char digit : significand.tail) {
            digits = 10 * digits + static_cast<std::uint64_t>(digit - '0');
        }
        const int scale = static_cast<int>(significand.scale);
        value = scale < 0 ? scaleDown(digits, -scale) : scaleUp(digits, scale);
    } else {
        value = scaleLong(significand);
    }
    const int exponent = value.exponent + topBit;
    if (exponent > maxExtendedExponent || exponent < minExtendedExponent) {
        throwFloatOutOfRange();
    }
    return toDouble(value);
}

} // namespace

std::int64_t integerFromLiteral(const DecimalLiteral& literal) {
    constexpr std::uint64_t largest = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    const std::uint64_t limit = literal.negative ? largest + 1 : largest;
    std::uint64_t magnitude = 0;
    for (const char character : literal.integerDigits) {
        const auto digit = static_cast<std::uint64_t>(character - '0');
        if (magnitude > (limit - digit) / 10) {
            throw std::out_of_range("stoll argument out of range");
        }
        magnitude = 10 * magnitude + digit;
    }
    return static_cast<std::int64_t>(literal.negative ? 0 - magnitude : magnitude);
}

double floatFromDigits(std::uint64_t digits, int places, bool negative) {
    const double magnitude = digits == 0   ? 0.0
                             : places == 0 ? toDouble(scaleUp(digits, 0))
                                           : toDouble(scaleDown(digits, places));
    return negative ? -magnitude : magnitude;
}

double floatFromLiteral(const DecimalLiteral& literal) {
    const Significand significand = significandOf(literal);
    const double magnitude = significand.size() == 0 ? 0.0 : magnitudeOf(significand);
    return literal.negative ? -magnitude : magnitude;
}

} // namespace dunkman
