#pragma once

#include "exact/triple_double.h"

// How the arguments of the exact functions are brought near zero.
namespace dunkman {

// radians = quarterTurns * pi / 2 + rest, with |rest| at most just over pi / 4. Only the last two bits of
// quarterTurns mean anything.
template <typename Number> struct TurnedAngle {
    unsigned quarterTurns = 0;
    Number rest;
};

// For every finite argument. rest is off by less than 2^-80 of itself; below 2^31 radians this is fast.
TurnedAngle<DoubleDouble> reduceAngle(double radians);

// For every finite argument that is 0 or at least 2^-30. rest is off by less than 2^-148 of itself.
TurnedAngle<TripleDouble> reduceAngleAccurately(double radians);

// value - count * unit for a whole count below 2^31 that leaves at most 0.8 and brings value - count *
// unit.high into the reach of one double; off by less than 2^-102 (not of the result: as it stands), given a
// unit below 2.
DoubleDouble subtractMultiple(double value, double count, TripleDouble unit);

// The same, off by less than 2^-147 for units below 2^-6 and counts below 2^17.
TripleDouble subtractMultipleAccurately(double value, double count, TripleDouble unit);

} // namespace dunkman
