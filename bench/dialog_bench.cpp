// The main dialog's two costs a user feels, built from the plug-in's sources with its
// resources taken from the built plug-in, under Wine on a (virtual) screen:
// - opening: from the construction of the dialog to its first complete paint of the
//   Color Picker tab, with a library of 100 lists of 100 colours and 20 palettes, as a
//   ratio to opening it with no library;
// - one slider step (the slider moved, then SlidersChanged: the tile, the main preview,
//   the picker previews) in microseconds, each part on its own, beside one Blit of a
//   bitmap the size of the page.
// - both again at the display's scale against 96 DPI, in the same run: the thread made
//   unaware of the scale opens the dialog at 96 DPI, made aware of it at the display's
//   (scripts/bench.sh runs this in a prefix at 192 DPI).
// The dialog counts as painted when the modal loop first finds nothing left to do: it
// then tells its owner WM_ENTERIDLE, after every paint, posted repaint and erase.
// It uses the project's private Wine prefix: it points the library path there.
#include <windows.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <memory>
#include <string>

#include "bench/best_time.h"
#include "bench/program_folder.h"
#include "color/allocate.h"
#include "dialog/filter_dialog.h"
#include "host/dll_instance.h"
#include "storage/library_file.h"
#include "tests/support/library_samples.h"
#include "tools/host/host_window.h"

namespace tessellum {
HINSTANCE hDllInstance = nullptr;  // the plug-in's module, for its resources
}

namespace {

using namespace tessellum;
using Clock = std::chrono::steady_clock;
constexpr char kKey[] = "Software\\Quarry\\Tessellum\\1.x";
constexpr int kRounds = 5;
constexpr int kSteps = 200;

void SetValue(HKEY root, const char* name, DWORD type, const void* data, DWORD size) {
    HKEY key = nullptr;
    if (RegCreateKeyExA(root, kKey, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key, nullptr) !=
        ERROR_SUCCESS)
        return;
    RegSetValueExA(key, name, 0, type, static_cast<const BYTE*>(data), size);
    RegCloseKey(key);
}

// What the owner's WM_ENTERIDLE does on the dialog's first idle moment.
struct Measure {
    FilterDialog* dialog = nullptr;
    Clock::time_point start;
    double openSeconds = 0;
    double stepSeconds = 0;
    double blitSeconds = 0;
    double sliderSeconds = 0;
    double mainPreviewSeconds = 0;
    double pickerPreviewSeconds = 0;
    bool measureSteps = false;
    bool done = false;
    int dpi = 0;  // the DPI the dialog ran at
};
Measure* current = nullptr;
WNDPROC hostProcedure = nullptr;

// The best time of one `step(i)` over rounds of kSteps.
template <typename Step>
double PerStep(Step&& step) {
    return bench::BestSeconds(3,
                              [&] {
                                  for (int i = 0; i < kSteps; ++i) step(i);
                              }) /
           kSteps;
}

void MeasureSteps(Measure& m) {
    RgbSliderPanel& sliders = *m.dialog->Sliders();
    // Every step moves red on, so that no step repeats the one before.
    const auto red = [](int i) { return static_cast<uint8_t>(i * 7); };
    m.stepSeconds = PerStep([&](int i) {
        sliders.SetRed(red(i));
        m.dialog->SlidersChanged();
    });
    m.sliderSeconds = PerStep([&](int i) { sliders.SetRed(red(i + 1)); });
    m.mainPreviewSeconds = PerStep([&](int) { m.dialog->DrawMainPreview(); });
    m.pickerPreviewSeconds = PerStep([&](int) { m.dialog->DrawPickerPreview(); });
    HWND page = FindWindowExA(GetDlgItem(m.dialog->Window(), 1008), nullptr, nullptr, nullptr);
    for (; page && !GetDlgItem(page, 1030); page = GetWindow(page, GW_HWNDNEXT)) {
    }
    RECT client = {};
    GetClientRect(page, &client);
    OffscreenBitmap picture(page, client.right, client.bottom, true);
    picture.Fill(0xC0, 0xC0, 0xC0);
    m.blitSeconds = PerStep([&](int) { picture.Blit(0, 0, 0, 0, client.right, client.bottom); });
}

LRESULT CALLBACK HostProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_ENTERIDLE && wParam == MSGF_DIALOGBOX && current && !current->done) {
        Measure& m = *current;
        HWND dialogWindow = reinterpret_cast<HWND>(lParam);
        if (m.dialog->Ready() && IsWindowVisible(dialogWindow)) {
            m.openSeconds = std::chrono::duration<double>(Clock::now() - m.start).count();
            m.done = true;
            if (m.measureSteps) MeasureSteps(m);
            PostMessageA(dialogWindow, WM_COMMAND, IDCANCEL, 0);
        }
        return 0;
    }
    return CallWindowProcA(hostProcedure, window, message, wParam, lParam);
}

