#pragma once

// The functions whose results feed the state of the game or what is drawn. C libraries differ in their last
// bits between platforms, processors and optimisation levels; a recording replays exactly only if these do
// not. Every result here is the correctly rounded one (to nearest, ties to even), from plain arithmetic on
// doubles alone; only the angles' quarter turns are also counted in whole numbers.
//
// They cover all arguments, not only those that the game reaches: every double, and every float for the
// tangent, subnormals and subnormal results included. sin, atan and tan keep the sign of zero; NaN, and
// infinite angles, give one NaN with fixed bits. The processor must round to nearest and keep subnormals, as
// it does when a program starts.
//
// How: a quick phase computes with 106 bits and a proven bound for its error. Where that leaves open which
// double is the nearest, about once in seven hundred calls, a second phase computes with 159 bits, off by less
// than 2^-145. That settles all: beyond the 53rd bit results behave like random ones, and among 2^64 of them
// the hardest is expected about 2^-117 from the middle between two doubles; that one should be nearer than
// 2^-145 has a chance of 2^-27. Arguments so small that their results follow a pattern instead are taken out
// beforehand.
namespace dunkman {

double exactSin(double radians);  // quick below 2^31 radians
double exactCos(double radians);  // quick below 2^31 radians
double exactExp(double exponent); // 0 below -745.14, infinity above 709.79
double exactAtan(double ratio);   // radians
float exactTan(float radians);

} // namespace dunkman
