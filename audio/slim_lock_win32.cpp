#include "audio/slim_lock.h"

#include <windows.h>

namespace dunkman {

static_assert(sizeof(SRWLOCK) == sizeof(void*));
static_assert(alignof(SRWLOCK) == alignof(void*));

SlimLock::SlimLock() { InitializeSRWLock(reinterpret_cast<SRWLOCK*>(&native)); }

SlimLock::~SlimLock() = default;

void SlimLock::lock() { AcquireSRWLockExclusive(reinterpret_cast<SRWLOCK*>(&native)); }

void SlimLock::unlock() { ReleaseSRWLockExclusive(reinterpret_cast<SRWLOCK*>(&native)); }

} // namespace dunkman
