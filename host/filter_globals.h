// The block behind the plug-in's data slot, and the operations of the selectors.
#pragma once

#include <cstdint>

#include "host/plugin_records.h"

namespace tessellum {

struct FilterGlobals {
    int16_t result;              // outcome of the selector now running
    FilterRecord* filterRecord;  // the record of this call (the About record for About)
};

// Selector operations; each reports through globals.result.
void DoAbout(FilterGlobals& globals);
void DoParameters(FilterGlobals& globals);
void DoPrepare(FilterGlobals& globals);
void DoStart(FilterGlobals& globals);
void DoContinue(FilterGlobals& globals);

// The run's one call into the dialog. On Fill the new tile and GridSize stand in the
// parameters block and result is still 0; otherwise result is 1 and the block is as it was.
void RunFilterDialog(FilterGlobals& globals);

}  // namespace tessellum
