#include "host/plugin_handle.h"

#include <windows.h>

#include <cstring>

namespace tessellum {
namespace {

// Zero-filled, moveable and locked at once; the lock is never released, so the address
// stays valid for as long as the block lives.
void* LockedZeroBlock(SIZE_T size) {
    HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, size);
    if (!memory) return nullptr;
    void* address = GlobalLock(memory);
    if (!address) GlobalFree(memory);
    return address;
}

void FreeLockedBlock(void* address) {
    HGLOBAL memory = GlobalHandle(address);
    GlobalUnlock(memory);
    GlobalFree(memory);
}

}  // namespace

PluginHandle* NewPluginHandle(uint32_t size) {
    auto* record = static_cast<PluginHandle*>(LockedZeroBlock(sizeof(PluginHandle)));
    if (!record) return nullptr;
    void* block = LockedZeroBlock(size);
    if (!block) {
        FreeLockedBlock(record);
        return nullptr;
    }
    record->block = block;
    std::memcpy(record->signature, kHandleSignature, sizeof(kHandleSignature));
    return record;
}

}  // namespace tessellum
