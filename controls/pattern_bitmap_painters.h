// The Pattern painters on an off-screen bitmap, as the dialog calls them. A null bitmap
// or Pattern leaves everything as it is.
#pragma once

#include <cstdint>

#include "color/pattern.h"
#include "controls/offscreen_bitmap.h"
#include "controls/pattern_painters.h"

namespace tessellum {

inline void DrawTilePreview(OffscreenBitmap* bitmap, const Pattern* cells, uint8_t gridSize,
                            int32_t dpi = kBaseDpi) {
    if (bitmap)
        DrawTilePreview(bitmap->bits, bitmap->width, bitmap->height, cells, gridSize,
                        static_cast<uint32_t>(LineWidth(dpi)));
}

inline void DrawQuadrantBox(OffscreenBitmap* bitmap, const Pattern* cells, int32_t dpi = kBaseDpi) {
    if (bitmap) DrawQuadrantBox(bitmap->bits, bitmap->width, bitmap->height, cells, dpi);
}

inline void DrawNoColorCross(OffscreenBitmap* bitmap, int32_t dpi = kBaseDpi) {
    if (bitmap)
        DrawNoColorCross(bitmap->bits, bitmap->width, bitmap->height,
                         static_cast<uint32_t>(LineWidth(dpi)));
}

}  // namespace tessellum
