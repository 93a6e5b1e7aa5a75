// Static checks of the two built plug-ins and hosts, read as files: what a host sees
// before it loads anything.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <fstream>
#include <iterator>

#include "tests/support/expected_pipl.h"
#include "tools/host/pe_file.h"
#include "tools/host/pipl.h"
#include "tools/host/version_info.h"

namespace tessellum::host {
namespace {

struct Build {
    const char* name;
    std::string dir;
    uint16_t machine;
    const char* codeKey;  // as stored
};

const Build kBuilds[] = {{"x86", TESSELLUM_X86_DIR, kMachineI386, "68xw"},
                         {"x64", TESSELLUM_X64_DIR, kMachineAmd64, "4668"}};

std::string Lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

std::vector<uint8_t> ReadBytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

TEST(PluginImage, MachineExportAndImports) {
    for (const Build& build : kBuilds) {
        SCOPED_TRACE(build.name);
        const PeFile pe = PeFile::Read(build.dir + "/Tessellum.8bf");
        EXPECT_EQ(pe.machine, build.machine);
        EXPECT_TRUE(pe.isDll);
        EXPECT_EQ(pe.exports, std::vector<std::string>{"ENTRYPOINT"}) << "undecorated, and alone";
        // Only the system's own DLLs: no compiler runtime may be needed at run time.
        const std::vector<std::string> system = {"kernel32.dll", "user32.dll",   "gdi32.dll",
                                                 "msvcrt.dll",   "advapi32.dll", "comdlg32.dll",
                                                 "comctl32.dll"};
        for (const std::string& dll : pe.imports) {
            EXPECT_NE(std::find(system.begin(), system.end(), Lower(dll)), system.end())
                << "imports " << dll;
        }
        const PeFile host = PeFile::Read(build.dir + "/tessellum-host.exe");
        EXPECT_EQ(host.machine, build.machine);
        EXPECT_FALSE(host.isDll);
    }
}

TEST(PluginImage, PiplAboutAndVersionResources) {
    for (const Build& build : kBuilds) {
        SCOPED_TRACE(build.name);
        const PeFile pe = PeFile::Read(build.dir + "/Tessellum.8bf");
        std::vector<const PeResource*> pipls;
        for (const PeResource& r : pe.resources)
            if (r.type == "PIPL") pipls.push_back(&r);
        ASSERT_EQ(pipls.size(), 1u);
        EXPECT_EQ(pipls[0]->id, 16000u);
        EXPECT_EQ(pipls[0]->language, 1033);
        EXPECT_EQ(pipls[0]->data, test::ExpectedPipl(build.codeKey));
        const PeResource* about = pe.FindResource("#5", 129);  // RT_DIALOG
        ASSERT_NE(about, nullptr) << "dialog 129";
        EXPECT_EQ(about->language, 1033);
        const std::optional<VersionInfo> version = ReadVersionInfo(pe);
        ASSERT_TRUE(version.has_value()) << "no version resource";
        const VersionInfo& info = *version;
        const std::array<uint16_t, 4> v15 = {1, 5, 0, 0};
        EXPECT_EQ(info.fileVersion, v15);
        EXPECT_EQ(info.productVersion, v15);
        const std::map<std::string, std::string> strings = {
            {"CompanyName", "Quarry"},
            {"FileDescription", "Tessellum optical colour filter plug-in"},
            {"FileVersion", "1.5"},
            {"InternalName", "Tessellum"},
            {"LegalCopyright", "Copyright (c) 2026 Quarry"},
            {"OriginalFilename", "Tessellum.8bf"},
            {"ProductName", "Tessellum"},
            {"ProductVersion", "1.5"}};
        EXPECT_EQ(info.strings, strings);
    }
}

TEST(PluginImage, ACutOrGarbledImageIsRefusedWithoutOverrun) {
    const std::vector<uint8_t> whole = ReadBytes(std::string(TESSELLUM_X64_DIR) + "/Tessellum.8bf");
    ASSERT_GT(whole.size(), 4096u);
    for (size_t length = 0; length < whole.size(); length += length < 1024 ? 1 : 509) {
        const std::vector<uint8_t> cut(whole.begin(), whole.begin() + length);
        try {
            PeFile::Parse(cut);  // a cut after every table the reader uses may still parse
        } catch (const PeError&) {
        }
    }
    std::vector<uint8_t> garbled = whole;
    for (size_t i = 0x80; i < 0x400; i += 7) garbled[i] ^= 0xA5;  // headers and tables
    try {
        PeFile::Parse(garbled);
    } catch (const PeError&) {
    }
    EXPECT_THROW(PeFile::Parse({'M', 'Z'}), PeError);
    EXPECT_THROW(PeFile::Read("/nonexistent/Tessellum.8bf"), PeError);
}

}  // namespace
}  // namespace tessellum::host
