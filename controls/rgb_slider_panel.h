// The colour input of the Color Picker tab: three gradient bars for red, green and blue
// with thumbs, step arrows and read-outs. It has no window of its own: it paints into
// the tab page at once, and the page's dialog procedure hands it the mouse messages and,
// while it is enabled, the ticks of its repeat timer.
#pragma once

#include <windows.h>

#include <memory>

#include "controls/offscreen_bitmap.h"
#include "controls/rgb_slider_logic.h"

namespace tessellum {

class RgbSliderPanel : public RgbSliderLogic<RgbSliderPanel> {
public:
    // Builds the three bars, sets the values to 0 and leaves the panel disabled, waiting
    // for SetPosition, SetEnabled and SetBackground. Throws ErrNoMemory, keeping nothing.
    RgbSliderPanel(HWND owner, int32_t barHeight);
    ~RgbSliderPanel();
    RgbSliderPanel(const RgbSliderPanel&) = delete;
    RgbSliderPanel& operator=(const RgbSliderPanel&) = delete;

    // The bars, pictures' places and the font for that DPI; the values stay. The page
    // places the panel and gives it a backdrop for the DPI after. Throws ErrNoMemory.
    void SetDpi(int32_t value);

    // A new flat backdrop of that size and colour in place of the old one. Throws
    // ErrNoMemory, leaving no backdrop.
    void SetBackground(uint8_t red, uint8_t green, uint8_t blue, uint32_t width, uint32_t height);

private:
    friend class RgbSliderLogic<RgbSliderPanel>;

    SliderBarPixels BarPixels(int row);
    void BlitBar(int row, int32_t destX, int32_t destY);
    bool HasBackground() const { return background != nullptr; }
    void BlitBackground(int32_t destX, int32_t destY);
    void DrawPicture(int32_t pictureX, int32_t pictureY, uint32_t id);
    bool BeginText();
    void Text(int32_t textX, int32_t textY, const char* text, int count);
    void EndText();
    void CaptureMouse();
    void ReleaseMouse();
    void StartRepeatTimer();
    void StopRepeatTimer();

    HWND owner;
    std::unique_ptr<OffscreenBitmap> bars[kRowCount];
    std::unique_ptr<OffscreenBitmap> background;
    HDC textDC = nullptr;  // held from BeginText to EndText only
    COLORREF oldBackColor = 0;
    bool backColorSet = false;
    HFONT font = nullptr;  // made for a DPI other than 96; there the DC's own font serves
    HGDIOBJ oldFont = nullptr;
};

}  // namespace tessellum
