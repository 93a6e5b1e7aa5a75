// Helpers of the file tests: a fresh directory for one test's files, removed with its
// content when the test ends; whole files read and written; and the system's reads or
// writes made to fail part-way through a file.
#pragma once

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "storage/system_io.h"

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
    // The names of the files in it, sorted.
    std::vector<std::string> Files() const {
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
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(bytes.data()),
              static_cast<std::streamsize>(bytes.size()));
}

// For as long as it lives, the first `succeeding` calls go through and every later one
// fails with `error` (or, for a short write, writes one byte less and reports no error).
class IoFault {
public:
    enum Kind { kFailingRead, kFailingWrite, kShortWrite };

    IoFault(Kind kind, int succeeding, int error) {
        state = {kind, succeeding, error, 0};
        if (kind == kFailingRead)
            system_io::activeRead = Read;
        else
            system_io::activeWrite = Write;
    }
    ~IoFault() {
        system_io::activeRead = system_io::ReadDescriptor;
        system_io::activeWrite = system_io::WriteDescriptor;
    }
    IoFault(const IoFault&) = delete;
    IoFault& operator=(const IoFault&) = delete;

    bool Fired() const { return state.calls > state.succeeding; }

private:
    struct State {
        Kind kind;
        int succeeding, error, calls;
    };
    static inline State state;

    static int64_t Read(int fd, void* buffer, uint32_t size) {
        if (state.calls++ < state.succeeding) return system_io::ReadDescriptor(fd, buffer, size);
        errno = state.error;
        return -1;
    }
    static int64_t Write(int fd, const void* buffer, uint32_t size) {
        if (state.calls++ < state.succeeding) return system_io::WriteDescriptor(fd, buffer, size);
        if (state.kind == kShortWrite)
            return size == 0 ? 0 : system_io::WriteDescriptor(fd, buffer, size - 1);
        errno = state.error;
        return -1;
    }
};

}  // namespace tessellum::test
