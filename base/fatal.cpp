#include "base/fatal.h"

namespace dunkman {

void fatal(const std::string& message) { throw FatalError(message); }

} // namespace dunkman
