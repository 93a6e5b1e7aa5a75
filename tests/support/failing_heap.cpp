#include "tests/support/failing_heap.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <new>

// Blocks come from malloc behind a header, which the compiler would take for a mismatch.
#pragma GCC diagnostic ignored "-Wmismatched-new-delete"
#pragma GCC diagnostic ignored "-Warray-bounds"

tessellum::test::FailingHeap tessellum::test::failingHeap;

namespace {

using tessellum::test::failingHeap;

// Each block's header says whether it was counted, so frees of blocks from before arming, or from
// other threads, leave the count alone.
constexpr size_t kHeader = alignof(std::max_align_t);
constexpr uint32_t kCounted = 0xC0C0A110;

void* Allocate(size_t size) {
    const bool counted = failingHeap.armed && failingHeap.owner == std::this_thread::get_id();
    if (counted && ++failingHeap.allocations == failingHeap.failAt) return nullptr;
    char* block = static_cast<char*>(std::malloc(size + kHeader));
    if (block == nullptr) return nullptr;
    *reinterpret_cast<uint32_t*>(block) = counted ? kCounted : 0;
    failingHeap.live += counted;
    return block + kHeader;
}

void Free(void* pointer) {
    if (pointer == nullptr) return;
    char* block = static_cast<char*>(pointer) - kHeader;
    if (*reinterpret_cast<uint32_t*>(block) == kCounted) --failingHeap.live;
    std::free(block);
}

}  // namespace

// Every form, as a sanitizer's runtime would otherwise supply the ones left out.
void* operator new(size_t size) {
    if (void* p = Allocate(size)) return p;
    throw std::bad_alloc();
}
void* operator new[](size_t size) {
    return operator new(size);
}
void* operator new(size_t size, const std::nothrow_t&) noexcept {
    return Allocate(size);
}
void* operator new[](size_t size, const std::nothrow_t&) noexcept {
    return Allocate(size);
}
void operator delete(void* p) noexcept {
    Free(p);
}
void operator delete[](void* p) noexcept {
    Free(p);
}
void operator delete(void* p, size_t) noexcept {
    Free(p);
}
void operator delete[](void* p, size_t) noexcept {
    Free(p);
}
void operator delete(void* p, const std::nothrow_t&) noexcept {
    Free(p);
}
void operator delete[](void* p, const std::nothrow_t&) noexcept {
    Free(p);
}
