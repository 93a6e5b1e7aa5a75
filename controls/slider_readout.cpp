#include "controls/slider_readout.h"

#include <cstdio>
#include <cstring>

namespace tessellum {

SliderReadout FormatReadout(uint8_t value, char letter) {
    SliderReadout text = {};
    char line[16];
    std::snprintf(line, sizeof line, "%d       ", value);
    std::memcpy(text.decimal, line, 5);
    std::snprintf(line, sizeof line, "%c:  ", letter);
    std::memcpy(text.label, line, 3);
    static const char kDigits[] = "0123456789ABCDEF";
    text.hex[0] = kDigits[value >> 4];
    text.hex[1] = kDigits[value & 15];
    text.hex[2] = ' ';
    return text;
}

}  // namespace tessellum
