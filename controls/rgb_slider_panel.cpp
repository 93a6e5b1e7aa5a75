#include "controls/rgb_slider_panel.h"

#include <new>

#include "controls/small_bitmap_table.h"
#include "storage/error_code.h"

namespace tessellum {
namespace {

// The grey behind the small pictures, under which the read-outs stand on the backdrop.
constexpr COLORREF kTextBackColor = 0xC0C0C0;

std::unique_ptr<OffscreenBitmap> MakeBottomUpBitmap(HWND owner, uint32_t width, uint32_t height) {
    std::unique_ptr<OffscreenBitmap> bitmap(new (std::nothrow)
                                                OffscreenBitmap(owner, width, height, false));
    if (!bitmap) throw ErrNoMemory;
    return bitmap;
}

}  // namespace

RgbSliderPanel::RgbSliderPanel(HWND owner, int32_t barHeight)
    : RgbSliderLogic(barHeight), owner(owner) {
    for (auto& bar : bars) {
        bar = MakeBottomUpBitmap(owner, kSliderBarWidth, static_cast<uint32_t>(barHeight));
        bar->Fill(0, 0, 0);  // only the border keeps this black
    }
    Start();
}

RgbSliderPanel::~RgbSliderPanel() {
    if (font) DeleteObject(font);
}

void RgbSliderPanel::SetDpi(int32_t value) {
    ApplyDpi(value);
    for (auto& bar : bars) {
        bar->Resize(static_cast<uint32_t>(SliderBarWidth(dpi)), barHeight);
        bar->Fill(0, 0, 0);
    }
    for (int32_t row = 0; row < kRowCount; ++row) RefillBar(row);
    if (font) DeleteObject(font);
    font = nullptr;
    if (dpi == kBaseDpi) return;
    // The read-outs' bold face at the DPI: the size of the system font's letters (13
    // pixels at 96 DPI) in a face that every system scales smoothly.
    LOGFONTA face = {};
    face.lfHeight = -ScaleToDpi(13, dpi);
    face.lfWeight = FW_BOLD;
    face.lfCharSet = DEFAULT_CHARSET;
    face.lfQuality = DEFAULT_QUALITY;
    lstrcpynA(face.lfFaceName, "Tahoma", LF_FACESIZE);
    font = CreateFontIndirectA(&face);
}

void RgbSliderPanel::SetBackground(uint8_t red, uint8_t green, uint8_t blue, uint32_t width,
                                   uint32_t height) {
    background.reset();
    background = MakeBottomUpBitmap(owner, width, height);
    background->Fill(red, green, blue);
}

SliderBarPixels RgbSliderPanel::BarPixels(int row) {
    const OffscreenBitmap& bar = *bars[row];
    return {bar.bits, bar.width, bar.height};
}

void RgbSliderPanel::BlitBar(int row, int32_t destX, int32_t destY) {
    OffscreenBitmap& bar = *bars[row];
    bar.Blit(destX, destY, 0, 0, static_cast<int32_t>(bar.width), static_cast<int32_t>(bar.height));
}

void RgbSliderPanel::BlitBackground(int32_t destX, int32_t destY) {
    background->Blit(destX, destY, 0, 0, static_cast<int32_t>(background->width),
                     static_cast<int32_t>(background->height));
}

void RgbSliderPanel::DrawPicture(int32_t pictureX, int32_t pictureY, uint32_t id) {
    DrawSmallBitmap(owner, pictureX, pictureY, id);
}

bool RgbSliderPanel::BeginText() {
    textDC = GetDC(owner);
    if (!textDC) return false;
    backColorSet = background != nullptr;
    if (backColorSet) oldBackColor = SetBkColor(textDC, kTextBackColor);
    oldFont = font ? SelectObject(textDC, font) : nullptr;
    return true;
}

void RgbSliderPanel::Text(int32_t textX, int32_t textY, const char* text, int count) {
    TextOutA(textDC, textX, textY, text, count);
}

void RgbSliderPanel::EndText() {
    if (oldFont) SelectObject(textDC, oldFont);
    oldFont = nullptr;
    if (backColorSet) SetBkColor(textDC, oldBackColor);
    ReleaseDC(owner, textDC);
    textDC = nullptr;
    backColorSet = false;
}

void RgbSliderPanel::CaptureMouse() {
    SetCapture(owner);
}

void RgbSliderPanel::ReleaseMouse() {
    if (GetCapture() == owner) ReleaseCapture();
}

void RgbSliderPanel::StartRepeatTimer() {
    SetTimer(owner, kRepeatTimerId, kRepeatPeriod, nullptr);
}

void RgbSliderPanel::StopRepeatTimer() {
    KillTimer(owner, kRepeatTimerId);
}

}  // namespace tessellum
