#include "json5/array_block.h"

#include <limits>
#include <memory>
#include <stdexcept>

namespace dunkman {

namespace {

constexpr std::size_t firstCapacity = 2; // the many pairs of a scene fit just so

std::size_t bytesFor(std::size_t capacity) { return sizeof(JsonArrayBlock) + capacity * sizeof(JsonValue); }

} // namespace

JsonArrayBlock* newArrayBlock(std::size_t capacity) {
    if (capacity > std::numeric_limits<std::uint32_t>::max()) {
        throw std::length_error("A JSON array has too many elements.");
    }
    return new (::operator new(bytesFor(capacity))) JsonArrayBlock{0, static_cast<std::uint32_t>(capacity)};
}

void deleteArrayBlock(JsonArrayBlock* block) {
    std::destroy_n(block->elements(), block->count);
    ::operator delete(block);
}

JsonArrayBlock* copyArrayBlock(JsonArrayBlock& block) {
    // Owned while elements are copied, for which memory may not suffice.
    std::unique_ptr<JsonArrayBlock, decltype(&deleteArrayBlock)> copy(newArrayBlock(block.capacity),
                                                                      deleteArrayBlock);
    for (; copy->count < block.count; ++copy->count) {
        new (copy->elements() + copy->count) JsonValue(block.elements()[copy->count]);
    }
    return copy.release();
}

void growArrayBlock(JsonArrayBlock*& block) {
    if (block == nullptr) {
        block = newArrayBlock(firstCapacity);
        return;
    }
    JsonArrayBlock* const grown = newArrayBlock(2 * std::size_t{block->capacity});
    std::uninitialized_move_n(block->elements(), block->count, grown->elements());
    grown->count = block->count;
    deleteArrayBlock(block);
    block = grown;
}

} // namespace dunkman
