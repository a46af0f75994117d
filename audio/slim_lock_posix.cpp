#include "audio/slim_lock.h"

#include <mutex>

namespace dunkman {

SlimLock::SlimLock() : native(new std::mutex) {}

SlimLock::~SlimLock() { delete static_cast<std::mutex*>(native); }

void SlimLock::lock() { static_cast<std::mutex*>(native)->lock(); }

void SlimLock::unlock() { static_cast<std::mutex*>(native)->unlock(); }

} // namespace dunkman
