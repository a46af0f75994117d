#include "tools/inspect/data_file.h"

#include <algorithm>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <utility>

namespace dunkman::inspect {

namespace {

constexpr std::string_view whitespace = " \t\r\n";

bool startsComment(std::string_view text) { return text.starts_with("//") || text.starts_with("/*"); }

std::string_view withoutOuterSpace(std::string_view text) {
    const std::size_t first = text.find_first_not_of(whitespace);
    return first == std::string_view::npos
               ? std::string_view()
               : text.substr(first, text.find_last_not_of(whitespace) - first + 1);
}

// A sound file that ends right behind its value reports the end as one that ends too early does. Only in the sound one
// a space behind the text makes the report vanish.
bool isSoundReport(const Json5Report& report, const std::string& text) {
    if (report.code != Json5Error::EndOfInput) {
        return report.code == Json5Error::None;
    }
    Json5Report spaced;
    JsonValue ignored;
    parseDocument(text + ' ', spaced, ignored);
    return spaced.code == Json5Error::None;
}

std::string describe(const Json5Report& report) {
    switch (report.code) {
    case Json5Error::EndOfInput:
        return "The file ends too early: a bracket or quote is still open.";
    case Json5Error::SecondPushBack:
        return "A slash that starts no comment.";
    case Json5Error::UnsupportedEscape:
        return "The escape \\u is not supported; write the character itself.";
    default:
        break;
    }
    if (report.message.empty()) {
        return "Here is no value: a number, a text in quotes, true, false, null, [ or {.";
    }
    const bool mayLackComma =
        report.message.starts_with("Expected '}'") || report.message.starts_with("Expected ']'");
    return report.message + (mayLackComma ? " Is a comma or a quote missing?" : "");
}

} // namespace

DataFile::DataFile(std::string itsPath, JsonKind wantedTop, Faults& faults) : path(std::move(itsPath)) {
    if (!load(faults) || !parse(faults) || hasOddKeys(map.top, faults)) {
        return;
    }
    reportOddities(faults);
    sound = value.kind == wantedTop;
    if (!sound) {
        faults.add(spotAt(map.top.offset), wantedTop == JsonKind::Array
                                               ? "The top level is no array of entries: [ ... ]."
                                               : "The top level is no object of names: { ... }.");
    }
}

bool DataFile::load(Faults& faults) {
    std::error_code ignored;
    if (!std::filesystem::exists(path, ignored)) {
        faults.add(wholeFile(), "The file is missing.");
        return false;
    }
    std::ifstream file;
    if (std::filesystem::is_regular_file(path, ignored)) {
        file.open(path, std::ios::binary);
    }
    if (!file.is_open()) {
        faults.add(wholeFile(), "This is no file that can be read.");
        return false;
    }
    text.assign(std::istreambuf_iterator<char>(file), {});
    return true;
}

bool DataFile::parse(Faults& faults) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    map = mapSource(text);
    Json5Report report;
    try {
        parseDocument(text, report, value);
        if (isSoundReport(report, text)) {
            return true;
        }
    } catch (const std::exception&) {
        faults.add(spotAt(map.unreadableNumber.value_or(0)),
                   "The number is too large or too small to be read.");
        return false;
    }
    if (text.starts_with(byteOrderMark)) {
        faults.add(wholeFile(), "The file begins with a byte order mark; save it as UTF-8 without one.");
    } else if (text.empty()) {
        faults.add(wholeFile(), "The file is empty.");
    } else {
        reportSyntax(report, faults);
    }
    return false;
}

// The reader stands right behind the character that it could not take.
void DataFile::reportSyntax(const Json5Report& report, Faults& faults) const {
    const bool isAtEnd = report.code == Json5Error::EndOfInput;
    const std::size_t behind = std::min(static_cast<std::size_t>(report.position.characters), text.size());
    const std::size_t back =
        report.code == Json5Error::SecondPushBack ? 2 : 1; // it had to look behind the slash
    const std::size_t at = isAtEnd ? text.size() : behind - std::min(behind, back);
    if (isAtEnd && map.openComment) {
        faults.add(spotAt(*map.openComment), "The comment that begins here has no end.");
        return;
    }
    // White space is passed over everywhere but behind a comment.
    const std::string_view rest = textFrom(at);
    const std::size_t next = rest.find_first_not_of(whitespace);
    const bool isAtLineBreakInText = report.message.starts_with("Unexpected line");
    if (report.code == Json5Error::Syntax && next != std::string_view::npos &&
        (next > 0 || startsComment(rest)) && !isAtLineBreakInText) {
        faults.add(spotAt(at),
                   "One comment fits between two tokens, and the next token follows it directly.");
        return;
    }
    faults.add(spotAt(at), describe(report));
}

