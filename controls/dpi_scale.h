// Pixel sizes at the dialog's display scale. Every size and offset of the self-drawn
// controls is a number of pixels at 96 DPI; at another DPI it becomes that number times
// dpi / 96, rounded to the nearest pixel with halves away from zero (what MulDiv does),
// so 96 DPI gives every number back unchanged.
#pragma once

#include <cstdint>

namespace tessellum {

constexpr int32_t kBaseDpi = 96;

// A DPI the arithmetic can take: below 96 or absurdly high, the nearest sane one.
constexpr int32_t SaneDpi(int32_t dpi) {
    return dpi < kBaseDpi ? kBaseDpi : dpi > 16 * kBaseDpi ? 16 * kBaseDpi : dpi;
}

// `value` pixels at 96 DPI as pixels at `dpi`.
constexpr int32_t ScaleToDpi(int32_t value, int32_t dpi) {
    const int64_t product = int64_t{value} * SaneDpi(dpi);
    const int64_t half = kBaseDpi / 2;
    return static_cast<int32_t>(product >= 0 ? (product + half) / kBaseDpi
                                             : -((-product + half) / kBaseDpi));
}

// The way back: `value` pixels at `dpi` as pixels at 96 DPI, rounded the same way. What
// a mouse position means is worked out at 96 DPI, where the rules were made.
constexpr int32_t UnscaleFromDpi(int32_t value, int32_t dpi) {
    const int64_t product = int64_t{value} * kBaseDpi;
    const int64_t d = SaneDpi(dpi);
    return static_cast<int32_t>(product >= 0 ? (product + d / 2) / d : -((-product + d / 2) / d));
}

// The width of a line that is one pixel at 96 DPI: always whole pixels, 1 up to 143 DPI,
// 2 from 144 (150%), 3 from 240 (250%).
constexpr int32_t LineWidth(int32_t dpi) {
    return ScaleToDpi(1, dpi);
}

// The build draws each small picture and pointer at these DPIs, one step per 25% of
// scale from 100% to 300%; a DPI between steps takes the pictures of the step below,
// one above 300% those of 300%.
constexpr int32_t kArtDpiStep = 24;
constexpr int32_t kArtDpiSteps = 9;  // 96, 120, ... 288
constexpr int32_t ArtStepOf(int32_t dpi) {
    const int32_t step = (SaneDpi(dpi) - kBaseDpi) / kArtDpiStep;
    return step >= kArtDpiSteps ? kArtDpiSteps - 1 : step;
}
constexpr int32_t ArtDpi(int32_t dpi) {
    return kBaseDpi + ArtStepOf(dpi) * kArtDpiStep;
}
// The resource number of picture `id` as drawn for `dpi`: the 96-DPI one itself, the
// others 1000 apart.
constexpr uint32_t kArtIdStride = 1000;
constexpr uint32_t ArtResourceId(uint32_t id, int32_t dpi) {
    return id + static_cast<uint32_t>(ArtStepOf(dpi)) * kArtIdStride;
}
// A picture `size` pixels wide (or high) at 96 DPI, as drawn for `dpi`.
constexpr int32_t ArtSize(int32_t size, int32_t dpi) {
    return ScaleToDpi(size, ArtDpi(dpi));
}

}  // namespace tessellum
