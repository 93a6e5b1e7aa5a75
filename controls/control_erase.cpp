// The one drawing call of the control base that goes through a device context.
#include <windows.h>

#include <type_traits>

#include "controls/control.h"

namespace tessellum {

static_assert(std::is_same_v<WindowHandle, HWND>, "WindowHandle must be the platform's HWND");
static_assert(sizeof(ControlBounds) == sizeof(RECT) && offsetof(RECT, right) == 8,
              "ControlBounds is laid out as RECT");

void Control::Erase() {
    HDC dc = GetDC(owner);
    if (!dc) return;
    constexpr COLORREF kDialogFace = 0xC0C0C0;
    HPEN pen = CreatePen(PS_SOLID, 1, kDialogFace);
    HBRUSH brush = CreateSolidBrush(kDialogFace);
    HGDIOBJ oldPen = SelectObject(dc, pen);
    HGDIOBJ oldBrush = SelectObject(dc, brush);
    const ControlBounds& area = Bounds();
    Rectangle(dc, area.left, area.top, area.right, area.bottom);
    SelectObject(dc, oldPen);
    SelectObject(dc, oldBrush);
    DeleteObject(pen);
    DeleteObject(brush);
    ReleaseDC(owner, dc);
}

}  // namespace tessellum
