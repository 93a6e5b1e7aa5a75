// Where our host's window shows the image: scaled to fit the window, keeping its
// proportions, centred; and where a rectangle of the image then stands on the screen.
// Portable arithmetic, so that it is tested natively.
#pragma once

#include <cstdint>

namespace tessellum::host {

struct ScreenBox {
    int left = 0, top = 0, width = 0, height = 0;
};

// The largest box of the image's proportions inside an area of the given size, centred
// in it. An empty image or area gives an empty box.
inline ScreenBox FitImage(int imageWidth, int imageHeight, int areaWidth, int areaHeight) {
    if (imageWidth <= 0 || imageHeight <= 0 || areaWidth <= 0 || areaHeight <= 0) return {};
    auto scale = [](int64_t value, int64_t by, int64_t over) {  // rounded, at least 1
        const int64_t scaled = (value * by + over / 2) / over;
        return static_cast<int>(scaled < 1 ? 1 : scaled);
    };
    int width = areaWidth, height = areaHeight;
    // The narrower of the two ratios decides; compared without division.
    if (int64_t{areaWidth} * imageHeight <= int64_t{areaHeight} * imageWidth)
        height = scale(imageHeight, areaWidth, imageWidth);
    else
        width = scale(imageWidth, areaHeight, imageHeight);
    return {(areaWidth - width) / 2, (areaHeight - height) / 2, width, height};
}

// The image rectangle top, left, bottom, right (bottom and right exclusive) as it stands
// in `shown`, the box the whole image is drawn into.
inline ScreenBox MapRect(const ScreenBox& shown, int imageWidth, int imageHeight, int top, int left,
                         int bottom, int right) {
    auto x = [&](int v) {
        return shown.left + static_cast<int>(int64_t{v} * shown.width / imageWidth);
    };
    auto y = [&](int v) {
        return shown.top + static_cast<int>(int64_t{v} * shown.height / imageHeight);
    };
    return {x(left), y(top), x(right) - x(left), y(bottom) - y(top)};
}

}  // namespace tessellum::host
