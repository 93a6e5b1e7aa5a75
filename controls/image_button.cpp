#include "controls/image_button.h"

#include <new>

#include "controls/dpi_scale.h"
#include "storage/error_code.h"

namespace tessellum {

std::unique_ptr<OffscreenBitmap> LoadButtonPicture(HWND owner, HINSTANCE instance, uint32_t id,
                                                   int32_t dpi) {
    std::unique_ptr<OffscreenBitmap> picture(new (std::nothrow) OffscreenBitmap(owner, 5, 5, true));
    if (!picture) throw ErrNoMemory;
    picture->LoadBitmapResource(ArtResourceId(id, dpi), instance);
    return picture;
}

ImageButton::ImageButton(HWND owner, int32_t x, int32_t y, HINSTANCE instance, uint32_t id,
                         int32_t dpi)
    : Control(owner, x, y, 0, 0), bitmap(LoadButtonPicture(owner, instance, id, dpi)) {
    width = static_cast<int32_t>(bitmap->width);
    height = static_cast<int32_t>(bitmap->height);
}

void ImageButton::Draw() {
    bitmap->Blit(x, y, 0, 0, static_cast<int32_t>(bitmap->width),
                 static_cast<int32_t>(bitmap->height));
}

}  // namespace tessellum
