// The choosing logic of a row of three tool buttons of which exactly one is selected.
// `Button` is a control that can `HitTest`, `Toggle` between its two pictures and
// `Draw`; a shown second picture marks the selected tool.
#pragma once

#include <cstdint>
#include <memory>

#include "controls/mouse_point.h"

namespace tessellum {

template <class Button>
class ToolRow {
public:
    static constexpr uint32_t kToolCount = 3;

    uint32_t Selected() const { return selected; }

    // Moves the selection; the old and the new button each repaint as they toggle.
    void Select(uint32_t index) {
        if (index == selected || index >= kToolCount) return;
        buttons[selected]->Toggle();
        selected = index;
        buttons[selected]->Toggle();
    }

    void Draw() {
        for (auto& button : buttons) button->Draw();
    }

    // The first button hit takes the selection. A click on the selected button is still
    // a hit, and changes nothing.
    bool HandleClick(intptr_t lParam) {
        const MousePoint point = PointFromLParam(lParam);
        for (uint32_t i = 0; i < kToolCount; ++i) {
            if (buttons[i]->HitTest(point.x, point.y)) {
                Select(i);
                return true;
            }
        }
        return false;
    }

protected:
    std::unique_ptr<Button> buttons[kToolCount];
    uint32_t selected = 0;
};

}  // namespace tessellum
