// Values typed or pasted on the Color Picker tab. A click on a row's decimal or hex
// read-out opens a small edit field over it; a click on the "Hex" column head opens one
// for the whole colour. Enter applies the field and closes it; Tab applies it and opens
// the next row's field in the same column (Shift+Tab the row before; in the whole
// colour's field Tab is Enter); Escape closes it changing nothing. A click elsewhere in
// the dialog applies it; the focus leaving the dialog closes it unapplied. Ctrl+V on the
// tab with no field open sets the colour from the clipboard's text. Every value goes
// through the panel's setters and then, if one changed, SlidersChanged, as a drag's
// does; and only while the sliders work (never in the Convert state).
#pragma once

#include <windows.h>

#include <cstdint>

namespace tessellum {

// Opens the field over the read-out at (x, y) of the page, if one is there and the
// sliders work: true when the click was taken.
bool OpenValueFieldAt(HWND page, int32_t x, int32_t y);

// A click elsewhere on the page: an open field applies its value and closes.
void CloseValueFieldForClick();

// From the page's creation to its end, the dialog's keys and clicks are watched: Ctrl+V
// pastes a colour, a click outside an open field closes it.
void WatchColorPickerPage(HWND page);
void StopWatchingColorPickerPage();

}  // namespace tessellum