// One opening of the dialog; its first paint measured, then Cancel.
Measure OpenOnce(HWND host, bool measureSteps) {
    Measure m;
    m.measureSteps = measureSteps;
    current = &m;
    m.start = Clock::now();
    std::unique_ptr<FilterDialog> dialog(NewOrThrow<FilterDialog>(host));
    m.dialog = dialog.get();
    dialog->RunModal();
    m.dpi = dialog->Dpi();
    dialog.reset();  // the teardown saves the library: not part of the opening
    current = nullptr;
    return m;
}

double BestOpening(HWND host) {
    double best = 1e9;
    for (int i = 0; i < kRounds; ++i) best = std::min(best, OpenOnce(host, false).openSeconds);
    return best;
}

struct AtScale {
    int dpi = 0;
    double openSeconds = 0;
    double stepSeconds = 0;
};

// Opening (no library) and one slider step with the thread in `context`; the DPI the
// dialog ran at, read from its window.
AtScale MeasureIn(HWND host, DPI_AWARENESS_CONTEXT context) {
    const DPI_AWARENESS_CONTEXT before = SetThreadDpiAwarenessContext(context);
    AtScale figures;
    OpenOnce(host, false);  // the pictures and fonts of this scale loaded once
    figures.openSeconds = BestOpening(host);
    const Measure steps = OpenOnce(host, true);
    figures.dpi = steps.dpi;
    figures.stepSeconds = steps.stepSeconds;
    if (before) SetThreadDpiAwarenessContext(before);
    return figures;
}

}  // namespace

int main() {
    const std::string here = bench::FolderOfThisProgram();
    hDllInstance = LoadLibraryA((here + "..\\Tessellum.8bf").c_str());
    HWND host = host::MakeHostWindow("dialog bench");
    if (hDllInstance == nullptr || host == nullptr) {
        std::fprintf(stderr, "dialog_bench: the plug-in or the host window is missing\n");
        return 1;
    }
    hostProcedure = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrA(host, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(HostProcedure)));
    const BYTE expanded[5] = {1, 0, 0, 0, 0};
    SetValue(HKEY_CURRENT_USER, "Sizing", REG_BINARY, expanded, sizeof expanded);

    try {
        const std::string folder = here + "dialog-bench-library";
        CreateDirectoryA(folder.c_str(), nullptr);
        const std::string value = folder + "\\";
        const std::string file = folder + "\\Tessellum.dat";
        SetValue(HKEY_LOCAL_MACHINE, "path", REG_SZ, value.c_str(),
                 static_cast<DWORD>(value.size() + 1));

        DeleteFileA(file.c_str());
        OpenOnce(host, false);  // classes, resources and fonts loaded once before timing
        const double empty = BestOpening(host);
        const Measure step = OpenOnce(host, true);

        std::unique_ptr<ColorLibrary> library(test::MakeSampleLibrary(100, 100, 20));
        LibraryFile().WriteLibrary(library.get(), file.c_str());
        const double full = BestOpening(host);
        const double reading = bench::BestSeconds(kRounds, [&] {
            std::unique_ptr<ColorLibrary> read(LibraryFile().ReadLibrary(file.c_str()));
        });
        DeleteFileA(file.c_str());
        RemoveDirectoryA(folder.c_str());

        std::printf(
            "dialog opening: %.1f ms with 100 lists of 100 colours and 20 palettes, "
            "%.1f ms with no library; ratio %.2f (reading that library: %.1f ms)\n",
            full * 1e3, empty * 1e3, full / empty, reading * 1e3);
        std::printf(
            "slider step: %.0f us (the slider's own repaint %.0f us, then "
            "SlidersChanged: main preview %.0f us, picker previews %.0f us); one Blit of "
            "the page %.0f us; ratio %.2f\n",
            step.stepSeconds * 1e6, step.sliderSeconds * 1e6, step.mainPreviewSeconds * 1e6,
            step.pickerPreviewSeconds * 1e6, step.blitSeconds * 1e6,
            step.stepSeconds / step.blitSeconds);

        const AtScale base = MeasureIn(host, DPI_AWARENESS_CONTEXT_UNAWARE);
        const AtScale scaled = MeasureIn(host, DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE);
        std::printf(
            "at %d DPI against %d DPI: opening %.1f ms against %.1f ms, ratio %.2f; slider "
            "step %.0f us against %.0f us, ratio %.2f\n",
            scaled.dpi, base.dpi, scaled.openSeconds * 1e3, base.openSeconds * 1e3,
            scaled.openSeconds / base.openSeconds, scaled.stepSeconds * 1e6, base.stepSeconds * 1e6,
            scaled.stepSeconds / base.stepSeconds);
    } catch (ErrorCode code) {
        std::fprintf(stderr, "dialog_bench: error %d\n", static_cast<int>(code));
        return 1;
    }
    DestroyWindow(host);
    return 0;
}
