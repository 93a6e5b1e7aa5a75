// Hostile library files. Whatever the bytes, a load either throws one of the codes of a
// refused file, with nothing left allocated and the file closed, or gives a library
// that saves and loads back unchanged and saves again to the same bytes.
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "fuzz/fuzz_files.h"
#include "storage/library_file.h"
#include "tests/support/library_samples.h"

using tessellum::ColorLibrary;
using tessellum::ErrorCode;
using tessellum::LibraryFile;
using tessellum::fuzz::LowestFreeDescriptor;
using tessellum::fuzz::ReadFile;
using tessellum::fuzz::Require;
using tessellum::fuzz::WorkDirectory;
using tessellum::fuzz::WriteFile;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const int descriptor = LowestFreeDescriptor();
    const std::string input = WorkDirectory() + "/input.dat";
    const std::string saved = WorkDirectory() + "/Tessellum.dat";
    WriteFile(input, data, size);

    LibraryFile file;
    std::unique_ptr<ColorLibrary> library;
    try {
        library.reset(file.ReadLibrary(input.c_str()));
    } catch (ErrorCode code) {
        Require(!file.IsOpen() && LowestFreeDescriptor() == descriptor,
                "a refused file was left open");
        Require(code == tessellum::ErrEndOfFile || code == tessellum::ErrBadData ||
                    code == tessellum::ErrBadMagic,
                "a refused file gave a code that no content can cause");
        return 0;
    }
    Require(!file.IsOpen() && LowestFreeDescriptor() == descriptor, "a loaded file was left open");

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
