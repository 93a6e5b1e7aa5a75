// The plug-in's one export: the host calls it once per selector of the filter protocol.
#include <cstdint>
#include <new>

#include "host/filter_globals.h"
#include "host/plugin_handle.h"
#include "storage/error_code.h"

namespace tessellum {
namespace {

void RunSelector(int16_t selector, FilterGlobals& globals) {
    switch (selector) {
        case kSelectorAbout: DoAbout(globals); break;
        case kSelectorParameters: DoParameters(globals); break;
        case kSelectorPrepare: DoPrepare(globals); break;
        case kSelectorStart: DoStart(globals); break;
        case kSelectorContinue: DoContinue(globals); break;
        case kSelectorFinish: break;
        default: globals.result = kResultBadParameters; break;
    }
}

// Nothing may cross into the host: a failure that no lower handler caught becomes a
// result the host understands.
void RunSelectorGuarded(int16_t selector, FilterGlobals& globals) {
    try {
        RunSelector(selector, globals);
    } catch (ErrorCode code) {
        globals.result = code == ErrNoMemory ? kResultMemFull : kResultStop;
    } catch (const std::bad_alloc&) {
        globals.result = kResultMemFull;
    } catch (...) {
        globals.result = kResultStop;
    }
}

}  // namespace
}  // namespace tessellum

extern "C" __declspec(dllexport) void __cdecl ENTRYPOINT(int16_t selector, void* parameterBlock,
                                                         intptr_t* data, int16_t* result) {
    using namespace tessellum;
    if (!result) return;
    // A host always passes both; without them there is nothing we can safely do.
    if (!data || !parameterBlock) {
        *result = kResultBadParameters;
        return;
    }
    // The slot is made before the selector is looked at, so About and unknown
    // selectors create it too.
    if (*data == 0) {
        PluginHandle* handle = NewPluginHandle(sizeof(FilterGlobals));
        if (!handle) {
            *result = kResultMemFull;
            return;
        }
        *data = reinterpret_cast<intptr_t>(handle);
    }
    FilterGlobals* stored = HandleBlock<FilterGlobals>(reinterpret_cast<void*>(*data));
    FilterGlobals globals = *stored;
    globals.filterRecord = static_cast<FilterRecord*>(parameterBlock);
    globals.result = kResultOk;
    RunSelectorGuarded(selector, globals);
    *result = globals.result;
    *stored = globals;
}
