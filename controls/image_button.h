// A clickable picture from a bitmap resource, at its own size.
#pragma once

#include <windows.h>

#include <memory>

#include "controls/control.h"
#include "controls/offscreen_bitmap.h"

namespace tessellum {

class ImageButton : public Control {
public:
    // Loads the picture as drawn for `dpi`; the button takes its size. Throws ErrNoMemory.
    ImageButton(HWND owner, int32_t x, int32_t y, HINSTANCE instance, uint32_t id,
                int32_t dpi = 96);

    void Draw();  // the whole picture at x, y

    std::unique_ptr<OffscreenBitmap> bitmap;
};

// A bitmap of the picture of resource `id` as drawn for `dpi`, built small and then
// resized to it.
std::unique_ptr<OffscreenBitmap> LoadButtonPicture(HWND owner, HINSTANCE instance, uint32_t id,
                                                   int32_t dpi = 96);

}  // namespace tessellum
