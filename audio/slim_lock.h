#pragma once

namespace dunkman {

// The system's cheapest exclusive lock: a slim reader/writer lock on Windows. For a few instructions at a
// time; not recursive. Works with std::lock_guard.
class SlimLock {
public:
    SlimLock();
    ~SlimLock();
    SlimLock(const SlimLock&) = delete;
    SlimLock& operator=(const SlimLock&) = delete;

    void lock();
    void unlock();

private:
    void* native = nullptr; // the lock itself on Windows, a std::mutex of our own elsewhere
};

} // namespace dunkman
