#include "tools/console/fault.h"

#include <cstdio>
#include <new>

#include "base/fatal.h"

namespace dunkman::console {

int endWithFault(const std::exception& fault) {
    const bool isLackOfMemory = dynamic_cast<const std::bad_alloc*>(&fault) != nullptr;
    std::fprintf(stderr, "%s\n", isLackOfMemory ? faultMessage(fault).c_str() : fault.what());
    return 1;
}

} // namespace dunkman::console
