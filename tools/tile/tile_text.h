// A tile written as readable text, turned into the plug-in's stored parameters block:
//
//   # comments and blank lines are ignored
//   grid 2
//   row 336699 6699CC
//   row 6699CC 336699
//
// `grid` gives the GridSize (2, 3, 4, 5, 6 or 8); then one `row` line per tile row, each
// with GridSize colours as six hexadecimal digits, red, green, blue.
#pragma once

#include <string>

#include "host/filter_parameters.h"

namespace tessellum {

// Fills `parameters` (flag down, so a repeat uses the tile at once). On failure gives
// false and says where in `error`.
bool ParseTileText(const std::string& text, FilterParameters& parameters, std::string& error);

}  // namespace tessellum
