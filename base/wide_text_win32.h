#pragma once

#include <string>
#include <string_view>

// Windows names files in UTF-16, the game in UTF-8. What is neither becomes a replacement character.
namespace dunkman {

std::wstring wideText(std::string_view utf8);
std::string utf8Text(std::wstring_view wide);

} // namespace dunkman
