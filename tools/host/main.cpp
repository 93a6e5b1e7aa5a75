// tessellum-host: runs any filter plug-in on a PNG image, as a paint program would.
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

#include "tools/host/filter_host.h"
#include "tools/host/host_window.h"
#include "tools/host/image.h"
#include "tools/host/parameters_file.h"
#include "tools/host/pe_file.h"
#include "tools/host/version_info.h"

using namespace tessellum;
using namespace tessellum::host;

namespace {

const char kUsage[] =
    R"(Usage: tessellum-host [options] PLUGIN.8bf INPUT.png OUTPUT.png
       tessellum-host --about PLUGIN.8bf
       tessellum-host --info PLUGIN.8bf

Runs a filter plug-in (.8bf) on a PNG image as a paint program does: it finds the
plug-in's entry point through its PiPL, calls it selector by selector (Parameters,
Prepare, Start, Continue until the plug-in stops asking for bands, Finish), hands it
the planes it asks for, and writes the result as a PNG. The x86 build of this host
runs 32-bit plug-ins, the x64 build 64-bit ones.

Options:
  --rect T,L,B,R       the filter rectangle in pixels: top, left, bottom, right, with
                       bottom and right exclusive (default: the whole image)
  --foreground R,G,B   the foreground colour, 0 to 255 each (default 0,0,0)
  --background R,G,B   the background colour, 0 to 255 each (default 255,255,255)
  --params FILE        keep the plug-in's parameters in FILE between runs: read before
                       the run if FILE exists, written after it
  --repeat             repeat the last filter: skip Parameters, as a paint program's
                       "repeat filter" does, so the stored parameters are used as they are
  --abort-at N         the abort test answers yes at the N-th Continue (1 is the first)
  --planes N           give the plug-in N planes: 1 grey, 2 grey and alpha, 3 RGB,
                       4 RGBA (default: the planes of the PNG)
  --row-padding N      put N guard bytes after every row of the band buffers and check
                       that the plug-in leaves them alone
  --trace              print every selector call with its result and rectangles, and
                       every progress report
  --show               keep the window open on the result (on the image as it was, if
                       the run wrote none) until it is closed
  --about              show the plug-in's About box
  --info               print what the plug-in's PiPL and version resource say, and stop
  --help               print this text

Exit status:
  0  the run ended with result 0 and OUTPUT was written
  1  the plug-in stopped the run or reported an error; OUTPUT is not written, as a
     paint program keeps the image as it was
  2  a problem with the command line or with a file
  3  the plug-in broke the protocol (wrote outside its band, asked for pixels
     outside the image, never finished)
)";

struct UsageError {
    std::string text;
};

long ParseNumber(const std::string& text, long low, long high, const std::string& what) {
    char* end = nullptr;
    const long value = std::strtol(text.c_str(), &end, 10);
    if (text.empty() || *end != '\0' || value < low || value > high) {
        throw UsageError{what + " must be a whole number from " + std::to_string(low) + " to " +
                         std::to_string(high) + ", not \"" + text + "\""};
    }
    return value;
}

std::vector<long> ParseList(const std::string& text, size_t count, long low, long high,
                            const std::string& what) {
    std::vector<long> values;
    size_t start = 0;
    for (;;) {
        const size_t comma = text.find(',', start);
        values.push_back(ParseNumber(text.substr(start, comma - start), low, high, what));
        if (comma == std::string::npos) break;
        start = comma + 1;
    }
    if (values.size() != count) {
        throw UsageError{what + " takes " + std::to_string(count) +
                         " numbers separated by commas, not \"" + text + "\""};
    }
    return values;
}

RGBColor ParseColor(const std::string& text, const std::string& what) {
    const std::vector<long> c = ParseList(text, 3, 0, 255, what);
    auto wide = [](long v) { return static_cast<uint16_t>(v * 257); };  // 8 to 16 bits
    return {wide(c[0]), wide(c[1]), wide(c[2])};
}

