// The plug-in's pictures written as readable text, one character a pixel:
//
//   // comments and blank lines are ignored
//   bitmap 11 6              width and height: a 4-bit bitmap
//   cursor 32 32 12 21       width, height and hot spot x, y: a monochrome cursor
//   selected NAME            (bitmaps only) also make NAME: the picture with black and
//                            white exchanged inside its black one-pixel frame
//   -----#-----              then one line per row:
//   ----#.#----                #  black
//   ...                        .  white
//                              -  the background: grey 192 in a bitmap,
//                                 the screen (transparent) in a cursor
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tessellum::art {

enum class ArtPixel : uint8_t { Black, White, Background };

struct ArtPicture {
    bool cursor = false;
    int width = 0;
    int height = 0;
    int hotX = 0;  // cursors only
    int hotY = 0;
    std::string selectedName;      // bitmaps only; empty for none
    std::vector<ArtPixel> pixels;  // row after row, top row first

    ArtPixel At(int x, int y) const { return pixels[static_cast<size_t>(y) * width + x]; }
};

// Reads the text. On failure gives false and says where in `error`.
bool ParseArtText(const std::string& text, ArtPicture& picture, std::string& error);

// The selected form: black and white exchanged inside the one-pixel frame, the frame
// black, so it merges into the black field. The picture must have a black frame.
ArtPicture SelectedForm(const ArtPicture& picture);

// The picture for a display of `dpi` (96 is the picture itself): each side scaled as the
// controls scale their pixel sizes (controls/dpi_scale.h), each pixel of the result the
// nearest one of the picture, never a mix, so the lines stay sharp; at 192 and 288 DPI
// every pixel becomes a square of 2 or 3. A cursor's hot spot moves to the first pixel
// drawn from the pixel it was on.
ArtPicture ScaledArt(const ArtPicture& picture, int dpi);

}  // namespace tessellum::art