// A key without quotes goes on to the next colon, whatever it swallows on the way.
bool DataFile::hasOddKeys(const SourcePlace& place, Faults& faults) const {
    bool found = false;
    for (const SourceMember& member : place.members) {
        const std::string_view key = member.key;
        const std::string_view core = withoutOuterSpace(key);
        const bool isQuoted = textFrom(member.keyOffset).starts_with('"');
        std::string fault;
        if (!isQuoted && startsComment(core)) {
            fault = "A second comment where one fits: up to the next colon all is read as the key.";
        } else if (!isQuoted && core.starts_with('\'')) {
            fault = "The single quotes become part of the key " + inQuotes(key) + "; use double ones.";
        } else if (core.size() != key.size()) {
            fault = "White space becomes part of the key " + inQuotes(key) +
                    ": quote it, with nothing between it and a comment in front of it.";
        }
        if (!fault.empty()) {
            faults.add(spotAt(member.keyOffset), fault);
            return true; // what follows from it is no news
        }
        found = hasOddKeys(member.value, faults) || found;
    }
    for (const SourcePlace& element : place.elements) {
        found = hasOddKeys(element, faults) || found;
    }
    return found;
}

void DataFile::reportOddities(Faults& faults) const {
    for (const RepeatedKey& repeated : map.repeatedKeys) {
        faults.add(spotAt(repeated.offset), "The key " + inQuotes(repeated.key) + " has been given in line " +
                                                std::to_string(spotAt(repeated.firstOffset).line) +
                                                " already; what stands here mixes with that.");
    }
    for (const std::size_t number : map.hexNumbers) {
        faults.add(spotAt(number), "A hexadecimal number is read as sixteen times what it says; write it in "
                                   "decimal.");
    }
    if (map.openComment) {
        faults.add(spotAt(*map.openComment), "The comment that begins here has no end.");
    }
}

Located DataFile::top() const { return {*this, value, &map.top}; }

Spot DataFile::spotAt(std::size_t offset) const {
    const std::string_view before = std::string_view(text).substr(0, offset);
    const auto lineFeeds = std::count(before.begin(), before.end(), '\n');
    const std::size_t lineStart = before.rfind('\n') + 1; // none found is just below 0
    return {path, static_cast<std::size_t>(lineFeeds) + 1, before.size() - lineStart + 1};
}

std::string_view DataFile::textFrom(std::size_t offset) const {
    return std::string_view(text).substr(std::min(offset, text.size()));
}

std::vector<LocatedMember> Located::members() const {
    std::vector<LocatedMember> members;
    if (content->kind != JsonKind::Object) {
        return members;
    }
    std::size_t number = 0;
    for (const JsonMember& member : content->objectValue()) {
        const bool isMapped = number < place->members.size();
        const SourcePlace* const there = isMapped ? &place->members[number].value : place;
        const std::size_t keyOffset = isMapped ? place->members[number].keyOffset : place->offset;
        members.push_back({member.key(), keyOffset, {*file, member.value, there}});
        ++number;
    }
    return members;
}

std::vector<Located> Located::elements() const {
    std::vector<Located> elements;
    if (content->kind != JsonKind::Array) {
        return elements;
    }
    std::size_t number = 0;
    for (const JsonValue& element : content->arrayValue()) {
        const bool isMapped = number < place->elements.size();
        elements.emplace_back(*file, element, isMapped ? &place->elements[number] : place);
        ++number;
    }
    return elements;
}

Located Located::get(std::string_view key) const {
    const auto found = std::find_if(place->members.begin(), place->members.end(),
                                    [key](const SourceMember& member) { return member.key == key; });
    const JsonValue& member = content->kind == JsonKind::Object ? content->get(key) : JsonValue::null();
    return {*file, member, found != place->members.end() ? &found->value : place};
}

Spot Located::spot() const { return file->spotAt(place->offset); }

bool Located::isMisread() const {
    std::string_view written = file->textFrom(place->offset);
    if (written.starts_with('+') || written.starts_with('-')) {
        written.remove_prefix(1);
    }
    const bool isHexadecimal =
        content->kind == JsonKind::Integer && (written.starts_with("0x") || written.starts_with("0X"));
    return isHexadecimal || place->isMixed;
}

} // namespace dunkman::inspect
