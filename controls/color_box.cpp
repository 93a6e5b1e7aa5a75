#include "controls/color_box.h"

#include <new>

#include "storage/error_code.h"

namespace tessellum {

std::unique_ptr<OffscreenBitmap> MakeControlPicture(HWND owner, int32_t width, int32_t height) {
    std::unique_ptr<OffscreenBitmap> picture(new (std::nothrow) OffscreenBitmap(
        owner, static_cast<uint32_t>(width), static_cast<uint32_t>(height), true));
    if (!picture) throw ErrNoMemory;
    return picture;
}

std::unique_ptr<ColorBox> MakeGreyBox(HWND owner, int32_t x, int32_t y, int32_t side, uint8_t grey,
                                      int32_t line) {
    std::unique_ptr<ColorBox> box(new (std::nothrow) ColorBox(
        owner, x, y, side, side, kFlatColorBox, grey, grey, grey, line));
    if (!box) throw ErrNoMemory;
    return box;
}

ColorBox::ColorBox(HWND owner, int32_t x, int32_t y, int32_t width, int32_t height, int32_t kind,
                   uint8_t red, uint8_t green, uint8_t blue, int32_t line)
    : Control(owner, x, y, width, height),
      bitmap(MakeControlPicture(owner, width, height)),
      kind(kind),
      line(line) {
    if (kind == kFramedColorBox) bitmap->PaintInsetFrame(static_cast<uint32_t>(line));
    SetColor(red, green, blue);
}

void ColorBox::SetColor(uint8_t newRed, uint8_t newGreen, uint8_t newBlue) {
    red = newRed;
    green = newGreen;
    blue = newBlue;
    PaintBoxColor(bitmap->bits, bitmap->width, bitmap->height, kind, red, green, blue,
                  static_cast<uint32_t>(line));
    Draw();
}

void ColorBox::GetColor(uint8_t& outRed, uint8_t& outGreen, uint8_t& outBlue) const {
    outRed = red;
    outGreen = green;
    outBlue = blue;
}

void ColorBox::Draw() {
    bitmap->Blit(x, y, 0, 0, width, height);
}

}  // namespace tessellum
