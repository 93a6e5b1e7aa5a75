// Our host of the filter plug-in interface: loads a .8bf as a paint program does and
// calls it selector by selector, keeping its data slot and parameters between runs.
#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "host/plugin_records.h"
#include "tools/host/image.h"
#include "tools/host/pipl.h"

namespace tessellum::host {

// A problem on the host's side (a file that is not a plug-in, a plug-in for the other
// architecture, a request outside the image); the text is meant for the user.
struct HostError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

using EntryPointProc = void(__cdecl*)(int16_t selector, void* parameterBlock, intptr_t* data,
                                      int16_t* result);

class PluginLibrary {
public:
    // Checks the file's architecture and PiPL, then loads it. Throws HostError.
    explicit PluginLibrary(const std::string& path);
    ~PluginLibrary();
    PluginLibrary(const PluginLibrary&) = delete;
    PluginLibrary& operator=(const PluginLibrary&) = delete;

    HMODULE module() const { return module_; }
    EntryPointProc entry() const { return entry_; }
    const Pipl& pipl() const { return pipl_; }
    const std::string& entryName() const { return entryName_; }

private:
    HMODULE module_ = nullptr;
    EntryPointProc entry_ = nullptr;
    Pipl pipl_;
    std::string entryName_;
};

struct RunOptions {
    bool repeat = false;       // skip Parameters, as a paint program's "repeat filter" does
    std::optional<Rect> area;  // the filter rectangle; the whole image if absent
    RGBColor foreground{0, 0, 0};
    RGBColor background{0xFFFF, 0xFFFF, 0xFFFF};
    int abortAtContinue = 0;  // the abort test says yes at this Continue (1 = the first)
    int rowPadding = 0;       // guard bytes after each row of the band buffers
    HWND parent = nullptr;    // the dialog's parent window
};

struct SelectorCall {
    int16_t selector;
    int16_t result;
    Rect inRect;  // as the record stood after the call
    Rect outRect;
    int16_t outLoPlane;
    int16_t outHiPlane;
};

struct RunReport {
    std::vector<SelectorCall> calls;
    std::vector<std::pair<int32_t, int32_t>> progress;  // (done, total) as reported
    int abortTests = 0;
    int16_t result = 0;     // the first non-zero result, or 0
    bool filled = false;    // the run went on until the rectangles came back empty
    std::string hostFault;  // what the plug-in did wrong as the host saw it; empty if nothing
};

class FilterSession {
public:
    explicit FilterSession(const PluginLibrary& plugin) : plugin_(plugin) {}

    // One raw call of the entry point with this session's data slot.
    int16_t Call(int16_t selector, void* parameterBlock);
    // The About selector with a record that carries `parent`.
    int16_t About(HWND parent);
    // Parameters (unless repeating), Prepare, Start, Continue until the rectangles are
    // empty, Finish; the bands are written back into `image`.
    RunReport Run(Image& image, const RunOptions& options);

    // The record of the last run, as the plug-in left it.
    const FilterRecord& record() const { return record_; }
    intptr_t dataSlot() const { return data_; }
    void* parametersHandle() const { return parameters_; }

    // The parameters block read through the plug-in's handle; empty if there is none.
    // Throws HostError if the handle is not of the convention a host can read.
    std::vector<uint8_t> ParametersBlock() const;
    // Hands the plug-in a block stored by an earlier session, in a handle of its kind.
    void SetParametersBlock(const std::vector<uint8_t>& block);

private:
    friend struct Callbacks;
    int16_t CallRecorded(int16_t selector, RunReport& report);
    void Continue(Image& image, const RunOptions& options, RunReport& report);

    const PluginLibrary& plugin_;
    intptr_t data_ = 0;
    void* parameters_ = nullptr;
    FilterRecord record_ = {};
    PlatformData platform_ = {};
    RunReport* report_ = nullptr;
    int continueCount_ = 0;
    int abortAt_ = 0;
    std::vector<uint8_t> inBuffer_;
    std::vector<uint8_t> outBuffer_;
};

// What a result code means, in words.
std::string DescribeResult(int16_t result);

}  // namespace tessellum::host
