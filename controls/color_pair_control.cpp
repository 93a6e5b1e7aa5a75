#include "controls/color_pair_control.h"

#include <commdlg.h>

#include <cstdio>
#include <new>

#include "controls/dpi_scale.h"
#include "resources/resource_ids.h"
#include "storage/error_code.h"

namespace tessellum {

ColorPairControl::ColorPairControl(HWND owner, HINSTANCE instance, int32_t x, int32_t y,
                                   int32_t size, int32_t boxSize, int32_t smallBoxSize, int32_t dpi)
    : Control(owner, x, y, size, size), keyPath{}, instance(instance), line(LineWidth(dpi)) {
    // The arrow's picture is 10 by 10; where it lies does not depend on its size.
    const int32_t swap = ArtSize(10, dpi);
    const ColorPairParts parts =
        LayoutColorPair(x, y, size, boxSize, smallBoxSize, swap, swap, dpi);
    backBox = MakeGreyBox(owner, parts.backBox.left, parts.backBox.top, boxSize, 255, line);
    foreBox = MakeGreyBox(owner, parts.foreBox.left, parts.foreBox.top, boxSize, 0, line);
    miniBackBox =
        MakeGreyBox(owner, parts.miniBackBox.left, parts.miniBackBox.top, smallBoxSize, 255, line);
    miniForeBox =
        MakeGreyBox(owner, parts.miniForeBox.left, parts.miniForeBox.top, smallBoxSize, 0, line);
    swapButton.reset(new (std::nothrow) ImageButton(owner, parts.swapButton.left,
                                                    parts.swapButton.top, instance, IDB_SWAP, dpi));
    if (!swapButton) throw ErrNoMemory;
}

void ColorPairControl::LoadCustomColors(COLORREF (&colors)[kCustomColorCount]) {
    tessellum::LoadCustomColors(registryKey, colors);
}

void ColorPairControl::SaveCustomColors(const COLORREF (&colors)[kCustomColorCount]) {
    tessellum::SaveCustomColors(registryKey, colors);
}

bool ColorPairControl::PickColor(uint8_t& red, uint8_t& green, uint8_t& blue) {
    COLORREF custom[kCustomColorCount];
    LoadCustomColors(custom);
    CHOOSECOLORA choose = {};
    choose.lStructSize = sizeof choose;
    // From the tab page up past the tab control to the dialog.
    choose.hwndOwner = GetParent(GetParent(owner));
    choose.hInstance = reinterpret_cast<HWND>(instance);
    choose.rgbResult = RGB(red, green, blue);
    choose.lpCustColors = custom;
    choose.Flags = CC_RGBINIT;
    // Some systems report a dialog that could not be made as -1: only OK counts.
    if (ChooseColorA(&choose) <= 0) return false;
    red = GetRValue(choose.rgbResult);
    green = GetGValue(choose.rgbResult);
    blue = GetBValue(choose.rgbResult);
    SaveCustomColors(custom);
    return true;
}

bool ColorPairControl::PickColorAlternate(uint8_t&, uint8_t&, uint8_t&) {
    return false;
}

void ColorPairControl::SetRegistryKey(const char* product, const char* version) {
    std::snprintf(keyPath, sizeof keyPath, "Software\\Quarry\\%s\\%s", product, version);
    registryKey.SetPath(keyPath);
}

void ColorPairControl::Draw() {
    HDC dc = GetDC(owner);
    if (!dc) return;
    // Four one-pixel lines on rows y and y + S and columns x and x + S; the corner
    // (x + S, y + S) is left out. At another DPI each line is `line` pixels wide, filled
    // black by the brush as well as the pen.
    HPEN pen = CreatePen(PS_SOLID, 1, RGB(0, 0, 0));
    HGDIOBJ oldPen = SelectObject(dc, pen);
    HGDIOBJ oldBrush = SelectObject(dc, GetStockObject(BLACK_BRUSH));
    const int32_t s = width;
    const int32_t t = line;
    Rectangle(dc, x, y, x + s, y + t);
    Rectangle(dc, x, y + s, x + s, y + s + t);
    Rectangle(dc, x, y, x + t, y + s);
    Rectangle(dc, x + s, y, x + s + t, y + s);
    SelectObject(dc, oldBrush);
    SelectObject(dc, oldPen);
    DeleteObject(pen);
    ReleaseDC(owner, dc);
    backBox->Draw();
    foreBox->Draw();
    miniBackBox->Draw();
    miniForeBox->Draw();
    swapButton->Draw();
}

bool ColorPairControl::HandleClick(int32_t pointX, int32_t pointY) {
    const ColorPairParts parts = {backBox->Bounds(), foreBox->Bounds(), miniBackBox->Bounds(),
                                  miniForeBox->Bounds(), swapButton->Bounds()};
    switch (FindColorPairRegion(parts, pointX, pointY)) {
        case ColorPairRegion::kReset: ResetColorPair(*foreBox, *backBox); return true;
        case ColorPairRegion::kSwap: SwapColorPair(*foreBox, *backBox); return true;
        case ColorPairRegion::kForeBox: return PickInto(true);
        case ColorPairRegion::kBackBox: return PickInto(false);
        case ColorPairRegion::kNone: break;
    }
    return false;
}

bool ColorPairControl::PickInto(bool fore) {
    const bool controlHeld = (GetAsyncKeyState(VK_CONTROL) & 0x8000) != 0;
    uint8_t red, green, blue;
    (fore ? foreBox : backBox)->GetColor(red, green, blue);
    const bool chosen =
        controlHeld ? PickColorAlternate(red, green, blue) : PickColor(red, green, blue);
    if (!chosen) return false;
    if (fore) {
        SetFore(red, green, blue);
    } else {
        SetBack(red, green, blue);
    }
    return true;
}

void ColorPairControl::GetFore(uint8_t& red, uint8_t& green, uint8_t& blue) const {
    foreBox->GetColor(red, green, blue);
}

void ColorPairControl::GetBack(uint8_t& red, uint8_t& green, uint8_t& blue) const {
    backBox->GetColor(red, green, blue);
}

void ColorPairControl::SetFore(uint8_t red, uint8_t green, uint8_t blue) {
    foreBox->SetColor(red, green, blue);
    Draw();
}

void ColorPairControl::SetBack(uint8_t red, uint8_t green, uint8_t blue) {
    backBox->SetColor(red, green, blue);
    Draw();
}

}  // namespace tessellum
