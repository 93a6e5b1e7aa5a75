#include "controls/toggle_image_button.h"

#include "controls/image_button.h"

namespace tessellum {

ToggleImageButton::ToggleImageButton(HWND owner, int32_t x, int32_t y, HINSTANCE instance,
                                     uint32_t primaryId, uint32_t secondaryId, int32_t dpi)
    : Control(owner, x, y, 0, 0),
      primaryBitmap(LoadButtonPicture(owner, instance, primaryId, dpi)),
      secondaryBitmap(LoadButtonPicture(owner, instance, secondaryId, dpi)),
      showPrimary(1) {
    width = static_cast<int32_t>(primaryBitmap->width);
    height = static_cast<int32_t>(primaryBitmap->height);
}

void ToggleImageButton::Draw() {
    OffscreenBitmap& shown = Shown();
    shown.Blit(x, y, 0, 0, static_cast<int32_t>(shown.width), static_cast<int32_t>(shown.height));
}

void ToggleImageButton::SetState(bool primary) {
    showPrimary = primary ? 1 : 0;
    width = static_cast<int32_t>(Shown().width);
    height = static_cast<int32_t>(Shown().height);
    Draw();
}

void ToggleImageButton::Toggle() {
    SetState(!showPrimary);
}

}  // namespace tessellum
