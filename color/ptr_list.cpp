#include "color/ptr_list.h"

#include "color/allocate.h"

namespace tessellum {

int PtrList::Count() const {
    int count = 0;
    for (PtrNode* node = head; node != nullptr; node = node->next) ++count;
    return count;
}

PtrNode* PtrList::NodeAt(int index) const {
    PtrNode* node = head;
    for (int i = 0; i < index; ++i) node = node->next;
    return node;
}

void PtrList::RemoveNode(PtrNode* node) {
    if (node->prev != nullptr)
        node->prev->next = node->next;
    else
        head = node->next;
    if (node->next != nullptr)
        node->next->prev = node->prev;
    else
        tail = node->prev;
    delete node;
}

void PtrList::Append(void* value) {
    Link(NewOrThrow<PtrNode>(PtrNode{tail, nullptr, value}));
}

void PtrList::InsertAfter(PtrNode* node, void* value) {
    PtrNode* oldNext = node->next;
    PtrNode* inserted = NewOrThrow<PtrNode>(PtrNode{node, oldNext, value});
    node->next = inserted;
    if (oldNext != nullptr)
        oldNext->prev = inserted;
    else
        tail = inserted;
}

void PtrList::InsertBefore(PtrNode* node, void* value) {
    PtrNode* oldPrev = node->prev;
    PtrNode* inserted = NewOrThrow<PtrNode>(PtrNode{oldPrev, node, value});
    if (oldPrev != nullptr)
        oldPrev->next = inserted;
    else
        head = inserted;
    node->prev = inserted;
}

void PtrList::InsertAt(int index, void* value) {
    if (index == 0) {
        if (head != nullptr)
            InsertBefore(head, value);
        else
            Append(value);
        return;
    }
    InsertAfter(NodeAt(index - 1), value);
}

}  // namespace tessellum
