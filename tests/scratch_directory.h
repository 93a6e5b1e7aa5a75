// A fresh directory for one test's files, removed with its content when the test ends.
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

namespace tessellum::test {

class ScratchDirectory {
public:
    ScratchDirectory() {
        std::random_device random;
        const auto base = std::filesystem::temp_directory_path();
        do {
            root = base / ("tessellum-test-" + std::to_string(random()));
        } while (!std::filesystem::create_directory(root));
    }
    ~ScratchDirectory() {
        std::error_code ignored;
        std::filesystem::remove_all(root, ignored);
    }
    ScratchDirectory(const ScratchDirectory&) = delete;
    ScratchDirectory& operator=(const ScratchDirectory&) = delete;

    std::string Path(const std::string& file) const { return (root / file).string(); }
    std::vector<std::string> Files() const {
        std::vector<std::string> names;
        for (const auto& item : std::filesystem::directory_iterator(root))
            names.push_back(item.path().filename().string());
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
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(bytes.data()),
              static_cast<std::streamsize>(bytes.size()));
}

inline bool FileExists(const std::string& path) {
    return std::filesystem::exists(path);
}

}  // namespace tessellum::test
