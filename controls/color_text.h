// Colours and channel values written as text, as a designer types or pastes them into the
// slider panel: one channel in its read-out's column, or a whole colour as a style sheet
// writes it. Each form has two questions: is the text complete (the value it gives), and
// may a field hold it while it is being typed (else the keystroke is refused).
#pragma once

#include <cstdint>

#include "color/pattern.h"

namespace tessellum {

// One channel: 1 to 3 decimal digits up to 255, or (hex) 1 or 2 hexadecimal digits in
// either case. Nothing else, not even a blank.
bool ParseChannelText(const char* text, bool hex, uint8_t* value);

// What a channel's field may hold while typed: a complete value or nothing yet.
bool ChannelTextTypable(const char* text, bool hex);

// A whole colour, with blanks (and line ends) allowed around and between its parts:
//   #RRGGBB   RRGGBB   #RGB (each digit doubled)   rgb(r, g, b)   r, g, b
// Hexadecimal digits and "rgb" in either case; r, g, b are decimal, 0 to 255.
bool ParseColorText(const char* text, Rgb8* color);

// What the whole colour's field may hold while typed: a text that more typing at its end
// can still make a colour (the empty text among them).
bool ColorTextTypable(const char* text);

// What a field opens with: the channel as its column shows it ("7", "07"; `text` holds 4
// characters), or the whole colour as "#RRGGBB" (8).
void FormatChannelText(uint8_t value, bool hex, char* text);
void FormatColorText(const Rgb8& color, char* text);

}  // namespace tessellum
