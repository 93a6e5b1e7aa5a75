// Handles of the plug-in's own making: a small record that points at the data block,
// followed by the four bytes "OTOF", so that a host which knows the convention can
// read the block through it. The host holds the address of the record.
#pragma once

#include <cstdint>

namespace tessellum {

#pragma pack(push, 4)
struct PluginHandle {
    void* block;
    char signature[4];  // "OTOF" in this memory order
};
#pragma pack(pop)

static_assert(sizeof(PluginHandle) == sizeof(void*) + 4, "pointer then OTOF, no padding");

constexpr char kHandleSignature[4] = {'O', 'T', 'O', 'F'};

// The data block behind a handle of ours (a host never hands us another kind).
template <typename Block>
Block* HandleBlock(void* handle) {
    return static_cast<Block*>(static_cast<PluginHandle*>(handle)->block);
}

// Makes a handle and a zero-filled block of `size` bytes from the Windows global heap,
// both locked for good. Null if either allocation fails.
PluginHandle* NewPluginHandle(uint32_t size);

}  // namespace tessellum
