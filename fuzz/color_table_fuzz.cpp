// Hostile colour tables. Whatever the bytes, a read either refuses a file shorter than
// 768 bytes with ErrBadData, with nothing left allocated or open, or gives a palette of
// 256 colours that holds exactly the first 768 bytes.
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>

#include "fuzz/fuzz_files.h"
#include "storage/color_table.h"

using tessellum::ErrorCode;
using tessellum::kColorTableBytes;
using tessellum::Palette;
using tessellum::fuzz::LowestFreeDescriptor;
using tessellum::fuzz::Require;
using tessellum::fuzz::WorkDirectory;
using tessellum::fuzz::WriteFile;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const int descriptor = LowestFreeDescriptor();
    const std::string input = WorkDirectory() + "/input.act";
    WriteFile(input, data, size);

    std::unique_ptr<Palette> palette;
    ErrorCode code = 0;
    try {
        palette.reset(tessellum::ReadColorTable(input.c_str()));
    } catch (ErrorCode thrown) {
        code = thrown;
    }
    Require(LowestFreeDescriptor() == descriptor, "a colour table was left open");
    if (size < kColorTableBytes) {
        Require(code == tessellum::ErrBadData, "a short table was not refused as bad data");
        return 0;
    }
    Require(code == 0, "a table of 768 bytes or more was refused");
    Require(palette->Count() == 256 && std::memcmp(palette->Colors(), data, kColorTableBytes) == 0,
            "a palette differs from the first 768 bytes of its file");
    return 0;
}
