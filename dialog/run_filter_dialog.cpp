// The dialog step of Start: the host's window and colours in, the chosen tile out.
#include <cstring>
#include <memory>

#include "color/allocate.h"
#include "controls/thread_dpi.h"
#include "dialog/filter_dialog.h"
#include "host/filter_globals.h"
#include "host/filter_parameters.h"
#include "host/plugin_handle.h"

namespace tessellum {

void RunFilterDialog(FilterGlobals& globals) {
    FilterRecord& record = *globals.filterRecord;
    HWND parent = record.platformData ? static_cast<HWND>(record.platformData->hwnd) : nullptr;
    // The dialog, its prompts, message boxes and the common dialogs all open within this
    // scope, at the display's own scale; the host's context comes back when it ends.
    const ThreadDpiScope scale;
    // Teardown (which saves the library) runs however the run ends, after the copy.
    std::unique_ptr<FilterDialog> dialog(NewOrThrow<FilterDialog>(parent));
    // The host's colours are 16 bits a channel; the dialog takes the high byte.
    dialog->SetHostForeColor(record.foreground.red >> 8, record.foreground.green >> 8,
                             record.foreground.blue >> 8);
    dialog->SetHostBackColor(record.background.red >> 8, record.background.green >> 8,
                             record.background.blue >> 8);
    if (!dialog->RunModal()) {
        globals.result = kResultStop;
        return;
    }
    auto* parameters = HandleBlock<FilterParameters>(record.parameters);
    std::memcpy(&parameters->tile, dialog->ResultPattern(), sizeof(Pattern));
    parameters->gridSize = dialog->ResultGridSize();
}

}  // namespace tessellum
