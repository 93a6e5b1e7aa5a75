// What a click of the grid editor does to the cell under it, by the tool selected: the
// order is that of the tool buttons.
#pragma once

#include <cstdint>

#include "color/pattern.h"

namespace tessellum {

enum EditorTool : int32_t {
    kToolPencil = 0,      // the cell takes the fore colour
    kToolEyedropper = 1,  // the fore colour takes the cell's
    kToolEraser = 2,      // the cell takes the back colour
};

enum class ToolEffect {
    kNone,          // nothing changed
    kCellPainted,   // the cell changed; the grid must be repainted
    kForeColorSet,  // only the fore colour changed; the grid's picture stands
};

constexpr bool SameColor(const Rgb8& a, const Rgb8& b) {
    return a.red == b.red && a.green == b.green && a.blue == b.blue;
}

// A click that would change nothing reports so, so that nothing is repainted. A tool
// value outside the three does nothing.
inline ToolEffect ApplyEditorTool(int32_t tool, Rgb8& cell, Rgb8& foreColor,
                                  const Rgb8& backColor) {
    switch (tool) {
        case kToolPencil:
            if (SameColor(cell, foreColor)) return ToolEffect::kNone;
            cell = foreColor;
            return ToolEffect::kCellPainted;
        case kToolEyedropper:
            if (SameColor(cell, foreColor)) return ToolEffect::kNone;
            foreColor = cell;
            return ToolEffect::kForeColorSet;
        case kToolEraser:
            if (SameColor(cell, backColor)) return ToolEffect::kNone;
            cell = backColor;
            return ToolEffect::kCellPainted;
        default: return ToolEffect::kNone;
    }
}

}  // namespace tessellum
