// How long the library file takes to read and to write: 100 lists of 100 colours and 20
// palettes of 256 colours, against one read and one write of the same number of bytes
// in the same run. Beside the totals it times the pieces: the format's own sequence of
// small system calls replayed bare, and the commit and rename that make a save safe.
// Targets: ReadLibrary at most 5 times one read; WriteLibrary at most 3 times one
// committed and renamed write. Optional argument: the directory to work in (default:
// the temp directory).
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "storage/library_file.h"

namespace {

using namespace tessellum;
using Clock = std::chrono::steady_clock;
constexpr int kRepeats = 7;

double Median(std::vector<double> times) {
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

template <typename Work>
double MedianSeconds(Work&& work) {
    std::vector<double> times;
    for (int i = 0; i < kRepeats; ++i) {
        const auto start = Clock::now();
        work();
        times.push_back(std::chrono::duration<double>(Clock::now() - start).count());
    }
    return Median(times);
}

ColorLibrary* MakeLibrary(std::vector<uint32_t>& calls) {
    auto* library = new ColorLibrary;
    calls.push_back(kLibraryMagicLength);
    char name[32];
    for (int l = 0; l < 100; ++l) {
        auto* list = new ColorList;
        std::snprintf(name, sizeof name, "List %d", l);
        CopyName(list->name, name);
        library->colorLists->Append(list);
        calls.insert(calls.end(), {1, 1, uint32_t(NameLength(list->name))});
        for (int c = 0; c < 100; ++c) {
            ColorEntry* entry = NewColorEntry();
            std::snprintf(name, sizeof name, "Colour %d", l * 100 + c);
            CopyName(entry->name, name);
            for (int i = 0; i < 64; ++i)
                entry->cells.cells[i] = {uint8_t(l), uint8_t(c), uint8_t(i)};
            list->entries.Append(entry);
            calls.insert(calls.end(), {1, 1, uint32_t(NameLength(entry->name)), 1, 192});
        }
    }
    for (int p = 0; p < 20; ++p) {
        auto* named = new NamedPalette;
        std::snprintf(name, sizeof name, "Palette %d", p);
        CopyName(named->name, name);
        named->palette.Resize(256);
        for (int i = 0; i < 768; ++i) named->palette.Colors()[i] = uint8_t(i * p);
        library->palettes->Append(named);
        calls.insert(calls.end(), {1, 1, uint32_t(NameLength(named->name)), 2, 768});
    }
    calls.push_back(1);
    return library;
}

void Check(bool ok, const char* what) {
    if (!ok) {
        std::perror(what);
        std::exit(1);
    }
}

}  // namespace

int main(int argc, char** argv) {
    const std::string dir =
        argc > 1 ? argv[1] : (std::getenv("TMPDIR") ? std::getenv("TMPDIR") : "/tmp");
    const std::string path = dir + "/tessellum-bench.dat";
    const std::string plain = dir + "/tessellum-bench.raw";
    std::vector<uint32_t> calls;
    std::unique_ptr<ColorLibrary> library(MakeLibrary(calls));
    LibraryFile file;

    const double libraryWrite =
        MedianSeconds([&] { file.WriteLibrary(library.get(), path.c_str()); });
    std::vector<uint8_t> bytes(1 << 24);
    const int fd0 = open(path.c_str(), O_RDONLY);
    const ssize_t size = read(fd0, bytes.data(), bytes.size());
    close(fd0);
    Check(size > 0, "read back");
    bytes.resize(size_t(size));

    const double libraryRead = MedianSeconds([&] { delete file.ReadLibrary(path.c_str()); });
    // The same in two halves, in runs of their own: the load, then deleting what it made.
    std::vector<double> loads, deletes;
    for (int i = 0; i < kRepeats; ++i) {
        const auto start = Clock::now();
        ColorLibrary* loaded = file.ReadLibrary(path.c_str());
        const auto loadedAt = Clock::now();
        delete loaded;
        loads.push_back(std::chrono::duration<double>(loadedAt - start).count());
        deletes.push_back(std::chrono::duration<double>(Clock::now() - loadedAt).count());
    }
    const double allocateAndFree = MedianSeconds([&] {
        std::vector<uint32_t> ignored;
        delete MakeLibrary(ignored);
    });

    const double rawWrite = MedianSeconds([&] {
        const int fd = open(plain.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
        Check(write(fd, bytes.data(), bytes.size()) == size, "write");
        close(fd);
    });
    const double rawRead = MedianSeconds([&] {
        const int fd = open(plain.c_str(), O_RDONLY);
        Check(read(fd, bytes.data(), bytes.size()) == size, "read");
        close(fd);
    });
    // The same bytes in the format's own call sizes, with nothing else around them.
    const double callsWrite = MedianSeconds([&] {
        const int fd = open(plain.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
        size_t at = 0;
        for (uint32_t n : calls) at += size_t(write(fd, bytes.data() + at, n));
        close(fd);
    });
    const double callsRead = MedianSeconds([&] {
        const int fd = open(plain.c_str(), O_RDONLY);
        size_t at = 0;
        for (uint32_t n : calls) at += size_t(read(fd, bytes.data() + at, n));
        close(fd);
    });
    // What the safe save adds to one write: commit to the disk, rename over the old file.
    const double committedWrite = MedianSeconds([&] {
        const std::string temp = plain + ".tmp";
        const int fd = open(temp.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
        Check(write(fd, bytes.data(), bytes.size()) == size, "write");
        fsync(fd);
        close(fd);
        rename(temp.c_str(), plain.c_str());
    });
    std::remove(path.c_str());
    std::remove(plain.c_str());

    std::printf("library of 100 lists x 100 colours and 20 palettes: %zd bytes, %zu calls, in %s\n",
                size, calls.size(), dir.c_str());
    std::printf("%-44s %10s %8s\n", "", "ms", "ratio");
    std::printf("%-44s %10.3f %8.2f\n", "one read of the same bytes (baseline)", rawRead * 1e3,
                1.0);
    std::printf("%-44s %10.3f %8.2f\n", "the format's read calls, bare", callsRead * 1e3,
                callsRead / rawRead);
    std::printf("%-44s %10.3f %8.2f  (target <= 5)\n", "ReadLibrary", libraryRead * 1e3,
                libraryRead / rawRead);
    std::printf("%-44s %10.3f %8.2f\n", "  the load alone", Median(loads) * 1e3,
                Median(loads) / rawRead);
    std::printf("%-44s %10.3f %8.2f\n", "  deleting what it loaded", Median(deletes) * 1e3,
                Median(deletes) / rawRead);
    std::printf("%-44s %10.3f %8.2f\n", "one write of the same bytes (baseline)", rawWrite * 1e3,
                1.0);
    std::printf("%-44s %10.3f %8.2f\n", "one write, committed and renamed", committedWrite * 1e3,
                committedWrite / rawWrite);
    std::printf("%-44s %10.3f %8.2f\n", "the format's write calls, bare", callsWrite * 1e3,
                callsWrite / rawWrite);
    std::printf("%-44s %10.3f %8.2f\n", "WriteLibrary", libraryWrite * 1e3,
                libraryWrite / rawWrite);
    std::printf("%-44s %10s %8.2f  (target <= 3)\n", "WriteLibrary against the committed write", "",
                libraryWrite / committedWrite);
    std::printf("%-44s %10.3f\n", "building and freeing the records alone", allocateAndFree * 1e3);
    return 0;
}
