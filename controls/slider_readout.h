// The text beside a slider: its letter and its value in decimal and hexadecimal, padded
// with blanks so that each one wipes a longer value printed before it.
#pragma once

#include <cstdint>

namespace tessellum {

struct SliderReadout {
    char decimal[6];  // 5 characters: the value, then blanks
    char label[4];    // 3 characters: letter, colon, blank
    char hex[4];      // 3 characters: two upper-case digits, blank
};

SliderReadout FormatReadout(uint8_t value, char letter);

}  // namespace tessellum