const char* SelectorName(int16_t selector) {
    static const char* const names[] = {"About", "Parameters", "Prepare",
                                        "Start", "Continue",   "Finish"};
    return selector >= 0 && selector <= 5 ? names[selector] : "?";
}

void PrintTrace(const RunReport& report) {
    for (const SelectorCall& call : report.calls) {
        std::printf("%-10s result %-6d in %d,%d,%d,%d out %d,%d,%d,%d planes %d..%d\n",
                    SelectorName(call.selector), call.result, call.inRect.top, call.inRect.left,
                    call.inRect.bottom, call.inRect.right, call.outRect.top, call.outRect.left,
                    call.outRect.bottom, call.outRect.right, call.outLoPlane, call.outHiPlane);
    }
    for (const auto& p : report.progress) std::printf("progress %d of %d\n", p.first, p.second);
    std::printf("abort tests: %d\n", report.abortTests);
}

struct Arguments {
    RunOptions run;
    std::string params;
    int planes = 0;
    bool trace = false, about = false, info = false, show = false;
    std::vector<std::string> files;
};

Arguments Parse(int argc, char** argv) {
    Arguments a;
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        auto value = [&]() -> std::string {
            if (i + 1 >= argc) throw UsageError{arg + " needs a value"};
            return argv[++i];
        };
        if (arg == "--help" || arg == "-h") {
            std::fputs(kUsage, stdout);
            std::exit(0);
        } else if (arg == "--rect") {
            const std::vector<long> r = ParseList(value(), 4, 0, 30000, "--rect");
            a.run.area = Rect{static_cast<int16_t>(r[0]), static_cast<int16_t>(r[1]),
                              static_cast<int16_t>(r[2]), static_cast<int16_t>(r[3])};
        } else if (arg == "--foreground") {
            a.run.foreground = ParseColor(value(), arg);
        } else if (arg == "--background") {
            a.run.background = ParseColor(value(), arg);
        } else if (arg == "--params") {
            a.params = value();
        } else if (arg == "--repeat") {
            a.run.repeat = true;
        } else if (arg == "--abort-at") {
            a.run.abortAtContinue = static_cast<int>(ParseNumber(value(), 1, 1 << 30, arg));
        } else if (arg == "--planes") {
            a.planes = static_cast<int>(ParseNumber(value(), 1, 4, arg));
        } else if (arg == "--row-padding") {
            a.run.rowPadding = static_cast<int>(ParseNumber(value(), 0, 4096, arg));
        } else if (arg == "--trace") {
            a.trace = true;
        } else if (arg == "--show") {
            a.show = true;
        } else if (arg == "--about") {
            a.about = true;
        } else if (arg == "--info") {
            a.info = true;
        } else if (arg.size() > 1 && arg[0] == '-') {
            throw UsageError{"unknown option " + arg};
        } else {
            a.files.push_back(arg);
        }
    }
    const size_t wanted = a.about || a.info ? 1 : 3;
    if (a.files.size() != wanted) {
        throw UsageError{a.about || a.info ? "name one plug-in"
                                           : "name a plug-in, an input PNG and an output PNG"};
    }
    if (a.run.repeat && a.params.empty())
        throw UsageError{"--repeat needs --params: there is nothing to repeat without them"};
    return a;
}

// The version Windows shows in the file's properties, if the file has one.
void PrintVersion(const std::string& path) {
    try {
        const std::optional<VersionInfo> version = ReadVersionInfo(PeFile::Read(path));
        if (!version) return;
        auto text = [&](const char* name) {
            const auto found = version->strings.find(name);
            return found == version->strings.end() ? std::string() : found->second;
        };
        std::printf("version:     %s (%s)\n", text("ProductVersion").c_str(),
                    text("FileDescription").c_str());
    } catch (const PeError& e) {
        std::printf("version:     unreadable (%s)\n", e.what());
    }
}

bool Exists(const std::string& path) {
    FILE* f = std::fopen(path.c_str(), "rb");
    if (f) std::fclose(f);
    return f != nullptr;
}

