#include "color/record_blocks.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "color/allocate.h"

namespace tessellum {
namespace {

// Blocks start small, so that a short list costs little, and double up to a size the
// heap still serves from its free lists rather than from fresh pages.
constexpr size_t kFirstBlockBytes = 4 * 1024;
constexpr size_t kLargestBlockBytes = 32 * 1024;

}  // namespace

void* RecordBlocks::Single(size_t size) noexcept {
    void* bytes = ::operator new(kWord + size, std::nothrow);
    if (bytes == nullptr) return nullptr;
    *static_cast<Block**>(bytes) = nullptr;
    return static_cast<uint8_t*>(bytes) + kWord;
}

void RecordBlocks::FreeLast(void* record, Block* block) noexcept {
    if (block == nullptr)
        ::operator delete(static_cast<uint8_t*>(record) - kWord);
    else
        delete[] reinterpret_cast<uint8_t*>(block);
}

void RecordBlocks::Zero(void* bytes, size_t size) {
    std::memset(bytes, 0, size);
}

void RecordBlocks::StartBlock(size_t taken) {
    const size_t grown = capacity == 0 ? kFirstBlockBytes : capacity * 2;
    const size_t bytes = std::max(kWord + taken, std::min(grown, kLargestBlockBytes));
    LetGo();
    current = reinterpret_cast<Block*>(NewUninitializedBytesOrThrow(bytes));
    current->records = 1;
    used = kWord;
    capacity = bytes;
    TESSELLUM_POISON(reinterpret_cast<uint8_t*>(current) + used, capacity - used);
}

void RecordBlocks::LetGo() {
    if (current != nullptr && --current->records == 0) delete[] reinterpret_cast<uint8_t*>(current);
    current = nullptr;
    used = capacity = 0;
}

}  // namespace tessellum
