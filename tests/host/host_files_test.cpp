// The files of our host and tools: the two built plug-ins read as files (what a host sees
// before it loads anything), the stored-parameters file, the tile text, the window's fit.
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <iterator>

#include "tools/host/image_fit.h"
#include "tools/host/parameters_file.h"
#include "tools/host/pe_file.h"
#include "tools/host/pipl.h"
#include "tools/host/version_info.h"
#include "tools/tile/tile_text.h"

namespace tessellum::host {
namespace {

using Bytes = std::vector<uint8_t>;

Bytes ReadBytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// The property list written out from its published layout, not from the resource script:
// version 1, six properties, each "MIB8", its key, id 0, the length and the data, all
// little-endian (so the codes read backwards). `code` is "68xw" (x86) or "4668" (x64).
Bytes ExpectedPipl(const std::string& code) {
    std::string list("\1\0\0\0\0\0\6\0\0\0", 10);
    auto property = [&](const std::string& key, const std::string& data) {
        list +=
            "MIB8" + key + std::string(4, '\0') + char(data.size()) + std::string(3, '\0') + data;
    };
    property("dnik", "MFB8");
    property("eman", "\x0BTessellum..");
    property("gtac", std::string("\x10Quarry Web Tools\0\0\0", 20));
    property("srev", std::string("\0\0\4\0", 4));
    property(code, std::string("ENTRYPOINT\0\0", 12));
    property("edom", std::string("\x10\0\0\0", 4));
    return Bytes(list.begin(), list.end());
}

TEST(PluginImage, MachineExportImportsAndResources) {
    struct Build {
        std::string dir;
        uint16_t machine;
        const char *code, *key, *otherKey;
    };
    for (const Build& build : {Build{TESSELLUM_X86_DIR, kMachineI386, "68xw", "wx86", "8664"},
                               Build{TESSELLUM_X64_DIR, kMachineAmd64, "4668", "8664", "wx86"}}) {
        SCOPED_TRACE(build.dir);
        const PeFile pe = PeFile::Read(build.dir + "/Tessellum.8bf");
        EXPECT_EQ(pe.machine, build.machine);
        EXPECT_TRUE(pe.isDll);
        EXPECT_EQ(pe.exports, std::vector<std::string>{"ENTRYPOINT"}) << "undecorated, and alone";
        // Only the system's own DLLs: no compiler runtime may be needed at run time.
        const std::string system =
            " kernel32.dll user32.dll gdi32.dll msvcrt.dll advapi32.dll comdlg32.dll comctl32.dll ";
        for (std::string dll : pe.imports) {
            std::transform(dll.begin(), dll.end(), dll.begin(), ::tolower);
            EXPECT_NE(system.find(" " + dll + " "), std::string::npos) << "imports " << dll;
        }
        const PeFile host = PeFile::Read(build.dir + "/tessellum-host.exe");
        EXPECT_EQ(host.machine, build.machine);
        EXPECT_FALSE(host.isDll);

        // One PiPL, 16000 in US English, byte for byte; our host finds this build's entry
        // in it and none for the other architecture.
        const auto isPipl = [](const PeResource& r) { return r.type == "PIPL"; };
        ASSERT_EQ(std::count_if(pe.resources.begin(), pe.resources.end(), isPipl), 1);
        const PeResource& pipl = *std::find_if(pe.resources.begin(), pe.resources.end(), isPipl);
        EXPECT_EQ(pipl.id, 16000u);
        EXPECT_EQ(pipl.language, 1033);
        EXPECT_EQ(pipl.data, ExpectedPipl(build.code));
        const Pipl list = Pipl::Parse(pipl.data);
        EXPECT_TRUE(list.IsFilter());
        EXPECT_EQ(list.Name(), "Tessellum..");
        EXPECT_EQ(list.Category(), "Quarry Web Tools");
        EXPECT_EQ(list.EntryPoint(build.key), "ENTRYPOINT");
        EXPECT_EQ(list.EntryPoint(build.otherKey), "");
        EXPECT_EQ(list.Find("mode")->data, (Bytes{0x10, 0, 0, 0}));

        const PeResource* about = pe.FindResource("#5", 129);  // RT_DIALOG
        ASSERT_NE(about, nullptr) << "dialog 129";
        EXPECT_EQ(about->language, 1033);
        const std::optional<VersionInfo> version = ReadVersionInfo(pe);
        ASSERT_TRUE(version.has_value()) << "no version resource";
        EXPECT_EQ(version->fileVersion, (std::array<uint16_t, 4>{1, 5, 0, 0}));
        EXPECT_EQ(version->productVersion, (std::array<uint16_t, 4>{1, 5, 0, 0}));
        std::string strings;
        for (const auto& [key, value] : version->strings) strings += key + "=" + value + "; ";
        EXPECT_EQ(strings,
                  "CompanyName=Quarry; FileDescription=Tessellum optical colour filter plug-in; "
                  "FileVersion=1.5; InternalName=Tessellum; LegalCopyright=Copyright (c) 2026 "
                  "Quarry; OriginalFilename=Tessellum.8bf; ProductName=Tessellum; "
                  "ProductVersion=1.5; ");
    }
}

TEST(PluginImage, CutOrGarbledImagesAndListsAreRefusedWithoutOverrun) {
    const Bytes whole = ReadBytes(std::string(TESSELLUM_X64_DIR) + "/Tessellum.8bf");
    ASSERT_GT(whole.size(), 4096u);
    auto parse = [](const Bytes& bytes) {
        try {
            PeFile::Parse(bytes);  // a cut after every table the reader uses may still parse
        } catch (const PeError&) {
        }
    };
    for (size_t length = 0; length < whole.size(); length += length < 1024 ? 1 : 509)
        parse(Bytes(whole.begin(), whole.begin() + length));
    Bytes garbled = whole;
    for (size_t i = 0x80; i < 0x400; i += 7) garbled[i] ^= 0xA5;  // headers and tables
    parse(garbled);
    EXPECT_THROW(PeFile::Parse({'M', 'Z'}), PeError);
    EXPECT_THROW(PeFile::Read("/nonexistent/Tessellum.8bf"), PeError);

    // Every cut of the list, down to its last byte, is refused; so are a length past the
    // end and a negative count.
    const Bytes good = ExpectedPipl("68xw");
    for (size_t length = 0; length < good.size(); ++length)
        EXPECT_THROW(Pipl::Parse(Bytes(good.begin(), good.begin() + length)), PeError) << length;
    Bytes hugeLength = good, negativeCount = good;
    hugeLength[10 + 12] = 0xFF, hugeLength[10 + 15] = 0x7F;  // the kind property's length
    negativeCount[9] = 0x80;
    EXPECT_THROW(Pipl::Parse(hugeLength), PeError);
    EXPECT_THROW(Pipl::Parse(negativeCount), PeError);
}

TEST(ParametersFile, RoundTripsReplacesWholeAndRefusesForeignOrDamagedFiles) {
    const std::string path = ::testing::TempDir() + "tessellum_" + std::to_string(getpid());
    Bytes block(198), back;
    for (size_t i = 0; i < block.size(); ++i) block[i] = static_cast<uint8_t>(i * 7);
    std::string error;
    ASSERT_TRUE(WriteParametersFile(path, block, error)) << error;
    ASSERT_TRUE(ReadParametersFile(path, back, error)) << error;
    EXPECT_EQ(back, block);
    // A second, shorter block replaces the first entirely, and no temporary file is left.
    ASSERT_TRUE(WriteParametersFile(path, {1, 2, 3}, error)) << error;
    ASSERT_TRUE(ReadParametersFile(path, back, error)) << error;
    EXPECT_EQ(back, (Bytes{1, 2, 3}));
    EXPECT_EQ(ReadBytes(path),
              (Bytes{'8', 'B', 'F', 'P', 'A', 'R', 'M', '1', 3, 0, 0, 0, 1, 2, 3}));
    EXPECT_NE(access((path + ".new").c_str(), F_OK), 0);

    const std::pair<std::string, std::string> cases[] = {
        {std::string("\x89PNG\r\n\x1a\n\0\0\0\0", 12), "is not a stored-parameters file"},
        {"8BFPARM", "is not a stored-parameters file"},
        {std::string("8BFPARM1\0\0\0\0", 12), "implausible block size"},
        {std::string("8BFPARM1\5\0\0\0\1\2", 14), "is damaged"},
        {std::string("8BFPARM1\1\0\0\0\1\2", 14), "is damaged"},
    };
    for (const auto& [bytes, message] : cases) {
        std::ofstream(path, std::ios::binary) << bytes;
        Bytes kept = {9};
        EXPECT_FALSE(ReadParametersFile(path, kept, error));
        EXPECT_NE(error.find(message), std::string::npos) << error;
        EXPECT_EQ(kept, Bytes{9}) << "nothing is handed on";
    }
    EXPECT_FALSE(ReadParametersFile(path + ".missing", back, error));
    EXPECT_FALSE(WriteParametersFile("/nonexistent-dir/params", {1}, error));
    std::remove(path.c_str());
}

TEST(TileText, ATileBecomesTheStoredBlockAndMistakesAreReportedWithTheirLine) {
    FilterParameters p;
    std::string error;
    ASSERT_TRUE(
        ParseTileText("# demo\ngrid 3\nrow 000000 FFFFFF 336699\n"
                      "row 010203 a0b0c0 ffffff # trailing comment\n\nrow 000000 000000 CC00CC\n",
                      p, error))
        << error;
    // Flag down (a stored tile is used at once), GridSize 3, cells outside the square zero.
    Bytes expected(198, 0);
    expected[4] = 3;
    const Bytes rows[] = {{0, 0, 0, 0xFF, 0xFF, 0xFF, 0x33, 0x66, 0x99},
                          {1, 2, 3, 0xA0, 0xB0, 0xC0, 0xFF, 0xFF, 0xFF},
                          {0, 0, 0, 0, 0, 0, 0xCC, 0, 0xCC}};
    for (int r = 0; r < 3; ++r) std::copy(rows[r].begin(), rows[r].end(), &expected[5 + 24 * r]);
    const auto* bytes = reinterpret_cast<const uint8_t*>(&p);
    EXPECT_EQ(Bytes(bytes, bytes + 198), expected);

    const std::pair<const char*, const char*> cases[] = {
        {"", "line 0: no grid line"},
        {"grid 7\n", "line 1: grid must be 2, 3, 4, 5, 6 or 8, not \"7\""},
        {"row 000000 000000\n", "line 1: a row before the grid line"},
        {"grid 2\nrow 000000\n", "line 2: fewer colours than the grid has columns"},
        {"grid 2\nrow 000000 00000G\n",
         "line 2: \"00000G\" is not a colour of six hexadecimal digits"},
        {"grid 2\nrow 000000 000000 000000\n", "line 2: more colours than the grid has columns"},
        {"grid 2\nrow 000000 000000\n", "line 2: fewer rows than the grid has"},
        {"grid 2\ngrid 2\n", "line 2: the grid is given twice"},
        {"colour 2\n", "line 1: unknown keyword \"colour\""},
    };
    for (const auto& [text, message] : cases) {
        EXPECT_FALSE(ParseTileText(text, p, error)) << text;
        EXPECT_EQ(error, message) << text;
    }
}

TEST(ImageFit, KeepsProportionsCentredAndMapsTheRectangle) {
    using Box = std::array<int, 4>;
    auto box = [](const ScreenBox& b) { return Box{b.left, b.top, b.width, b.height}; };
    EXPECT_EQ(box(FitImage(640, 480, 320, 480)), (Box{0, 120, 320, 240}));  // bars above, below
    EXPECT_EQ(box(FitImage(640, 480, 900, 240)), (Box{290, 0, 320, 240}));  // bars left, right
    EXPECT_EQ(box(FitImage(8, 6, 640, 480)), (Box{0, 0, 640, 480}));        // a small image grows
    EXPECT_EQ(box(FitImage(30000, 1, 300, 300)), (Box{0, 149, 300, 1}));    // at least a pixel
    EXPECT_EQ(box(FitImage(0, 6, 640, 480)), (Box{0, 0, 0, 0}));
    const ScreenBox shown = FitImage(640, 480, 320, 480);
    EXPECT_EQ(box(MapRect(shown, 640, 480, 60, 80, 420, 560)), (Box{40, 150, 240, 180}));
    EXPECT_EQ(box(MapRect(shown, 640, 480, 0, 0, 480, 640)), (Box{0, 120, 320, 240}));
}

}  // namespace
}  // namespace tessellum::host
