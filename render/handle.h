#pragma once

#include <cstdint>

namespace dunkman {

// Base of everything that names one OpenGL object. Copies name the same object; nobody owns it by scope: the
// owner calls release once, while the GL context lives.
class HandleBase {
public:
    std::uint32_t name = 0; // 0: none

    // Deletes the OpenGL object and sets the name to 0.
    virtual void release() = 0;

protected:
    HandleBase() = default;
    HandleBase(const HandleBase&) = default;
    HandleBase& operator=(const HandleBase&) = default;
    ~HandleBase() = default;
};

} // namespace dunkman
