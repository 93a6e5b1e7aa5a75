// The one container of the library: a doubly linked list of untyped pointers. It owns
// its nodes and never a value; the user casts values back. No index is checked: valid
// indexes are 0 to Count() - 1, and NodeAt(Count()) is null.
#pragma once

#include <cstddef>
#include <new>

#include "color/record_blocks.h"

namespace tessellum {

struct PtrNode {
    PtrNode* prev;  // null on the first node
    PtrNode* next;  // null on the last node
    void* value;

    // Made alone or carved from a load's blocks, a node is freed by `delete`.
    static void* operator new(size_t size, const std::nothrow_t&) noexcept {
        return RecordBlocks::Single(size);
    }
    static void operator delete(void* node, size_t size) noexcept {
        RecordBlocks::Free(node, size);
    }
    static void operator delete(void* node, const std::nothrow_t&) noexcept {
        RecordBlocks::Free(node, sizeof(PtrNode));
    }
};

class PtrList {
public:
    PtrList() = default;
    ~PtrList() { Clear(); }
    PtrList(const PtrList&) = delete;
    PtrList& operator=(const PtrList&) = delete;

    // Walks the whole list: there is no stored count.
    int Count() const;
    PtrNode* Head() const { return head; }
    PtrNode* Tail() const { return tail; }
    PtrNode* NodeAt(int index) const;
    void* ValueAt(int index) const { return NodeAt(index)->value; }

    // Unlink and free the node; the value stays allocated.
    void RemoveNode(PtrNode* node);
    void RemoveAt(int index) { RemoveNode(NodeAt(index)); }
    void Clear() {
        ClearWith([](void*) {});
    }
    // Frees every node, handing its value to `release` first: a list that owns its
    // values is freed in one walk.
    template <typename Release>
    void ClearWith(Release release) {
        while (head != nullptr) {
            PtrNode* next = head->next;
            release(head->value);
            delete head;
            head = next;
        }
        tail = nullptr;
    }

    // Each insertion allocates one node; without memory it throws ErrNoMemory and the
    // list is as it was.
    void Append(void* value);
    // The same with the node carved from `blocks`.
    void Append(void* value, RecordBlocks& blocks) {
        Link(::new (blocks.Carve(sizeof(PtrNode))) PtrNode{tail, nullptr, value});
    }
    void InsertAfter(PtrNode* node, void* value);
    void InsertBefore(PtrNode* node, void* value);
    void InsertAt(int index, void* value);

private:
    // Puts a node whose prev is the tail at the end.
    void Link(PtrNode* node) {
        (tail != nullptr ? tail->next : head) = node;
        tail = node;
    }

    PtrNode* head = nullptr;
    PtrNode* tail = nullptr;
};

}  // namespace tessellum
