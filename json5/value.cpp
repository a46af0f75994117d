#include "json5/value.h"

#include <bit>
#include <utility>

namespace dunkman {

namespace {

// Up to here a walk over the keys beats hashing one.
constexpr std::size_t maxMembersWithoutIndex = 8;

// 64-bit FNV-1a.
std::size_t hashKey(std::string_view key) {
    std::uint64_t hash = 0xcbf29ce484222325u;
    for (const char byte : key) {
        hash ^= static_cast<unsigned char>(byte);
        hash *= 0x100000001b3u;
    }
    return static_cast<std::size_t>(hash ^ (hash >> 32));
}

void reportIfOtherKind(const JsonValue& value, JsonKind wanted) {
    if (value.kind != wanted && jsonKindMismatchHandler != nullptr) {
        jsonKindMismatchHandler(value, wanted);
    }
}

// Sets `target` when the element is a number.
bool readNumber(const JsonValue& element, double& target) {
    if (element.kind == JsonKind::Float) {
        target = element.floatValue;
    } else if (element.kind == JsonKind::Integer) {
        target = static_cast<double>(element.intValue);
    } else {
        return false;
    }
    return true;
}

} // namespace

JsonKindMismatchHandler jsonKindMismatchHandler = nullptr;

void resetJsonKindMismatchHandler() { jsonKindMismatchHandler = nullptr; }

JsonMembers::JsonMembers() = default;
JsonMembers::JsonMembers(JsonMembers&& other) noexcept = default;
JsonMembers& JsonMembers::operator=(JsonMembers&& other) noexcept = default;
JsonMembers::~JsonMembers() = default;

JsonMembers::JsonMembers(const JsonMembers& other) {
    if (other.empty()) {
        return;
    }
    for (const JsonMember& member : other) {
        append(member.key).value = member.value;
    }
    table->slots = other.table->slots;
}

JsonMembers& JsonMembers::operator=(const JsonMembers& other) {
    // Copied before anything is dropped: `other` may live inside one of our own members.
    JsonMembers copy(other);
    table = std::move(copy.table);
    return *this;
}

JsonMember* JsonMembers::findMember(std::string_view key) const {
    if (!table) {
        return nullptr;
    }
    if (table->slots.empty()) {
        for (std::size_t number = 0; number < table->count; ++number) {
            JsonMember& candidate = table->at(number);
            if (candidate.key == key) {
                return &candidate;
            }
        }
        return nullptr;
    }
    const std::size_t mask = table->slots.size() - 1;
    for (std::size_t slot = hashKey(key) & mask; table->slots[slot] != 0; slot = (slot + 1) & mask) {
        JsonMember& candidate = table->at(table->slots[slot] - 1);
        if (candidate.key == key) {
            return &candidate;
        }
    }
    return nullptr;
}

// A new member behind the others; the index is not told.
JsonMember& JsonMembers::append(std::string_view key) {
    if (!table) {
        table = std::make_unique<Table>();
    }
    const std::size_t number = table->count;
    if (number >= Table::firstSize && std::has_single_bit(number)) { // every block is full
        table->blocks.push_back(std::make_unique<JsonMember[]>(number));
    }
    ++table->count;
    JsonMember& member = table->at(number);
    member.key = key;
    return member;
}

// Enters a member into the index, which has a free slot.
void JsonMembers::enterIndex(std::size_t number) {
    const std::size_t mask = table->slots.size() - 1;
    std::size_t slot = hashKey(table->at(number).key) & mask;
    while (table->slots[slot] != 0) {
        slot = (slot + 1) & mask;
    }
    table->slots[slot] = static_cast<std::uint32_t>(number + 1);
}

// Keeps at least twice as many slots as members, once there are enough members to be worth it.
void JsonMembers::indexLast() {
    const std::size_t count = table->count;
    if (count <= maxMembersWithoutIndex) {
        return;
    }
    if (2 * count <= table->slots.size()) {
        enterIndex(count - 1);
        return;
    }
    table->slots.assign(4 * std::bit_ceil(count), 0);
    for (std::size_t number = 0; number < count; ++number) {
        enterIndex(number);
    }
}

JsonValue* JsonMembers::find(std::string_view key) {
    JsonMember* member = findMember(key);
    return member != nullptr ? &member->value : nullptr;
}

const JsonValue* JsonMembers::find(std::string_view key) const {
    const JsonMember* member = findMember(key);
    return member != nullptr ? &member->value : nullptr;
}

bool JsonMembers::contains(std::string_view key) const { return findMember(key) != nullptr; }

JsonValue& JsonMembers::operator[](std::string_view key) {
    if (JsonMember* member = findMember(key)) {
        return member->value;
    }
    JsonValue& value = append(key).value;
    indexLast();
    return value;
}

void JsonMembers::clear() { table.reset(); }

JsonValue& JsonValue::operator=(const JsonValue& other) { return *this = JsonValue(other); }

JsonValue& JsonValue::operator=(JsonValue&& other) noexcept {
    // Taken out first, so that a value can be replaced by one of its own elements or members.
    JsonValue taken(std::move(other));
    kind = taken.kind;
    boolValue = taken.boolValue;
    intValue = taken.intValue;
    floatValue = taken.floatValue;
    stringValue.swap(taken.stringValue);
    arrayValue.swap(taken.arrayValue);
    objectValue = std::move(taken.objectValue);
    return *this;
}

JsonValue JsonValue::makeBool(bool value) {
    JsonValue made;
    made.kind = JsonKind::Bool;
    made.boolValue = value;
    return made;
}

JsonValue JsonValue::makeInteger(std::int64_t value) {
    JsonValue made;
    made.kind = JsonKind::Integer;
    made.intValue = value;
    return made;
}

JsonValue JsonValue::makeFloat(double value) {
    JsonValue made;
    made.kind = JsonKind::Float;
    made.floatValue = value;
    return made;
}

JsonValue JsonValue::makeString(std::string value) {
    JsonValue made;
    made.kind = JsonKind::String;
    made.stringValue = std::move(value);
    return made;
}

JsonValue JsonValue::makeArray(std::vector<JsonValue> elements) {
    JsonValue made;
    made.kind = JsonKind::Array;
    made.arrayValue = std::move(elements);
    return made;
}

JsonValue JsonValue::makeObject() {
    JsonValue made;
    made.kind = JsonKind::Object;
    return made;
}

JsonValue JsonValue::makePair(double x, double y) {
    JsonValue made = makeArray();
    made.arrayValue.reserve(2);
    made.arrayValue.push_back(makeFloat(x));
    made.arrayValue.push_back(makeFloat(y));
    return made;
}

const JsonValue& JsonValue::null() {
    static const JsonValue shared;
    return shared;
}

const JsonValue* JsonValue::find(std::string_view key) const { return objectValue.find(key); }

const JsonValue& JsonValue::get(std::string_view key) const {
    const JsonValue* found = objectValue.find(key);
    return found != nullptr ? *found : null();
}

const JsonMembers* JsonValue::findObject(std::string_view key) const {
    const JsonValue* found = objectValue.find(key);
    return found != nullptr && found->kind == JsonKind::Object ? &found->objectValue : nullptr;
}

bool JsonValue::contains(std::string_view key) const { return objectValue.contains(key); }

JsonValue& JsonValue::member(std::string_view key) { return objectValue[key]; }

JsonValue& JsonValue::append() { return arrayValue.emplace_back(); }

bool JsonValue::asBool() const {
    reportIfOtherKind(*this, JsonKind::Bool);
    return boolValue;
}

std::int64_t JsonValue::asInteger() const {
    reportIfOtherKind(*this, JsonKind::Integer);
    return intValue;
}

double JsonValue::asFloat() const {
    reportIfOtherKind(*this, JsonKind::Float);
    return floatValue;
}

const std::string& JsonValue::asString() const {
    reportIfOtherKind(*this, JsonKind::String);
    return stringValue;
}

const std::vector<JsonValue>& JsonValue::asArray() const {
    reportIfOtherKind(*this, JsonKind::Array);
    return arrayValue;
}

const JsonMembers& JsonValue::asObject() const {
    reportIfOtherKind(*this, JsonKind::Object);
    return objectValue;
}

bool readPair(const JsonValue& value, double& x, double& y) {
    double number = 0.0;
    if (readNumber(value, number)) {
        x = number;
        y = number;
        return true;
    }
    if (value.kind != JsonKind::Array || value.arrayValue.size() != 2 ||
        !readNumber(value.arrayValue[0], x)) {
        return false;
    }
    readNumber(value.arrayValue[1], y);
    return true;
}

} // namespace dunkman
