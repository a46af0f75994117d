#pragma once

// The functions whose results feed the state of the game or what is drawn. C libraries differ in their last bits
// between platforms, processors and optimisation levels; a recording replays exactly only if these do not. Every
// result here is the correctly rounded one, from plain arithmetic on doubles alone.
namespace dunkman {

double exactSin(double radians);
double exactCos(double radians);
double exactExp(double exponent);
double exactAtan(double ratio); // radians
float exactTan(float radians);

} // namespace dunkman
