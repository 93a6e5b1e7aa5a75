#include "tools/host/filter_host.h"

#include <cstring>

#include "host/plugin_handle.h"
#include "tools/host/pe_file.h"

namespace tessellum::host {
namespace {

constexpr uint16_t kOwnMachine = sizeof(void*) == 8 ? kMachineAmd64 : kMachineI386;
constexpr uint8_t kGuardByte = 0xA5;

bool IsEmpty(const Rect& r) {
    return r.top >= r.bottom || r.left >= r.right;
}

std::string WindowsMessage(DWORD code) {
    char text[512] = "";
    FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code, 0,
                   text, sizeof text, nullptr);
    std::string message = text;
    while (!message.empty() && (message.back() == '\n' || message.back() == '\r'))
        message.pop_back();
    return "Windows error " + std::to_string(code) + (message.empty() ? "" : ": " + message);
}

std::string DescribeRect(const Rect& r) {
    return "rows " + std::to_string(r.top) + ".." + std::to_string(r.bottom) + ", columns " +
           std::to_string(r.left) + ".." + std::to_string(r.right);
}

// Copies planes lo .. lo + count - 1 of a rectangle of the image, interleaved, into
// rows `rowBytes` apart, or (toImage) back again. Whole rows at once when the planes
// asked for are all the image has, as a band of an RGB image is.
void CopyPlanes(Image& image, const Rect& r, int lo, int count, uint8_t* buffer, size_t rowBytes,
                bool toImage) {
    const size_t width = static_cast<size_t>(r.right - r.left);
    for (int y = r.top; y < r.bottom; ++y) {
        uint8_t* row = buffer + (y - r.top) * rowBytes;
        uint8_t* pixel = image.At(r.left, y) + lo;
        if (count == image.planes) {
            toImage ? std::memcpy(pixel, row, width * count)
                    : std::memcpy(row, pixel, width * count);
            continue;
        }
        for (size_t x = 0; x < width; ++x, row += count, pixel += image.planes)
            for (int p = 0; p < count; ++p) toImage ? pixel[p] = row[p] : row[p] = pixel[p];
    }
}

// The abort test and progress report have no context argument; the session now
// running is the one they speak to. The host has one thread.
FilterSession* activeSession = nullptr;

}  // namespace

struct Callbacks {
    static uint8_t __cdecl TestAbort() {
        FilterSession* s = activeSession;
        if (!s || !s->report_) return 0;
        ++s->report_->abortTests;
        return s->abortAt_ > 0 && s->continueCount_ >= s->abortAt_;
    }
    static void __cdecl Progress(int32_t done, int32_t total) {
        FilterSession* s = activeSession;
        if (s && s->report_) s->report_->progress.emplace_back(done, total);
    }
};

