// The main dialog is not built yet: until it is, a run that must ask the user ends as
// a dialog that could not be made would (result 1, the flag stays up, nothing filled).
#include "host/filter_globals.h"

namespace tessellum {

void RunFilterDialog(FilterGlobals& globals) {
    globals.result = kResultStop;
}

}  // namespace tessellum
