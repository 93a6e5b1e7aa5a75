// The list of untyped pointers and the library records built on it.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <string>
#include <vector>

#include "color/color_library.h"
#include "color/ptr_list.h"

namespace tessellum {
namespace {

int values[8];
void* V(int i) {
    return &values[i];
}

// The values from head to tail, checking every link both ways on the way.
std::vector<int> Walk(const PtrList& list) {
    std::vector<int> order;
    PtrNode* prev = nullptr;
    for (PtrNode* node = list.Head(); node != nullptr; node = node->next) {
        EXPECT_EQ(node->prev, prev);
        order.push_back(static_cast<int>(static_cast<int*>(node->value) - values));
        prev = node;
    }
    EXPECT_EQ(list.Tail(), prev);
    EXPECT_EQ(list.Count(), static_cast<int>(order.size()));
    return order;
}

using Order = std::vector<int>;

TEST(PtrList, EmptyList) {
    PtrList list;
    EXPECT_EQ(list.Count(), 0);
    EXPECT_EQ(list.Head(), nullptr);
    EXPECT_EQ(list.Tail(), nullptr);
    EXPECT_EQ(list.NodeAt(0), nullptr);
    list.Clear();
    EXPECT_EQ(Walk(list), Order{});
}

TEST(PtrList, InsertionsKeepOrderAndLinks) {
    PtrList list;
    list.Append(V(1));
    EXPECT_EQ(list.Head(), list.Tail());
    list.Append(V(2));
    list.InsertAt(0, V(0));             // in front of head
    list.InsertAt(list.Count(), V(4));  // same as Append
    list.InsertAt(3, V(3));             // between 2 and 4
    EXPECT_EQ(Walk(list), (Order{0, 1, 2, 3, 4}));
    list.InsertBefore(list.Head(), V(5));
    list.InsertAfter(list.Tail(), V(6));
    list.InsertAfter(list.NodeAt(1), V(7));
    EXPECT_EQ(Walk(list), (Order{5, 0, 7, 1, 2, 3, 4, 6}));
    EXPECT_EQ(list.ValueAt(2), V(7));
    EXPECT_EQ(list.NodeAt(list.Count()), nullptr);

    PtrList single;
    single.InsertAt(0, V(3));  // the only node of an empty list
    EXPECT_EQ(Walk(single), Order{3});
}

TEST(PtrList, RemovalsRelinkAndLeaveValuesAlone) {
    PtrList list;
    for (int i = 0; i < 5; ++i) list.Append(V(i));
    list.RemoveAt(0);  // the second becomes head
    EXPECT_EQ(list.Head()->prev, nullptr);
    EXPECT_EQ(Walk(list), (Order{1, 2, 3, 4}));
    list.RemoveNode(list.Tail());  // the one before becomes tail
    EXPECT_EQ(list.Tail()->next, nullptr);
    EXPECT_EQ(Walk(list), (Order{1, 2, 3}));
    list.RemoveAt(1);
    EXPECT_EQ(Walk(list), (Order{1, 3}));
    list.Clear();
    EXPECT_EQ(Walk(list), Order{});

    PtrList one;
    one.Append(V(0));
    one.RemoveAt(0);
    EXPECT_EQ(one.Head(), nullptr);
    EXPECT_EQ(one.Tail(), nullptr);

    // Values are the caller's: removing a node frees only the node.
    PtrList owned;
    int* value = new int(42);
    owned.Append(value);
    void* taken = owned.ValueAt(0);
    owned.RemoveAt(0);
    EXPECT_EQ(*static_cast<int*>(taken), 42);
    delete static_cast<int*>(taken);
}

TEST(ColorRecords, NewRecordsStartEmpty) {
    ColorEntry* entry = NewColorEntry();
    EXPECT_STREQ(entry->name, "");
    const uint8_t* cells = reinterpret_cast<const uint8_t*>(&entry->cells);
    EXPECT_EQ(std::vector<uint8_t>(cells, cells + 192), std::vector<uint8_t>(192, 0));
    EXPECT_EQ(entry->gridSize, 2);
    delete entry;

    // Field layout: name, cells, GridSize, no gaps.
    EXPECT_EQ(offsetof(ColorEntry, cells), 256u);
    EXPECT_EQ(offsetof(ColorEntry, gridSize), 448u);

    ColorList list;
    EXPECT_STREQ(list.name, "");
    EXPECT_EQ(list.entries.Count(), 0);
    NamedPalette palette;
    EXPECT_STREQ(palette.name, "");
    EXPECT_EQ(palette.palette.Count(), 0u);

    ColorLibrary library;
    ASSERT_NE(library.palettes, nullptr);
    ASSERT_NE(library.colorLists, nullptr);
    EXPECT_EQ(library.palettes->Count(), 0);
    EXPECT_EQ(library.colorLists->Count(), 0);
}

TEST(ColorRecords, NamesAreCutTo255Characters) {
    char name[kNameBytes];
    std::memset(name, 'x', sizeof name);
    CopyName(name, "Web");
    EXPECT_STREQ(name, "Web");
    EXPECT_EQ(NameLength(name), 3u);
    const std::string longText(300, 'a');
    CopyName(name, longText.c_str());
    EXPECT_EQ(std::strlen(name), 255u);
    CopyName(name, "");
    EXPECT_EQ(NameLength(name), 0u);
    // A buffer that lost its terminator still measures at most 255.
    std::memset(name, 'y', sizeof name);
    EXPECT_EQ(NameLength(name), 255u);
}

}  // namespace
}  // namespace tessellum
