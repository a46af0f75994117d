#pragma once

#include <cstdint>
#include <string_view>
#include <utility>

#include "platform/platform.h"

// Words of a command line. All throw std::invalid_argument with what is wrong with the word.
namespace dunkman::frames {

// A whole number from 0 on.
std::int64_t numberOf(std::string_view text);

// What stands before and behind the first separator.
std::pair<std::string_view, std::string_view> halvesOf(std::string_view text, char separator);

// WIDTHxHEIGHT, in pixels, both from 1 to 16384.
platform::ClientSize sizeOf(std::string_view text);

} // namespace dunkman::frames
