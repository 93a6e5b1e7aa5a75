// Helpers of the file tests: a fresh directory for one test's files, removed with its
// content when the test ends; whole files read and written; the code an action throws.
#pragma once

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "storage/error_code.h"

namespace tessellum::test {

class ScratchDirectory {
public:
    ScratchDirectory() {
        std::random_device random;
        while (root.empty() || !std::filesystem::create_directory(root))
            root = std::filesystem::temp_directory_path() / ("tess-" + std::to_string(random()));
    }
    ~ScratchDirectory() {
        std::error_code ignored;
        std::filesystem::remove_all(root, ignored);
    }
    std::string Path(const std::string& file) const { return (root / file).string(); }
    std::vector<std::string> Files() const {  // sorted
        std::vector<std::string> names;
        for (const auto& item : std::filesystem::directory_iterator(root))
            names.push_back(item.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }

private:
    std::filesystem::path root;
};

inline std::vector<uint8_t> ReadWholeFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::vector<uint8_t>(std::istreambuf_iterator<char>(in), {});
}

inline void WriteWholeFile(const std::string& path, const std::vector<uint8_t>& bytes) {
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), std::streamsize(bytes.size()));
}

// The ErrorCode an action throws, or 0 when it throws none.
inline ErrorCode CodeOf(const std::function<void()>& action) {
    try {
        action();
    } catch (ErrorCode code) {
        return code;
    }
    return 0;
}

}  // namespace tessellum::test
