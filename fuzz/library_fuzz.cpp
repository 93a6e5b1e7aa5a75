// Hostile library files. Whatever the bytes, a load either throws one of the codes of a
// refused file, with nothing left allocated and the file closed, or gives a library
// that saves and loads back unchanged and saves again to the same bytes.
#include <stdlib.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "storage/library_file.h"
#include "tests/support/library_samples.h"

namespace {

using tessellum::ColorLibrary;
using tessellum::ErrorCode;
using tessellum::LibraryFile;

// One private directory per run, in memory where the system has it.
const std::string& WorkDirectory() {
    static const std::string directory = [] {
        std::string pattern = (access("/dev/shm", W_OK) == 0 ? "/dev/shm" : "/tmp");
        pattern += "/tessellum-fuzz-XXXXXX";
        if (mkdtemp(&pattern[0]) == nullptr) abort();
        return pattern;
    }();
    return directory;
}

void WriteFile(const std::string& path, const uint8_t* data, size_t size) {
    FILE* out = fopen(path.c_str(), "wb");
    if (out == nullptr || fwrite(data, 1, size, out) != size || fclose(out) != 0) abort();
}

std::vector<uint8_t> ReadFile(const std::string& path) {
    std::vector<uint8_t> bytes;
    FILE* in = fopen(path.c_str(), "rb");
    if (in == nullptr) abort();
    for (int c; (c = fgetc(in)) != EOF;) bytes.push_back(static_cast<uint8_t>(c));
    fclose(in);
    return bytes;
}

void Require(bool condition, const char* what) {
    if (!condition) {
        fprintf(stderr, "library fuzz: %s\n", what);
        abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string input = WorkDirectory() + "/input.dat";
    const std::string saved = WorkDirectory() + "/Tessellum.dat";
    WriteFile(input, data, size);

    LibraryFile file;
    std::unique_ptr<ColorLibrary> library;
    try {
        library.reset(file.ReadLibrary(input.c_str()));
    } catch (ErrorCode code) {
        Require(!file.IsOpen(), "a refused file was left open");
        Require(code == tessellum::ErrEndOfFile || code == tessellum::ErrBadData ||
                    code == tessellum::ErrBadMagic,
                "a refused file gave a code that no content can cause");
        return 0;
    }
    Require(!file.IsOpen(), "a loaded file was left open");

    LibraryFile writer;
    writer.WriteLibrary(library.get(), saved.c_str());
    const std::vector<uint8_t> first = ReadFile(saved);
    std::unique_ptr<ColorLibrary> back(writer.ReadLibrary(saved.c_str()));
    Require(tessellum::test::CompareLibraries(*library, *back).empty(),
            "a save and a load changed the library");
    writer.WriteLibrary(back.get(), saved.c_str());
    Require(ReadFile(saved) == first, "a second save gave other bytes");
    Require(first.size() >= 11 && first.back() == tessellum::kTagEnd, "a save is not closed");
    return 0;
}
