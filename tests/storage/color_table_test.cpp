// The colour table reader and the file name part of a path. Built natively and for
// Windows.
#include "storage/color_table.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "tests/support/error_code_of.h"
#include "tests/support/scratch_directory.h"

namespace tessellum {
namespace {

using Bytes = std::vector<uint8_t>;

TEST(ColorTable, TheFirst768BytesOrNothing) {
    test::ScratchDirectory dir;
    const std::string path = dir.Path("sunset.act");
    Bytes bytes(772);
    for (size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<uint8_t>(i * 5 + i / 256);

    EXPECT_EQ(test::CodeOf([&] { ReadColorTable(path.c_str()); }), ErrGeneral);  // missing
    for (size_t size : {0, 1, 767}) {
        test::WriteWholeFile(path, Bytes(bytes.begin(), bytes.begin() + size));
        EXPECT_EQ(test::CodeOf([&] { ReadColorTable(path.c_str()); }), ErrBadData) << size;
    }
    for (size_t size : {768, 772}) {
        test::WriteWholeFile(path, Bytes(bytes.begin(), bytes.begin() + size));
        const std::unique_ptr<Palette> palette(ReadColorTable(path.c_str()));
        ASSERT_EQ(palette->Count(), 256u);
        EXPECT_EQ(Bytes(palette->Colors(), palette->Colors() + 768),
                  Bytes(bytes.begin(), bytes.begin() + 768))
            << size;
    }
}

TEST(ColorTable, FileNamePart) {
    const struct {
        const char* path;
        const char* part;
    } cases[] = {
        {"C:\\dir\\sunset.act", "sunset.act"},
        {"D:sunset.act", "sunset.act"},
        {"sunset.act", "sunset.act"},
        {"a\\b:c", "c"},
        {"C:\\dir\\", ""},
        {"dir/sub/sunset.act", "dir/sub/sunset.act"},
        {"", ""},
    };
    for (const auto& test : cases) {
        const char* part = FileNamePart(test.path);
        EXPECT_STREQ(part, test.part) << test.path;
        EXPECT_EQ(part, test.path + std::strlen(test.path) - std::strlen(test.part));  // a tail
    }
}

}  // namespace
}  // namespace tessellum
