// What the fuzz targets share: a private directory for the files of one run, whole files
// written and read, the lowest free descriptor, and a check that stops the run.
#pragma once

#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

namespace tessellum::fuzz {

// One private directory per run, in memory where the system has it.
inline const std::string& WorkDirectory() {
    static const std::string directory = [] {
        std::string pattern = (access("/dev/shm", W_OK) == 0 ? "/dev/shm" : "/tmp");
        pattern += "/tessellum-fuzz-XXXXXX";
        if (mkdtemp(&pattern[0]) == nullptr) abort();
        return pattern;
    }();
    return directory;
}

inline void WriteFile(const std::string& path, const uint8_t* data, size_t size) {
    FILE* out = fopen(path.c_str(), "wb");
    if (out == nullptr || fwrite(data, 1, size, out) != size || fclose(out) != 0) abort();
}

inline std::vector<uint8_t> ReadFile(const std::string& path) {
    std::vector<uint8_t> bytes;
    FILE* in = fopen(path.c_str(), "rb");
    if (in == nullptr) abort();
    for (int c; (c = fgetc(in)) != EOF;) bytes.push_back(static_cast<uint8_t>(c));
    fclose(in);
    return bytes;
}

// A descriptor left open by a reader moves the lowest free one up.
inline int LowestFreeDescriptor() {
    const int fd = open("/dev/null", O_RDONLY);
    close(fd);
    return fd;
}

inline void Require(bool condition, const char* what) {
    if (!condition) {
        fprintf(stderr, "fuzz: %s\n", what);
        abort();
    }
}

}  // namespace tessellum::fuzz
