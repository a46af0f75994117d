#include "tools/headless/expected_trace.h"

#include <algorithm>
#include <functional>
#include <vector>

#include "tools/headless/options.h"

namespace dunkman::headless {

namespace {

std::vector<std::string_view> wordsOf(std::string_view line) {
    std::vector<std::string_view> words;
    while (!line.empty()) {
        const std::size_t space = std::min(line.find(' '), line.size());
        words.push_back(line.substr(0, space));
        line.remove_prefix(std::min(space + 1, line.size()));
    }
    return words;
}

// How many words at the start of a line say what it is about; values follow.
std::size_t subjectLength(std::string_view kind) {
    return kind == "object" || kind == "held" || kind == "key" || kind == "step" ? 2 : 1;
}

// "object Zombie", "held Flamingo", "key 0x57", "draw", "view".
std::string subjectOf(const std::vector<std::string_view>& words) {
    std::string subject;
    for (std::size_t i = 0; i < words.size() && i < subjectLength(words.front()); ++i) {
        subject += (i == 0 ? "" : " ") + std::string(words[i]);
    }
    return subject;
}

std::string expectedAndFound(std::string_view expected, std::string_view found) {
    return "expected " + std::string(expected) + ", found " + std::string(found);
}

std::string fieldDifference(std::string_view expected, std::string_view found) {
    const std::size_t equals = expected.find('=');
    if (equals == std::string_view::npos || expected.substr(0, equals + 1) != found.substr(0, equals + 1)) {
        return expectedAndFound(expected, found);
    }
    return std::string(expected.substr(0, equals)) + ": " +
           expectedAndFound(expected.substr(equals + 1), found.substr(equals + 1));
}

// The first of two lists of numbers, separated by commas, in which they differ, counted from 0.
std::string listDifference(std::string_view expected, std::string_view found) {
    for (std::size_t index = 0;; ++index) {
        const std::string_view left = expected.substr(0, expected.find(','));
        const std::string_view right = found.substr(0, found.find(','));
        if (left != right || left.size() == expected.size() || right.size() == found.size()) {
            return "number " + std::to_string(index) + ": " + expectedAndFound(left, right);
        }
        expected.remove_prefix(left.size() + 1);
        found.remove_prefix(right.size() + 1);
    }
}

std::string lineDifference(std::string_view expected, std::string_view found) {
    const std::vector<std::string_view> expectedWords = wordsOf(expected);
    const std::vector<std::string_view> foundWords = wordsOf(found);
    const auto [left, right] = std::ranges::mismatch(expectedWords, foundWords);
    const auto index = static_cast<std::size_t>(left - expectedWords.begin());
    if (left == expectedWords.end() || right == foundWords.end() ||
        expectedWords.size() != foundWords.size() || index < subjectLength(expectedWords.front())) {
        return expectedAndFound('"' + std::string(expected) + '"', '"' + std::string(found) + '"');
    }
    return expectedWords.front() == "view" ? listDifference(*left, *right) : fieldDifference(*left, *right);
}

} // namespace

ExpectedTrace::ExpectedTrace(const std::string& tracePath)
    : path(tracePath), file(tracePath, std::ios::binary), stepName("before the first step") {
    if (!file) {
        throw UsageError("--expect: " + path + " cannot be read");
    }
}

void ExpectedTrace::compare(std::string_view text) {
    for (std::size_t end = text.find('\n'); end != std::string_view::npos; end = text.find('\n')) {
        partialLine += text.substr(0, end);
        compareLine(partialLine);
        partialLine.clear();
        text.remove_prefix(end + 1);
    }
    partialLine += text;
}

void ExpectedTrace::compareLine(const std::string& actual) {
    const std::vector<std::string_view> words = wordsOf(actual);
    if (words.front() == "step") {
        stepName = subjectOf(words);
        seen.clear();
    }
    std::string expected;
    if (!std::getline(file, expected)) {
        throw TraceDiffers(describePlace(actual) + ": " + path + " ends here, found \"" + actual + '"');
    }
    if (expected != actual) {
        throw TraceDiffers(describePlace(actual) + ": " + lineDifference(expected, actual));
    }
    ++seen[subjectOf(words)];
}

// "step 12", "step 12, object Zombie 3": with the number of such lines before it in the step.
std::string ExpectedTrace::describePlace(std::string_view line) const {
    const std::vector<std::string_view> words = wordsOf(line);
    const std::string subject = subjectOf(words);
    if (subject == stepName || words.front() == "end") {
        return stepName;
    }
    const auto before = seen.find(subject);
    return stepName + ", " + subject + ' ' + std::to_string(before == seen.end() ? 0 : before->second);
}

void ExpectedTrace::finish() {
    std::string expected;
    if (std::getline(file, expected)) {
        throw TraceDiffers(stepName + ": the run is over, expected \"" + expected + '"');
    }
}

} // namespace dunkman::headless