// The file's name without its folder, as a paint program titles its window.
std::string BaseName(const std::string& path) {
    const size_t slash = path.find_last_of("/\\");
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

// After the run: the parameters kept, the outcome told, the result written. Gives the
// exit status.
int Conclude(const Arguments& a, const FilterSession& session, const RunReport& report,
             const Image& image) {
    std::string error;
    // The host keeps the parameters whatever the outcome, as a paint program does.
    if (!a.params.empty() && session.parametersHandle()) {
        if (!WriteParametersFile(a.params, session.ParametersBlock(), error)) {
            std::fprintf(stderr, "tessellum-host: %s\n", error.c_str());
            return 2;
        }
    }
    if (!report.hostFault.empty()) {
        std::fprintf(stderr, "tessellum-host: %s\n", report.hostFault.c_str());
        return 3;
    }
    std::printf("result %s\n", DescribeResult(report.result).c_str());
    if (report.result != 0) {
        std::printf("%s not written: the image stays as it was\n", a.files[2].c_str());
        return 1;
    }
    if (!SavePng(a.files[2], image, error)) {
        std::fprintf(stderr, "tessellum-host: %s\n", error.c_str());
        return 2;
    }
    std::printf("wrote %s (%d x %d, %d planes)\n", a.files[2].c_str(), image.width, image.height,
                image.planes);
    return 0;
}

int Run(const Arguments& a) {
    PluginLibrary plugin(a.files[0]);
    if (a.info) {
        std::printf("filter:      %s\ncategory:    %s\nentry point: %s\n",
                    plugin.pipl().Name().c_str(), plugin.pipl().Category().c_str(),
                    plugin.entryName().c_str());
        PrintVersion(a.files[0]);
        return 0;
    }
    FilterSession session(plugin);
    if (a.about) {
        const int16_t result = session.About(MakeHostWindow("tessellum-host - " + a.files[0]));
        std::printf("About: result %s\n", DescribeResult(result).c_str());
        return result == 0 ? 0 : 1;
    }
    Image image;
    std::string error;
    if (!LoadPng(a.files[1], a.planes, image, error)) {
        std::fprintf(stderr, "tessellum-host: %s\n", error.c_str());
        return 2;
    }
    if (!a.params.empty() && Exists(a.params)) {
        std::vector<uint8_t> block;
        if (!ReadParametersFile(a.params, block, error)) {
            std::fprintf(stderr, "tessellum-host: %s\n", error.c_str());
            return 2;
        }
        session.SetParametersBlock(block);
    } else if (a.run.repeat) {
        std::fprintf(stderr, "tessellum-host: %s does not exist: there is no filter to repeat\n",
                     a.params.c_str());
        return 2;
    }
    // The paint program's window, showing the image: the parent of the plug-in's dialogs.
    RunOptions options = a.run;
    options.parent = MakeHostWindow("tessellum-host - " + BaseName(a.files[1]), image, a.run.area);
    const RunReport report = session.Run(image, options);
    if (a.trace) PrintTrace(report);
    const int status = Conclude(a, session, report, image);
    if (a.show) {
        // The result; a run that wrote none leaves the image shown as it was.
        if (status == 0) {
            ShowImage(options.parent, image);
            SetWindowTextA(options.parent, ("tessellum-host - " + BaseName(a.files[2])).c_str());
        }
        ShowUntilClosed(options.parent);
    }
    DestroyWindow(options.parent);
    return status;
}

}  // namespace

int main(int argc, char** argv) {
    MakeProcessDpiAware();
    try {
        return Run(Parse(argc, argv));
    } catch (const UsageError& e) {
        std::fprintf(stderr, "tessellum-host: %s\nTry tessellum-host --help.\n", e.text.c_str());
    } catch (const HostError& e) {
        std::fprintf(stderr, "tessellum-host: %s\n", e.what());
    } catch (const std::exception& e) {
        std::fprintf(stderr, "tessellum-host: %s\n", e.what());
    }
    return 2;
}
