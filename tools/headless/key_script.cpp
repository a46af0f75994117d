#include "tools/headless/key_script.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <sstream>
#include <string_view>
#include <system_error>

#include "tools/headless/options.h"

namespace dunkman::headless {

namespace {

constexpr std::int32_t highestVirtualKey = 0xFF;

template <typename Integer> bool parseWhole(std::string_view text, int base, Integer& value) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, base);
    return error == std::errc{} && end == text.data() + text.size();
}

// Answers what is wrong with the line, or nothing.
const char* parseEvent(const std::vector<std::string>& words, KeyEvent& event) {
    if (words.size() != 3) {
        return "a line is ITERATION CODE down|up";
    }
    if (!parseWhole(words[0], 10, event.iteration) || event.iteration < 0) {
        return "the iteration is not a whole number";
    }
    const std::string_view code = words[1];
    if (!code.starts_with("0x") || !parseWhole(code.substr(2), 16, event.virtualKey) ||
        event.virtualKey < 0 || event.virtualKey > highestVirtualKey) {
        return "the key is not a hexadecimal virtual-key code from 0x00 to 0xFF";
    }
    if (words[2] != "down" && words[2] != "up") {
        return "the last word is neither down nor up";
    }
    event.down = words[2] == "down";
    return nullptr;
}

std::vector<std::string> splitWords(const std::string& line) {
    std::istringstream stream(line.substr(0, line.find('#')));
    std::vector<std::string> words;
    for (std::string word; stream >> word;) {
        words.push_back(word);
    }
    return words;
}

} // namespace

KeyScript KeyScript::read(std::istream& text, const std::string& name) {
    KeyScript script;
    int lineNumber = 0;
    for (std::string line; std::getline(text, line);) {
        ++lineNumber;
        const std::vector<std::string> words = splitWords(line);
        if (words.empty()) {
            continue;
        }
        KeyEvent event;
        if (const char* fault = parseEvent(words, event)) {
            throw UsageError(name + ":" + std::to_string(lineNumber) + ": " + fault);
        }
        script.events.push_back(event);
    }
    std::stable_sort(
        script.events.begin(), script.events.end(),
        [](const KeyEvent& left, const KeyEvent& right) { return left.iteration < right.iteration; });
    return script;
}

KeyScript KeyScript::readFile(const std::string& path) {
    std::ifstream file(path);
    if (!file) {
        throw UsageError("--keys: " + path + " cannot be read");
    }
    return read(file, path);
}

void KeyScript::applyUntil(std::int64_t iteration, std::set<std::int32_t>& keysDown) {
    for (; next < events.size() && events[next].iteration <= iteration; ++next) {
        if (events[next].down) {
            keysDown.insert(events[next].virtualKey);
        } else {
            keysDown.erase(events[next].virtualKey);
        }
    }
}

} // namespace dunkman::headless
