#pragma once

#include "json5/json_value.h"

#include <cstddef>
#include <cstdint>
#include <new>

namespace dunkman {

// The elements of an array, in one piece of memory behind their count. Made and freed by the functions below
// only.
struct alignas(JsonValue) JsonArrayBlock {
    std::uint32_t count;
    std::uint32_t capacity;

    JsonValue* elements() { return std::launder(reinterpret_cast<JsonValue*>(this + 1)); }
};

// Without elements. Throws std::length_error for a capacity beyond 32 bits.
JsonArrayBlock* newArrayBlock(std::size_t capacity);
void deleteArrayBlock(JsonArrayBlock* block);
JsonArrayBlock* copyArrayBlock(JsonArrayBlock& block);
void growArrayBlock(JsonArrayBlock*& block); // moves the elements to a larger one; null becomes a small one

// Appends an element of kind Null; `block` may be null before, and may be another one after.
inline JsonValue& appendElement(JsonArrayBlock*& block) {
    if (block == nullptr || block->count == block->capacity) {
        growArrayBlock(block);
    }
    JsonValue* const element = new (block->elements() + block->count) JsonValue();
    ++block->count;
    return *element;
}

} // namespace dunkman
