// The band-by-band run: which rectangle is asked of the host and how a band is filled.
// Plain computation on the host's record, free of any platform call.
#pragma once

#include "host/filter_parameters.h"
#include "host/plugin_records.h"

namespace tessellum {

// Requests the first band, one tile high, across the filter rectangle. Gives false
// (nothing requested beyond inRect) when the image has fewer than three planes.
bool SetFirstPass(FilterRecord& record, const FilterParameters& parameters);

// Reports progress, then writes the band in hand from the stored tile.
void FillPass(FilterRecord& record, const FilterParameters& parameters);

// Moves both rectangles one tile down; gives true while rows remain.
bool AdvancePass(FilterRecord& record, const FilterParameters& parameters);

// Empty input and output rectangles: the host's sign that there is nothing to fetch.
void EmptyRectangles(FilterRecord& record);

// One Continue: abort test, fill, advance. Gives the selector's result.
int16_t ContinueRun(FilterRecord& record, const FilterParameters& parameters);

}  // namespace tessellum
