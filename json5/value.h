#pragma once

#include "json5/json_value.h"
#include "json5/members.h"

// The values of data files, and what is asked of them.
namespace dunkman {

// The deepest nesting of arrays and objects that the reader builds. It bounds the stack that reading,
// copying, writing and destroying a value can need.
inline constexpr int maxJsonNesting = 1000;

// Called by the typed reads with the value and the kind that was wanted. Null unless a program or test sets
// it.
using JsonKindMismatchHandler = void (*)(const JsonValue& value, JsonKind wanted);
extern JsonKindMismatchHandler jsonKindMismatchHandler;
void resetJsonKindMismatchHandler();

// Reads a number or a pair of numbers into x and y, Integers as doubles:
// - a Float or an Integer sets both;
// - an Array of exactly two elements sets x from the first and y from the second, each only when it is a
// number,
//   and y only after x could be set: [1, "a"] sets x alone, ["a", 1] nothing;
// - anything else leaves both as they are.
// Answers whether x was set.
bool readPair(const JsonValue& value, double& x, double& y);

} // namespace dunkman
