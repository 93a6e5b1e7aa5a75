// Records carved from shared heap blocks, each still freed on its own. A load makes
// thousands of small records, and a heap block for each one was most of its time.
//
// Every record has a word just ahead of it that names the block it lies in, or is null
// for a record with a heap block of its own; Free reads it, so one `delete` frees either
// kind. A block counts its records not yet freed, plus one while it is being carved, and
// goes back to the heap at zero: the records of a load free in any order and any number
// of them may outlive the others. The count is plain, not atomic: the records of one load
// are freed by one thread at a time, as the library they join is used by one thread.
#pragma once

#include <cstddef>
#include <cstdint>

// Under AddressSanitizer a freed record stays poisoned while its block lives on, so that
// a use after `delete` is still caught.
#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/asan_interface.h>
#define TESSELLUM_UNPOISON(address, size) ASAN_UNPOISON_MEMORY_REGION(address, size)
#define TESSELLUM_POISON(address, size) ASAN_POISON_MEMORY_REGION(address, size)
#else
#define TESSELLUM_UNPOISON(address, size) ((void)(address), (void)(size))
#define TESSELLUM_POISON(address, size) ((void)(address), (void)(size))
#endif

namespace tessellum {

class RecordBlocks {
public:
    RecordBlocks() = default;
    // Lets go of the block being carved; it lives on while records in it do.
    ~RecordBlocks() { LetGo(); }
    RecordBlocks(const RecordBlocks&) = delete;
    RecordBlocks& operator=(const RecordBlocks&) = delete;

    // `size` bytes, aligned for a pointer and not zeroed, from the block being carved or
    // from a new one. Throws ErrNoMemory.
    void* Carve(size_t size) {
        const size_t taken = kWord + (size + kWord - 1) / kWord * kWord;
        if (taken > capacity - used) StartBlock(taken);
        uint8_t* word = reinterpret_cast<uint8_t*>(current) + used;
        TESSELLUM_UNPOISON(word, taken);
        used += taken;
        ++current->records;
        *reinterpret_cast<Block**>(word) = current;
        return word + kWord;
    }

    // The same, zeroed.
    void* CarveZeroed(size_t size) {
        void* record = Carve(size);
        Zero(record, size);
        return record;
    }

    // A record of `size` bytes (not zeroed) with a heap block of its own; null without
    // memory.
    static void* Single(size_t size) noexcept;
    // Frees a record of `size` bytes from Carve or Single; null does nothing.
    static void Free(void* record, size_t size) noexcept {
        if (record == nullptr) return;
        Block* block = static_cast<Block**>(record)[-1];
        if (block == nullptr || --block->records == 0) return FreeLast(record, block);
        TESSELLUM_POISON(record, size);
    }

private:
    struct Block {
        size_t records;
    };
    static constexpr size_t kWord = sizeof(void*);
    static_assert(sizeof(Block) == kWord, "records follow the count a word apart");

    // Frees a record with a heap block of its own, or the block whose last record it was.
    static void FreeLast(void* record, Block* block) noexcept;
    // Out of line, so that the size is not known where the bytes are zeroed: the compiler
    // then calls the C library's memset instead of inlining a string instruction, which
    // is slow to start on a record of a few hundred bytes.
    static void Zero(void* bytes, size_t size);
    void StartBlock(size_t taken);
    void LetGo();

    Block* current = nullptr;
    size_t used = 0;  // bytes of the current block handed out, its count included
    size_t capacity = 0;
};

}  // namespace tessellum
