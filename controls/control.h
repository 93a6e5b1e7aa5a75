// The base of the self-drawn controls. A control is no child window: it is a rectangle
// in its owner's client area that the page's dialog procedure hands mouse coordinates
// to and tells when to paint.
#pragma once

#include <cstdint>

#include "controls/window_handle.h"

namespace tessellum {

// Laid out as the platform's RECT, so it can be handed to the drawing calls as it is.
struct ControlBounds {
    int32_t left;
    int32_t top;
    int32_t right;
    int32_t bottom;
};

// Inside when left <= x < right and top <= y < bottom: the left and top edges belong to
// the rectangle, the right and bottom ones do not.
constexpr bool BoundsContain(const ControlBounds& bounds, int32_t x, int32_t y) {
    return x >= bounds.left && x < bounds.right && y >= bounds.top && y < bounds.bottom;
}

class Control {
public:
    Control(WindowHandle owner, int32_t x, int32_t y, int32_t width, int32_t height)
        : owner(owner), x(x), y(y), width(width), height(height), bounds{} {}

    WindowHandle Owner() const { return owner; }
    int32_t X() const { return x; }
    int32_t Y() const { return y; }
    int32_t Width() const { return width; }
    int32_t Height() const { return height; }
    void SetWidth(int32_t value) { width = value; }
    void SetHeight(int32_t value) { height = value; }

    // Worked out afresh on every call from the position and size.
    ControlBounds& Bounds() {
        bounds = {x, y, x + width, y + height};
        return bounds;
    }

    bool HitTest(int32_t pointX, int32_t pointY) { return BoundsContain(Bounds(), pointX, pointY); }

    // Paints the control's rectangle in the grey of the dialog face, taking it off the
    // page. Draws through the owner's device context, so it exists on Windows only.
    void Erase();

protected:
    WindowHandle owner;
    int32_t x;
    int32_t y;
    int32_t width;
    int32_t height;
    ControlBounds bounds;
};

}  // namespace tessellum
