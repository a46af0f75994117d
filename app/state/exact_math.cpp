#include "app/state/exact_math.h"

#include <cmath>

namespace dunkman {

double exactSin(double radians) { return std::sin(radians); }
double exactCos(double radians) { return std::cos(radians); }
double exactExp(double exponent) { return std::exp(exponent); }
double exactAtan(double ratio) { return std::atan(ratio); }
float exactTan(float radians) { return std::tan(radians); }

} // namespace dunkman
