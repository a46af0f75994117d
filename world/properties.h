#pragma once

#include <cstdint>
#include <string>

#include "base/geometry.h"
#include "json5/value.h"
#include "world/timer.h"

// How the values of data files become fields and back, kind by kind. A value of another kind, Null for an absent key
// included, leaves the field as it was.
namespace dunkman {

void readProperty(const JsonValue& value, bool& field);
void readProperty(const JsonValue& value, double& field);       // Integer or Float
void readProperty(const JsonValue& value, std::int32_t& field); // Integer only
void readProperty(const JsonValue& value, std::string& field);
void readProperty(const JsonValue& value, Vec2& field); // as readPair in json5/value.h

// A number sets the duration, stops the timer and sets its elapsed time to 0.
void readProperty(const JsonValue& value, Timer& field);

JsonValue writtenProperty(bool field);
JsonValue writtenProperty(double field);
JsonValue writtenProperty(std::int32_t field);
JsonValue writtenProperty(const std::string& field);
JsonValue writtenProperty(Vec2 field);
JsonValue writtenProperty(const Timer& field); // its duration

} // namespace dunkman
