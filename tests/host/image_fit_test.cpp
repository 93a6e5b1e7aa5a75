// Our host's window: the image scaled to fit, and the filter rectangle on it.
#include "tools/host/image_fit.h"

#include <gtest/gtest.h>

namespace tessellum::host {
namespace {

void ExpectBox(const ScreenBox& box, int left, int top, int width, int height) {
    EXPECT_EQ(box.left, left);
    EXPECT_EQ(box.top, top);
    EXPECT_EQ(box.width, width);
    EXPECT_EQ(box.height, height);
}

TEST(ImageFit, KeepsProportionsCentredAndMapsTheRectangle) {
    ExpectBox(FitImage(640, 480, 320, 480), 0, 120, 320, 240);  // bars above and below
    ExpectBox(FitImage(640, 480, 900, 240), 290, 0, 320, 240);  // bars left and right
    ExpectBox(FitImage(8, 6, 640, 480), 0, 0, 640, 480);        // a small image grows
    ExpectBox(FitImage(30000, 1, 300, 300), 0, 149, 300, 1);    // never thinner than a pixel
    ExpectBox(FitImage(0, 6, 640, 480), 0, 0, 0, 0);
    const ScreenBox shown = FitImage(640, 480, 320, 480);
    ExpectBox(MapRect(shown, 640, 480, 60, 80, 420, 560), 40, 150, 240, 180);
    ExpectBox(MapRect(shown, 640, 480, 0, 0, 480, 640), 0, 120, 320, 240);
}

}  // namespace
}  // namespace tessellum::host
