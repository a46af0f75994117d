#include "json5/writer.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace dunkman {

namespace {

constexpr int significantDigits = 6;
constexpr std::uint32_t lowestDigits = 100'000;
constexpr std::uint32_t highestDigits = 999'999;

// How many places behind the point bring a number from 0.0001 to 999999 to six digits.
std::size_t placesFor(double size) {
    constexpr std::array<double, 9> limits = {1e5, 1e4, 1e3, 1e2, 1e1, 1e0, 1e-1, 1e-2, 1e-3};
    std::size_t places = 0;
    while (places < limits.size() && size < limits[places]) {
        ++places;
    }
    return places;
}

// Appends a number of ordinary size whose seventh and later digits are clearly below or above the half.
// Answers false, and appends nothing, where the exact conversion has to decide.
bool appendOrdinaryFloat(std::string& text, double number) {
    constexpr std::array<double, 10> powersOfTen = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9};
    constexpr double doubtful = 1e-4; // far more than the product can be off
    const double size = std::fabs(number);
    if (!(size >= 0.0001 && size < 1e6)) {
        return false;
    }
    const std::size_t places = placesFor(size);
    const double scaled = size * powersOfTen[places];
    const double rest = scaled - std::floor(scaled);
    if (std::fabs(rest - 0.5) < doubtful) {
        return false;
    }
    auto digits = static_cast<std::uint32_t>(scaled) + (rest > 0.5 ? 1u : 0u);
    if (digits < lowestDigits || digits > highestDigits) {
        return false;
    }

    // From the right: digits behind the point without the zeros at their end, the point, digits before it.
    std::array<char, 16> buffer; // "-0.000123456" is the longest
    char* out = buffer.data() + buffer.size();
    bool begun = false;
    for (std::size_t place = places; place > 0; --place, digits /= 10) {
        begun = begun || digits % 10 != 0 || place == 1;
        if (begun) {
            *--out = static_cast<char>('0' + digits % 10);
        }
    }
    if (places == 0) {
        *--out = '0';
    }
    *--out = '.';
    do {
        *--out = static_cast<char>('0' + digits % 10);
        digits /= 10;
    } while (digits != 0);
    if (number < 0.0) {
        *--out = '-';
    }
    text.append(out, static_cast<std::size_t>(buffer.data() + buffer.size() - out));
    return true;
}

} // namespace

void appendFloat(std::string& text, double number) {
    if (appendOrdinaryFloat(text, number)) {
        return;
    }
    if (std::isnan(number)) {
        text += "nan.0";
        return;
    }
    std::array<char, 32> buffer;
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number,
                                      std::chars_format::general, significantDigits);
    const std::string_view digits(buffer.data(), static_cast<std::size_t>(result.ptr - buffer.data()));
    text += digits;
    if (digits.find('.') == std::string_view::npos) {
        text += ".0";
    }
}

} // namespace dunkman
