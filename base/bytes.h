#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string_view>
#include <utility>

namespace dunkman {

// What a file holds. Unlike a string's, its memory is not cleared before it is filled: a tenth of what reading the game's
// pictures takes.
class Bytes {
public:
    Bytes() = default;
    explicit Bytes(std::string_view copied) {
        resize(copied.size());
        std::copy(copied.begin(), copied.end(), memory.get());
    }

    std::size_t size() const { return count; }
    bool empty() const { return count == 0; }
    char* data() { return memory.get(); }
    const char* data() const { return memory.get(); }
    std::string_view text() const { return {memory.get(), count}; }

    // What was there stays as far as there is room for it; what is new is anything.
    void resize(std::size_t newCount) {
        if (newCount > room) {
            auto larger = std::make_unique_for_overwrite<char[]>(newCount);
            std::copy_n(memory.get(), count, larger.get());
            memory = std::move(larger);
            room = newCount;
        }
        count = newCount;
    }

private:
    std::unique_ptr<char[]> memory;
    std::size_t count = 0;
    std::size_t room = 0; // of the memory
};

} // namespace dunkman
