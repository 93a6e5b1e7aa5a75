// A button with two pictures, one shown at a time; its size follows the one shown.
#pragma once

#include <windows.h>

#include <cstdint>
#include <memory>

#include "controls/control.h"
#include "controls/offscreen_bitmap.h"

namespace tessellum {

class ToggleImageButton : public Control {
public:
    // Loads both pictures as drawn for `dpi` and shows the primary one. Throws
    // ErrNoMemory.
    ToggleImageButton(HWND owner, int32_t x, int32_t y, HINSTANCE instance, uint32_t primaryId,
                      uint32_t secondaryId, int32_t dpi = 96);

    void Draw();                  // the whole picture shown, at x, y
    void SetState(bool primary);  // shows that picture, takes its size, and draws
    void Toggle();

    std::unique_ptr<OffscreenBitmap> primaryBitmap;
    std::unique_ptr<OffscreenBitmap> secondaryBitmap;
    uint8_t showPrimary;

private:
    OffscreenBitmap& Shown() { return showPrimary ? *primaryBitmap : *secondaryBitmap; }
};

}  // namespace tessellum
