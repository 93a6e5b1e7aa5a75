// Every allocation of the program goes through these: a null from the heap becomes
// ErrNoMemory right where it happened, and nothing else is ever thrown for memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <new>
#include <utility>

#include "storage/error_code.h"

namespace tessellum {

// A new T, or ErrNoMemory. A constructor that throws passes its code on and the memory
// goes back to the heap.
template <typename T, typename... Args>
T* NewOrThrow(Args&&... args) {
    T* object = new (std::nothrow) T(std::forward<Args>(args)...);
    if (object == nullptr) throw ErrNoMemory;
    return object;
}

// `count` zeroed bytes, or ErrNoMemory. Release with delete[].
inline uint8_t* NewBytesOrThrow(size_t count) {
    uint8_t* bytes = new (std::nothrow) uint8_t[count]();
    if (bytes == nullptr) throw ErrNoMemory;
    return bytes;
}

// `count` bytes left as the heap gives them, or ErrNoMemory. Release with delete[].
inline uint8_t* NewUninitializedBytesOrThrow(size_t count) {
    uint8_t* bytes = new (std::nothrow) uint8_t[count];
    if (bytes == nullptr) throw ErrNoMemory;
    return bytes;
}

}  // namespace tessellum
