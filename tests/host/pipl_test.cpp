#include "tools/host/pipl.h"

#include <gtest/gtest.h>

#include "tests/support/expected_pipl.h"
#include "tools/host/pe_file.h"

namespace tessellum::host {
namespace {

TEST(Pipl, TheListIs162BytesWithPropertiesAtTheirOffsets) {
    const std::vector<uint8_t> bytes = test::ExpectedPipl("68xw");
    ASSERT_EQ(bytes.size(), 162u);
    const std::pair<size_t, std::string> starts[] = {{10, "MIB8dnik"},  {30, "MIB8eman"},
                                                     {58, "MIB8gtac"},  {94, "MIB8srev"},
                                                     {114, "MIB868xw"}, {142, "MIB8edom"}};
    for (const auto& [offset, text] : starts)
        EXPECT_EQ(std::string(bytes.begin() + offset, bytes.begin() + offset + 8), text);
}

TEST(Pipl, ReadsWhatAHostNeeds) {
    const Pipl x86 = Pipl::Parse(test::ExpectedPipl("68xw"));
    ASSERT_EQ(x86.properties.size(), 6u);
    EXPECT_TRUE(x86.IsFilter());
    EXPECT_EQ(x86.Name(), "Tessellum..");
    EXPECT_EQ(x86.Category(), "Quarry Web Tools");
    EXPECT_EQ(x86.EntryPoint("wx86"), "ENTRYPOINT");
    EXPECT_EQ(x86.EntryPoint("8664"), "") << "an x64 host finds no entry in the x86 list";
    const Pipl x64 = Pipl::Parse(test::ExpectedPipl("4668"));
    EXPECT_EQ(x64.EntryPoint("8664"), "ENTRYPOINT");
    EXPECT_EQ(x64.EntryPoint("wx86"), "");
    EXPECT_EQ(x64.Find("mode")->data, (std::vector<uint8_t>{0x10, 0, 0, 0}));
}

TEST(Pipl, DamagedListsAreRefusedNotOverrun) {
    const std::vector<uint8_t> good = test::ExpectedPipl("68xw");
    // Every cut, down to the last byte of the last property, is refused.
    for (size_t length = 0; length < good.size(); ++length) {
        const std::vector<uint8_t> cut(good.begin(), good.begin() + length);
        EXPECT_THROW(Pipl::Parse(cut), PeError) << "cut at " << length;
    }
    std::vector<uint8_t> hugeLength = good;
    hugeLength[10 + 12] = 0xFF;  // the kind property's length
    hugeLength[10 + 15] = 0x7F;
    EXPECT_THROW(Pipl::Parse(hugeLength), PeError);
    std::vector<uint8_t> negativeCount = good;
    negativeCount[9] = 0x80;
    EXPECT_THROW(Pipl::Parse(negativeCount), PeError);
}

}  // namespace
}  // namespace tessellum::host
