#include "base/fatal.h"

namespace dunkman {

void fatal(const std::string& message) { throw FatalError(message); }

std::string faultMessage(const std::exception& fault) {
    if (dynamic_cast<const FatalError*>(&fault) != nullptr) {
        return fault.what();
    }
    if (dynamic_cast<const std::bad_alloc*>(&fault) != nullptr) {
        return "There is not enough memory to go on. Close other programs and start again.";
    }
    return std::string("A fault that nobody foresaw has ended the program: ") + fault.what() +
           ". Start again, and please report it.";
}

} // namespace dunkman
