// One test's world for the real dialog: a private plug-ins folder for the library file,
// the real plug-in in our host's session, a small grey image, and the parameters block
// carried from one run to the next.
#pragma once

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "storage/library_file.h"
#include "tests/dialog/dialog_driver.h"
#include "tests/support/plugin_path.h"
#include "tests/support/scratch_directory.h"

namespace tessellum::test {

using Bytes = std::vector<uint8_t>;

class DialogRunTest : public ::testing::Test {
protected:
    void SetUp() override { PointLibraryAt(folder); }

    // One run of the filter over a small grey image, with the parameters block given.
    host::RunReport Run(const std::function<void(DialogDriver&)>& scenario,
                        host::RunOptions options = {}) {
        image.width = image.height = 16;
        image.planes = 3;
        image.pixels.assign(16 * 16 * 3, 0x80);
        if (!block.empty()) session.SetParametersBlock(block);
        const host::RunReport report = RunWithDialog(session, image, options, scenario);
        block = session.ParametersBlock();
        return report;
    }
    std::unique_ptr<ColorLibrary> LoadLibraryFile() {
        LibraryFile file;
        return std::unique_ptr<ColorLibrary>(file.ReadLibrary(libraryPath.c_str()));
    }
    void SaveLibraryFile(const ColorLibrary& library) {
        LibraryFile file;
        file.WriteLibrary(&library, libraryPath.c_str());
    }
    Rgb8 TileCell(int row, int column) const {  // of the stored parameters block
        Rgb8 cell;
        std::memcpy(&cell, block.data() + 5 + (row * 8 + column) * 3, 3);
        return cell;
    }

    ScratchDirectory scratch;
    std::string folder = scratch.Path("plug-ins folder");
    std::string libraryPath = folder + "\\Tessellum.dat";
    host::PluginLibrary plugin{PluginPath()};
    host::FilterSession session{plugin};
    host::Image image;
    Bytes block;
};

}  // namespace tessellum::test
