#include "json5/value.h"

#include "json5/array_block.h"

#include <algorithm>
#include <utility>

namespace dunkman {

static_assert(sizeof(JsonValue) == 16, "large files are read as fast as memory takes their values");

namespace {

void reportIfOtherKind(const JsonValue& value, JsonKind wanted) {
    if (value.kind != wanted && jsonKindMismatchHandler != nullptr) {
        jsonKindMismatchHandler(value, wanted);
    }
}

// Sets `target` when the element is a number.
bool readNumber(const JsonValue& element, double& target) {
    if (element.kind == JsonKind::Float) {
        target = element.floatValue();
    } else if (element.kind == JsonKind::Integer) {
        target = static_cast<double>(element.intValue());
    } else {
        return false;
    }
    return true;
}

} // namespace

JsonKindMismatchHandler jsonKindMismatchHandler = nullptr;

void resetJsonKindMismatchHandler() { jsonKindMismatchHandler = nullptr; }

// Memory

JsonValue::JsonValue(const JsonValue& other) : kind(other.kind) {
    if (other.ownsMemory()) {
        copyOwned(other);
    } else {
        bytes = other.bytes;
        held = other.held;
    }
}

void JsonValue::copyOwned(const JsonValue& other) {
    switch (other.held) {
    case Held::LongString:
        store(other.held, new std::string(*other.load<std::string*>()));
        break;
    case Held::Array:
        store(other.held, copyArrayBlock(*other.load<JsonArrayBlock*>()));
        break;
    case Held::Object:
        store(other.held, new JsonMembers(*other.load<JsonMembers*>()));
        break;
    case Held::Several:
        store(other.held, new Fields(*other.load<Fields*>()));
        break;
    default: // nothing that is owned
        break;
    }
}

void JsonValue::release() {
    switch (held) {
    case Held::LongString:
        delete load<std::string*>();
        break;
    case Held::Array:
        deleteArrayBlock(load<JsonArrayBlock*>());
        break;
    case Held::Object:
        delete load<JsonMembers*>();
        break;
    case Held::Several:
        delete load<Fields*>();
        break;
    default:
        break;
    }
    held = Held::Nothing;
}

JsonValue& JsonValue::operator=(const JsonValue& other) { return *this = JsonValue(other); }

JsonValue& JsonValue::operator=(JsonValue&& other) noexcept {
    // Taken out first, so that a value can be replaced by one of its own elements or members.
    JsonValue taken(std::move(other));
    std::swap(bytes, taken.bytes);
    std::swap(held, taken.held);
    kind = taken.kind;
    return *this;
}

// Makers

JsonValue JsonValue::makeBool(bool value) {
    JsonValue made;
    made.setBool(value);
    return made;
}

JsonValue JsonValue::makeInteger(std::int64_t value) {
    JsonValue made;
    made.setInteger(value);
    return made;
}

JsonValue JsonValue::makeFloat(double value) {
    JsonValue made;
    made.setFloat(value);
    return made;
}

JsonValue JsonValue::makeString(std::string_view value) {
    JsonValue made;
    made.setString(value);
    return made;
}

JsonValue JsonValue::makeArray(std::vector<JsonValue> elements) {
    JsonValue made;
    made.kind = JsonKind::Array;
    for (JsonValue& element : elements) {
        made.append() = std::move(element);
    }
    return made;
}

JsonValue JsonValue::makeObject() {
    JsonValue made;
    made.kind = JsonKind::Object;
    return made;
}

JsonValue JsonValue::makePair(double x, double y) {
    JsonValue made = makeArray();
    made.append().setFloat(x);
    made.append().setFloat(y);
    return made;
}

const JsonValue& JsonValue::null() {
    static const JsonValue shared;
    return shared;
}

// Fields

// Where there is a field already: that one's place, or one of its own for each field.
JsonValue& JsonValue::holderBesides(JsonKind field) {
    // By what is held; Null where that is nothing.
    constexpr std::array<JsonKind, 8> fieldOf = {JsonKind::Null,  JsonKind::Bool,   JsonKind::Integer,
                                                 JsonKind::Float, JsonKind::String, JsonKind::String,
                                                 JsonKind::Array, JsonKind::Object};
    if (held == Held::Several) {
        return (*load<Fields*>())[static_cast<std::size_t>(field)];
    }
    const JsonKind present = fieldOf[static_cast<std::size_t>(held)];
    if (present == field) {
        return *this;
    }
    auto fields = std::make_unique<Fields>();
    JsonValue& own = (*fields)[static_cast<std::size_t>(present)];
    own.bytes = bytes;
    own.held = held;
    JsonValue& wanted = (*fields)[static_cast<std::size_t>(field)];
    store(Held::Several, fields.release());
    return wanted;
}

bool JsonValue::boolValue() const {
    const JsonValue& holder = holderOf(JsonKind::Bool);
    return holder.held == Held::Bool && holder.load<bool>();
}

std::int64_t JsonValue::intValue() const {
    const JsonValue& holder = holderOf(JsonKind::Integer);
    return holder.held == Held::Integer ? holder.load<std::int64_t>() : 0;
}

double JsonValue::floatValue() const {
    const JsonValue& holder = holderOf(JsonKind::Float);
    return holder.held == Held::Float ? holder.load<double>() : 0.0;
}

std::span<const JsonValue> JsonValue::arrayValue() const& {
    const JsonValue& holder = holderOf(JsonKind::Array);
    if (holder.held != Held::Array) {
        return {};
    }
    JsonArrayBlock& block = *holder.load<JsonArrayBlock*>();
    return {block.elements(), block.count};
}

std::span<JsonValue> JsonValue::arrayValue() & {
    const std::span<const JsonValue> elements = std::as_const(*this).arrayValue();
    return {const_cast<JsonValue*>(elements.data()), elements.size()}; // our own, which are not const
}

const JsonMembers& JsonValue::objectValue() const& {
    static const JsonMembers none;
    const JsonValue& holder = holderOf(JsonKind::Object);
    return holder.held == Held::Object ? *holder.load<JsonMembers*>() : none;
}

JsonMembers& JsonValue::objectValue() & {
    JsonValue& holder = held == Held::Object ? *this : holderFor(JsonKind::Object);
    if (holder.held != Held::Object) {
        holder.store(Held::Object, new JsonMembers());
    }
    return *holder.load<JsonMembers*>();
}

void JsonValue::putString(std::string_view value) {
    if (held == Held::LongString) {
        load<std::string*>()->assign(value);
    } else if (value.size() > maxShortString) {
        store(Held::LongString, new std::string(value));
    } else {
        std::copy(value.begin(), value.end(), bytes.begin());
        bytes.back() = static_cast<char>(value.size());
        held = Held::ShortString;
    }
}

JsonMembers JsonValue::objectValue() && { return std::move(objectValue()); }

JsonValue& JsonValue::append() {
    JsonValue& holder = held == Held::Array ? *this : holderFor(JsonKind::Array);
    JsonArrayBlock* block = holder.held == Held::Array ? holder.load<JsonArrayBlock*>() : nullptr;
    JsonValue& element = appendElement(block);
    holder.store(Held::Array, block);
    return element;
}

const JsonValue* JsonValue::find(std::string_view key) const { return objectValue().find(key); }

const JsonValue& JsonValue::get(std::string_view key) const {
    const JsonValue* found = find(key);
    return found != nullptr ? *found : null();
}

const JsonMembers* JsonValue::findObject(std::string_view key) const {
    const JsonValue* found = find(key);
    return found != nullptr && found->kind == JsonKind::Object ? &found->objectValue() : nullptr;
}

bool JsonValue::contains(std::string_view key) const { return find(key) != nullptr; }

JsonValue& JsonValue::member(std::string_view key) { return objectValue()[key]; }

bool JsonValue::asBool() const {
    reportIfOtherKind(*this, JsonKind::Bool);
    return boolValue();
}

std::int64_t JsonValue::asInteger() const {
    reportIfOtherKind(*this, JsonKind::Integer);
    return intValue();
}

double JsonValue::asFloat() const {
    reportIfOtherKind(*this, JsonKind::Float);
    return floatValue();
}

std::string_view JsonValue::asString() const {
    reportIfOtherKind(*this, JsonKind::String);
    return stringValue();
}

std::span<const JsonValue> JsonValue::asArray() const {
    reportIfOtherKind(*this, JsonKind::Array);
    return arrayValue();
}

const JsonMembers& JsonValue::asObject() const {
    reportIfOtherKind(*this, JsonKind::Object);
    return objectValue();
}

bool readPair(const JsonValue& value, double& x, double& y) {
    double number = 0.0;
    if (readNumber(value, number)) {
        x = number;
        y = number;
        return true;
    }
    const std::span<const JsonValue> elements = value.arrayValue();
    if (value.kind != JsonKind::Array || elements.size() != 2 || !readNumber(elements[0], x)) {
        return false;
    }
    readNumber(elements[1], y);
    return true;
}

} // namespace dunkman
