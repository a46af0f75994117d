#pragma once

namespace dunkman {

// Owns one reference to a COM object. For functions that return at the first failing call.
template <typename Interface> class ComHandle {
public:
    ComHandle() = default;
    ~ComHandle() { reset(); }
    ComHandle(const ComHandle&) = delete;
    ComHandle& operator=(const ComHandle&) = delete;

    void reset() {
        if (object != nullptr) {
            object->Release();
            object = nullptr;
        }
    }

    // Gives the reference to the caller.
    Interface* detach() {
        Interface* const result = object;
        object = nullptr;
        return result;
    }

    // Where a call that hands out a reference puts it.
    Interface** receive() {
        reset();
        return &object;
    }
    void** receiveAny() { return reinterpret_cast<void**>(receive()); }

    Interface* get() const { return object; }
    Interface* operator->() const { return object; }

private:
    Interface* object = nullptr;
};

} // namespace dunkman
