#include "controls/split_color_box.h"

#include "controls/color_box.h"
#include "controls/color_box_painters.h"

namespace tessellum {

SplitColorBox::SplitColorBox(HWND owner, int32_t x, int32_t y, int32_t width, int32_t height,
                             uint8_t red, uint8_t green, uint8_t blue, int32_t line)
    : Control(owner, x, y, width, height),
      bitmap(MakeControlPicture(owner, width, height)),
      line(line) {
    SetColor(red, green, blue);
}

void SplitColorBox::SetColor(uint8_t newRed, uint8_t newGreen, uint8_t newBlue) {
    red = newRed;
    green = newGreen;
    blue = newBlue;
    if (split) {
        PaintSplitColor(bitmap->bits, bitmap->width, bitmap->height, red, green, blue,
                        static_cast<uint32_t>(line));
    } else {
        bitmap->FillInside(red, green, blue, static_cast<uint32_t>(line));
    }
    Draw();
}

void SplitColorBox::SetSplit(bool flag) {
    split = flag ? 1 : 0;
    SetColor(red, green, blue);
}

void SplitColorBox::Draw() {
    bitmap->Blit(x, y, 0, 0, width, height);
}

}  // namespace tessellum