PluginLibrary::PluginLibrary(const std::string& path) {
    PeFile pe;
    try {
        pe = PeFile::Read(path);
    } catch (const PeError& e) {
        throw HostError(path + ": " + e.what());
    }
    if (!pe.isDll) throw HostError(path + " is a program, not a plug-in");
    if (pe.machine != kOwnMachine) {
        throw HostError(path + " is a " + MachineName(pe.machine) + " plug-in and this host is " +
                        MachineName(kOwnMachine) + ": run it with the " + MachineName(pe.machine) +
                        " build of this host");
    }
    const PeResource* resource = nullptr;
    for (const PeResource& r : pe.resources) {
        if (r.type == "PIPL") {
            resource = &r;
            break;
        }
    }
    if (!resource) throw HostError(path + " has no PiPL resource: it is not a filter plug-in");
    try {
        pipl_ = Pipl::Parse(resource->data);
    } catch (const PeError& e) {
        throw HostError(path + ": damaged PiPL: " + e.what());
    }
    if (!pipl_.IsFilter()) throw HostError(path + " is a plug-in, but not a filter");
    entryName_ = pipl_.EntryPoint(NativeCodeKey());
    if (entryName_.empty()) {
        throw HostError(path + " names no entry point for " + MachineName(kOwnMachine) +
                        " Windows in its PiPL");
    }
    char full[MAX_PATH];
    const DWORD length = GetFullPathNameA(path.c_str(), MAX_PATH, full, nullptr);
    if (length == 0 || length >= MAX_PATH) throw HostError(path + ": the path is too long");
    module_ = LoadLibraryExA(full, nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    if (!module_) throw HostError("cannot load " + path + ": " + WindowsMessage(GetLastError()));
    entry_ = reinterpret_cast<EntryPointProc>(
        reinterpret_cast<void*>(GetProcAddress(module_, entryName_.c_str())));
    if (!entry_) {
        FreeLibrary(module_);
        throw HostError(path + " does not export " + entryName_ + ", which its PiPL names");
    }
}

PluginLibrary::~PluginLibrary() {
    FreeLibrary(module_);
}

int16_t FilterSession::Call(int16_t selector, void* parameterBlock) {
    int16_t result = 0;
    plugin_.entry()(selector, parameterBlock, &data_, &result);
    return result;
}

int16_t FilterSession::About(HWND parent) {
    PlatformData platform = {parent};
    AboutRecord about = {};
    about.platformData = &platform;
    return Call(kSelectorAbout, &about);
}

int16_t FilterSession::CallRecorded(int16_t selector, RunReport& report) {
    const int16_t result = Call(selector, &record_);
    parameters_ = record_.parameters;
    report.calls.push_back({selector, result, record_.inRect, record_.outRect, record_.outLoPlane,
                            record_.outHiPlane});
    if (result != 0 && report.result == 0) report.result = result;
    return result;
}

RunReport FilterSession::Run(Image& image, const RunOptions& options) {
    const Rect whole = {0, 0, static_cast<int16_t>(image.height),
                        static_cast<int16_t>(image.width)};
    const Rect area = options.area.value_or(whole);
    if (area.top < 0 || area.left < 0 || area.bottom > image.height || area.right > image.width ||
        IsEmpty(area)) {
        throw HostError("the filter rectangle (" + DescribeRect(area) + ") is not inside the " +
                        std::to_string(image.width) + " x " + std::to_string(image.height) +
                        " image");
    }
    RunReport report;
    record_ = FilterRecord{};
    platform_.hwnd = options.parent;
    record_.abortProc = &Callbacks::TestAbort;
    record_.progressProc = &Callbacks::Progress;
    record_.parameters = parameters_;
    record_.imageSize = {static_cast<int16_t>(image.height), static_cast<int16_t>(image.width)};
    record_.planes = static_cast<int16_t>(image.planes);
    record_.filterRect = area;
    record_.foreground = options.foreground;
    record_.background = options.background;
    record_.maxSpace = 64 << 20;
    record_.platformData = &platform_;

    activeSession = this;
    report_ = &report;
    continueCount_ = 0;
    abortAt_ = options.abortAtContinue;
    auto call = [&](int16_t selector) { return CallRecorded(selector, report); };
    if ((options.repeat || call(kSelectorParameters) == 0) && call(kSelectorPrepare) == 0 &&
        call(kSelectorStart) == 0) {
        Continue(image, options, report);
        call(kSelectorFinish);  // after a successful Start, also when a Continue failed
    }
    report_ = nullptr;
    activeSession = nullptr;
    return report;
}

void FilterSession::Continue(Image& image, const RunOptions& options, RunReport& report) {
    // Each band a plug-in asks for brings in or out at least one sample of the image, so a
    // plug-in that asks for more bands than twice its samples never ends: it is stopped at
    // once instead of running on until someone kills the host.
    const int64_t maxContinues = 2 * int64_t{image.width} * image.height * image.planes + 1;
    for (int64_t count = 0;; ++count) {
        const Rect in = record_.inRect;
        const Rect out = record_.outRect;
        if (IsEmpty(in) && IsEmpty(out)) {
            report.filled = true;
            return;
        }
        if (count == maxContinues) {
            report.hostFault = "the plug-in never stopped asking for bands (" +
                               std::to_string(count) + " so far, the last " +
                               DescribeRect(IsEmpty(in) ? out : in) + ")";
            return;
        }
        auto outside = [&](const Rect& r, int lo, int hi) {
            return !IsEmpty(r) &&
                   (r.top < 0 || r.left < 0 || r.bottom > image.height || r.right > image.width ||
                    lo < 0 || hi < lo || hi >= image.planes);
        };
        if (outside(in, record_.inLoPlane, record_.inHiPlane) ||
            outside(out, record_.outLoPlane, record_.outHiPlane)) {
            report.hostFault = "the plug-in asked for pixels outside the image (" +
                               DescribeRect(IsEmpty(in) ? out : in) + ")";
            return;
        }
        // Input: a copy of the requested planes, interleaved.
        record_.inData = nullptr;
        if (!IsEmpty(in)) {
            const int planes = record_.inHiPlane - record_.inLoPlane + 1;
            const int rowBytes = planes * (in.right - in.left);
            inBuffer_.resize(static_cast<size_t>(rowBytes) * (in.bottom - in.top));
            CopyPlanes(image, in, record_.inLoPlane, planes, inBuffer_.data(), rowBytes, false);
            record_.inData = inBuffer_.data();
            record_.inRowBytes = rowBytes;
        }
        // Output: straight into the image when the planes requested are all of its planes
        // and no guard is asked for; otherwise a copy with guard bytes after every row.
        const int outPlanes = record_.outHiPlane - record_.outLoPlane + 1;
        const bool direct = !IsEmpty(out) && outPlanes == image.planes && options.rowPadding == 0;
        const int outRowBytes = outPlanes * (out.right - out.left) + options.rowPadding;
        record_.outData = nullptr;
        if (direct) {
            record_.outData = image.At(out.left, out.top);
            record_.outRowBytes = image.width * image.planes;
        } else if (!IsEmpty(out)) {
            outBuffer_.assign(static_cast<size_t>(outRowBytes) * (out.bottom - out.top),
                              kGuardByte);
            CopyPlanes(image, out, record_.outLoPlane, outPlanes, outBuffer_.data(), outRowBytes,
                       false);
            record_.outData = outBuffer_.data();
            record_.outRowBytes = outRowBytes;
        }
        ++continueCount_;
        const int16_t lo = record_.outLoPlane;
        const int16_t result = CallRecorded(kSelectorContinue, report);
        if (!direct && !IsEmpty(out)) {
            for (int y = out.top; y < out.bottom; ++y) {
                const uint8_t* row = &outBuffer_[(y - out.top) * static_cast<size_t>(outRowBytes)];
                for (int p = outPlanes * (out.right - out.left); p < outRowBytes; ++p) {
                    if (row[p] != kGuardByte && report.hostFault.empty())
                        report.hostFault = "the plug-in wrote past the end of row " +
                                           std::to_string(y) + " of its band";
                }
            }
            CopyPlanes(image, out, lo, outPlanes, outBuffer_.data(), outRowBytes, true);
        }
        if (result != 0 || !report.hostFault.empty()) return;
    }
}

std::vector<uint8_t> FilterSession::ParametersBlock() const {
    if (!parameters_) return {};
    const auto* handle = static_cast<const PluginHandle*>(parameters_);
    if (std::memcmp(handle->signature, kHandleSignature, sizeof kHandleSignature) != 0)
        throw HostError("the plug-in's parameters handle is not of a kind this host can read");
    HGLOBAL memory = GlobalHandle(handle->block);
    const SIZE_T size = memory ? GlobalSize(memory) : 0;
    if (size == 0) throw HostError("the plug-in's parameters block has no size this host can read");
    const auto* bytes = static_cast<const uint8_t*>(handle->block);
    return {bytes, bytes + size};
}

void FilterSession::SetParametersBlock(const std::vector<uint8_t>& block) {
    auto lockedBlock = [](SIZE_T size) -> void* {
        HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, size);
        return memory ? GlobalLock(memory) : nullptr;
    };
    auto* handle = static_cast<PluginHandle*>(lockedBlock(sizeof(PluginHandle)));
    void* data = lockedBlock(block.size());
    if (!handle || !data) throw HostError("out of memory for the stored parameters");
    std::memcpy(data, block.data(), block.size());
    handle->block = data;
    std::memcpy(handle->signature, kHandleSignature, sizeof kHandleSignature);
    parameters_ = handle;
}

std::string DescribeResult(int16_t result) {
    switch (result) {
        case 0: return "0 (done)";
        case 1: return "1 (the plug-in stopped the run: cancelled, aborted, or nothing it can do)";
        case -108: return "-108 (memFullErr: the plug-in ran out of memory)";
        case -128: return "-128 (userCanceledErr: cancelled)";
        case -30100: return "-30100 (filterBadParameters: the plug-in refused the call)";
        default: return std::to_string(result) + " (an error code this host does not know)";
    }
}

}  // namespace tessellum::host
