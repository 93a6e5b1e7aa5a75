// The foreground and background colours of the Pattern Fill tab: two large overlapping
// boxes, the black-on-white reset sign, the swap arrow, and the system colour dialog
// whose 16 custom colours are kept in the user's settings.
//
// The program's one class with virtual operations; their slot order is part of its
// shape: LoadCustomColors, SaveCustomColors, PickColor, PickColorAlternate.
#pragma once

#include <windows.h>

#include <memory>

#include "controls/color_box.h"
#include "controls/color_pair_layout.h"
#include "controls/control.h"
#include "controls/image_button.h"
#include "storage/custom_colors.h"
#include "storage/registry_key.h"

namespace tessellum {

class ColorPairControl final : public Control {
public:
    // A square of side `size` at x, y; builds the back box, the fore box, the small back
    // and fore boxes and the swap arrow, in that order, each shown at once. Throws
    // ErrNoMemory.
    // Sizes are pixels at `dpi`, for which the offsets, lines and the arrow are made.
    ColorPairControl(HWND owner, HINSTANCE instance, int32_t x, int32_t y, int32_t size,
                     int32_t boxSize, int32_t smallBoxSize, int32_t dpi = 96);
    ColorPairControl(const ColorPairControl&) = delete;
    ColorPairControl& operator=(const ColorPairControl&) = delete;

    virtual void LoadCustomColors(COLORREF (&colors)[kCustomColorCount]);
    virtual void SaveCustomColors(const COLORREF (&colors)[kCustomColorCount]);
    // The system colour dialog, started on the colour given; true, with the colour
    // chosen, when the user pressed OK. Only then are the custom colours kept.
    virtual bool PickColor(uint8_t& red, uint8_t& green, uint8_t& blue);
    // Picking with the Control key held: there is no other picker, so nothing happens.
    virtual bool PickColorAlternate(uint8_t& red, uint8_t& green, uint8_t& blue);

    // The key "Software\Quarry\<product>\<version>" under the user's settings.
    void SetRegistryKey(const char* product, const char* version);

    void Draw();  // the black square outline, then the boxes and the arrow

    // True if a colour changed: the reset sign, the swap arrow, or a large box whose
    // colour was picked.
    bool HandleClick(int32_t pointX, int32_t pointY);

    void GetFore(uint8_t& red, uint8_t& green, uint8_t& blue) const;
    void GetBack(uint8_t& red, uint8_t& green, uint8_t& blue) const;
    void SetFore(uint8_t red, uint8_t green, uint8_t blue);  // and draws the whole control
    void SetBack(uint8_t red, uint8_t green, uint8_t blue);

    std::unique_ptr<ColorBox> foreBox;
    std::unique_ptr<ColorBox> backBox;
    std::unique_ptr<ColorBox> miniForeBox;
    std::unique_ptr<ColorBox> miniBackBox;
    std::unique_ptr<ImageButton> swapButton;
    RegistryKey registryKey;
    char keyPath[RegistryKey::kPathSize];
    HINSTANCE instance;
    int32_t line = 1;  // the outline's width

private:
    bool PickInto(bool fore);  // the pick for one of the large boxes
};

}  // namespace tessellum
