#include "tools/simulated/binary_stdout.h"

namespace dunkman::simulated {

void makeStandardOutputBinary() {} // it always is

} // namespace dunkman::simulated
