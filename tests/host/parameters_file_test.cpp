#include "tools/host/parameters_file.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>

namespace tessellum::host {
namespace {

std::string TempPath(const char* name) {
    return ::testing::TempDir() + "tessellum_" + std::to_string(getpid()) + "_" + name;
}

void WriteRaw(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

TEST(ParametersFile, RoundTripsAndReplacesWhole) {
    const std::string path = TempPath("params");
    std::vector<uint8_t> block(198);
    for (size_t i = 0; i < block.size(); ++i) block[i] = static_cast<uint8_t>(i * 7);
    std::string error;
    ASSERT_TRUE(WriteParametersFile(path, block, error)) << error;
    std::vector<uint8_t> back;
    ASSERT_TRUE(ReadParametersFile(path, back, error)) << error;
    EXPECT_EQ(back, block);
    // A second, shorter block replaces the first entirely.
    ASSERT_TRUE(WriteParametersFile(path, {1, 2, 3}, error)) << error;
    ASSERT_TRUE(ReadParametersFile(path, back, error)) << error;
    EXPECT_EQ(back, (std::vector<uint8_t>{1, 2, 3}));
    std::ifstream raw(path, std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(raw)),
                            std::istreambuf_iterator<char>());
    EXPECT_EQ(bytes, std::string("8BFPARM1\x03\0\0\0\x01\x02\x03", 15));
    EXPECT_NE(access((path + ".new").c_str(), F_OK), 0) << "no temporary file is left behind";
    std::remove(path.c_str());
}

TEST(ParametersFile, ForeignOrDamagedFilesAreRefusedAndLeftAlone) {
    const std::string path = TempPath("bad");
    const std::pair<std::string, std::string> cases[] = {
        {"\x89PNG\r\n\x1a\n\0\0\0\0", "is not a stored-parameters file"},
        {"8BFPARM", "is not a stored-parameters file"},
        {std::string("8BFPARM1\x00\x00\x00\x00", 12), "implausible block size"},
        {std::string("8BFPARM1\x05\x00\x00\x00\x01\x02", 14), "is damaged"},
        {std::string("8BFPARM1\x01\x00\x00\x00\x01\x02", 14), "is damaged"},
    };
    for (const auto& [bytes, message] : cases) {
        WriteRaw(path, bytes);
        std::vector<uint8_t> block = {9};
        std::string error;
        EXPECT_FALSE(ReadParametersFile(path, block, error));
        EXPECT_NE(error.find(message), std::string::npos) << error;
        EXPECT_EQ(block, std::vector<uint8_t>{9}) << "nothing is handed on";
    }
    std::string error;
    std::vector<uint8_t> block;
    EXPECT_FALSE(ReadParametersFile(path + ".missing", block, error));
    EXPECT_FALSE(WriteParametersFile("/nonexistent-dir/params", {1}, error));
    std::remove(path.c_str());
}

}  // namespace
}  // namespace tessellum::host
