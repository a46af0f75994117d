#include "tests/replays/trace_digest.h"

#include <utility>

namespace dunkman {

namespace {

// FNV-1a, 64 bits.
constexpr std::uint64_t fnvStart = 0xcbf29ce484222325u;
constexpr std::uint64_t fnvPrime = 0x100000001b3u;

std::string hexText(std::uint64_t value) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text(16, '0');
    for (std::size_t i = 0; i < text.size(); ++i) {
        text[text.size() - 1 - i] = digits[value >> (4 * i) & 0xFu];
    }
    return text;
}

std::string_view field(std::string_view line, std::string_view name) {
    const std::size_t start = line.find(name);
    if (start == std::string_view::npos) {
        return {};
    }
    const std::string_view rest = line.substr(start + name.size());
    return rest.substr(0, rest.find(' '));
}

} // namespace

void TraceDigest::add(std::string_view text) {
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        if (end == std::string_view::npos) {
            partialLine += text;
            return;
        }
        if (partialLine.empty()) {
            takeLine(text.substr(0, end));
        } else {
            partialLine += text.substr(0, end);
            takeLine(partialLine);
            partialLine.clear();
        }
        text.remove_prefix(end + 1);
    }
}

void TraceDigest::takeLine(std::string_view line) {
    if (line.starts_with("end ")) {
        closeStep();
        lines.emplace_back(line);
        return;
    }
    if (line.starts_with("step ")) {
        closeStep();
        stepName = "step " + std::string(field(line, "step ")) + ' ' + std::string(field(line, "screen=")) +
                   ' ' + std::string(field(line, "mode="));
        hash = fnvStart;
    }
    for (const char character : line) {
        hash = (hash ^ static_cast<unsigned char>(character)) * fnvPrime;
    }
    hash = (hash ^ '\n') * fnvPrime;
    ++lineCount;
}

void TraceDigest::closeStep() {
    if (!stepName.empty()) {
        lines.push_back(stepName + " lines=" + std::to_string(lineCount) + " hash=" + hexText(hash));
    }
    stepName.clear();
    lineCount = 0;
}

std::vector<std::string> TraceDigest::finish() {
    closeStep();
    return std::move(lines);
}

} // namespace dunkman
