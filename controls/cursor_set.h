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
    ~CursorSet();
    CursorSet(const CursorSet&) = delete;
    CursorSet& operator=(const CursorSet&) = delete;
    // The arrow, then the pencil, dropper and eraser of the plug-in as drawn for `dpi`,
    // in place of those loaded before.
    void Load(int32_t dpi = 96);
    HCURSOR Get(uint32_t index) const { return cursors[index]; }  // 0 to 3, not checked

    std::unique_ptr<HCURSOR[]> cursors;

private:
    void Free();
    bool owned = false;  // the tools' pointers were made for a DPI and are ours to destroy
};

}  // namespace tessellum
