#include "tools/console/binary_stdout.h"

#include <cstdio>
#include <fcntl.h>
#include <io.h>

namespace dunkman::simulated {

void makeStandardOutputBinary() { _setmode(_fileno(stdout), _O_BINARY); }

} // namespace dunkman::simulated
