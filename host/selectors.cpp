// What the selectors Parameters, Prepare, Start and Continue do with the host's record.
#include "host/filter_globals.h"
#include "host/filter_parameters.h"
#include "host/filter_run.h"
#include "host/plugin_handle.h"

namespace tessellum {
namespace {

FilterParameters& ParametersOf(const FilterRecord& record) {
    return *HandleBlock<FilterParameters>(record.parameters);
}

}  // namespace

void DoParameters(FilterGlobals& globals) {
    FilterRecord& record = *globals.filterRecord;
    if (!record.parameters) {
        record.parameters = NewPluginHandle(sizeof(FilterParameters));
        if (!record.parameters) {
            globals.result = kResultMemFull;
            return;
        }
    }
    // An existing block keeps its tile and GridSize: only the flag changes.
    ParametersOf(record).queryForParameters = 1;
}

void DoPrepare(FilterGlobals& globals) {
    globals.filterRecord->bufferSpace = 0;  // no buffer of our own is ever needed
}

void DoStart(FilterGlobals& globals) {
    FilterRecord& record = *globals.filterRecord;
    // A host that skipped Parameters gets the dialog rather than a crash.
    if (!record.parameters) {
        DoParameters(globals);
        if (globals.result != kResultOk) return;
    }
    FilterParameters& parameters = ParametersOf(record);
    if (parameters.queryForParameters != 0) {
        RunFilterDialog(globals);
        if (globals.result != kResultOk) {
            // Cancelled or no dialog: nothing to fetch, and the flag stays up so that a
            // repeat of the filter asks again instead of filling.
            EmptyRectangles(record);
            return;
        }
        parameters.queryForParameters = 0;
    }
    if (!SetFirstPass(record, parameters)) globals.result = kResultStop;
}

void DoContinue(FilterGlobals& globals) {
    FilterRecord& record = *globals.filterRecord;
    if (!record.parameters) {  // Continue without a Start: there is no tile to lay
        EmptyRectangles(record);
        globals.result = kResultStop;
        return;
    }
    globals.result = ContinueRun(record, ParametersOf(record));
}

}  // namespace tessellum
