#include "controls/fore_back_box.h"

namespace tessellum {

ForeBackBox::ForeBackBox(HWND owner, int32_t x, int32_t y, int32_t size, int32_t boxSize,
                         int32_t line)
    : Control(owner, x, y, size, size) {
    backBox = MakeGreyBox(owner, x + size - boxSize, y + size - boxSize, boxSize, 255, line);
    frontBox = MakeGreyBox(owner, x, y, boxSize, 0, line);
}

void ForeBackBox::Draw() {
    backBox->Draw();
    frontBox->Draw();
}

bool ForeBackBox::HandleClick(int32_t pointX, int32_t pointY) {
    if (frontBox->HitTest(pointX, pointY)) {
        frontActive = 1;
        return true;
    }
    if (backBox->HitTest(pointX, pointY)) {
        frontActive = 0;
        return true;
    }
    return false;
}

void ForeBackBox::GetFront(uint8_t& red, uint8_t& green, uint8_t& blue) const {
    frontBox->GetColor(red, green, blue);
}

void ForeBackBox::GetBack(uint8_t& red, uint8_t& green, uint8_t& blue) const {
    backBox->GetColor(red, green, blue);
}

void ForeBackBox::SetFront(uint8_t red, uint8_t green, uint8_t blue) {
    frontBox->SetColor(red, green, blue);
    Draw();
}

void ForeBackBox::SetBack(uint8_t red, uint8_t green, uint8_t blue) {
    backBox->SetColor(red, green, blue);
    Draw();
}

}  // namespace tessellum
