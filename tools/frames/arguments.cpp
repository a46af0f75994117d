#include "tools/frames/arguments.h"

#include <charconv>
#include <stdexcept>
#include <string>
#include <system_error>

namespace dunkman::frames {

namespace {

constexpr std::int64_t longestSide = 16384; // pixels; what software renderers draw at most

} // namespace

std::int64_t numberOf(std::string_view text) {
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{} || end != text.data() + text.size() || value < 0) {
        throw std::invalid_argument("\"" + std::string(text) + "\" is no number from 0 on");
    }
    return value;
}

std::pair<std::string_view, std::string_view> halvesOf(std::string_view text, char separator) {
    const std::size_t place = text.find(separator);
    if (place == std::string_view::npos) {
        throw std::invalid_argument("\"" + std::string(text) + "\" lacks a \"" + separator + "\"");
    }
    return {text.substr(0, place), text.substr(place + 1)};
}

platform::ClientSize sizeOf(std::string_view text) {
    const auto [width, height] = halvesOf(text, 'x');
    const auto side = [text](std::string_view word) {
        const std::int64_t pixels = numberOf(word);
        if (pixels < 1 || pixels > longestSide) {
            throw std::invalid_argument("\"" + std::string(text) + "\" is no size of a picture");
        }
        return static_cast<std::uint32_t>(pixels);
    };
    return {side(width), side(height)};
}

} // namespace dunkman::frames
