#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/geometry.h"
#include "json5/value.h"
#include "world/timer.h"

// How the object family reads and writes its fields. A key that is absent or of another kind leaves the field
// as it was.
namespace dunkman {

void readBoolProperty(const JsonValue& value, std::string_view key, bool& field);
void readNumberProperty(const JsonValue& value, std::string_view key, double& field); // Integer or Float
void readIntegerProperty(const JsonValue& value, std::string_view key, std::int32_t& field); // Integer only
void readStringProperty(const JsonValue& value, std::string_view key, std::string& field);
void readPairProperty(const JsonValue& value, std::string_view key,
                      Vec2& field); // as readPair in json5/value.h

// A number sets the duration, stops the timer and sets its elapsed time to 0.
void readTimerProperty(const JsonValue& value, std::string_view key, Timer& field);

void writeProperty(JsonValue& value, std::string_view key, bool field);
void writeProperty(JsonValue& value, std::string_view key, double field);
void writeProperty(JsonValue& value, std::string_view key, std::int32_t field);
void writeProperty(JsonValue& value, std::string_view key, std::string_view field);
void writeProperty(JsonValue& value, std::string_view key, Vec2 field);
void writeProperty(JsonValue& value, std::string_view key, const Timer& field); // its duration

} // namespace dunkman
