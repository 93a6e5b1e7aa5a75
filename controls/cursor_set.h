// The mouse pointers of the pattern editor: one per drawing tool, indexed as the tools
// are, and the system arrow last.
#pragma once

#include <windows.h>

#include <cstdint>
#include <memory>

namespace tessellum {

class CursorSet {
public:
    static constexpr uint32_t kArrow = 3;

    CursorSet();  // an array of four empty handles; throws ErrNoMemory
    void Load();  // the arrow, then the pencil, dropper and eraser of the plug-in
    HCURSOR Get(uint32_t index) const { return cursors[index]; }  // 0 to 3, not checked

    std::unique_ptr<HCURSOR[]> cursors;
};

}  // namespace tessellum
