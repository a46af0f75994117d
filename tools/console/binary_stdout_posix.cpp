#include "tools/console/binary_stdout.h"

namespace dunkman::simulated {

void makeStandardOutputBinary() {} // it always is

} // namespace dunkman::simulated
