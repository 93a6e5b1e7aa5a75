// Reads a file's version resource (RT_VERSION): the fixed version numbers and the text
// of its first string table, as Windows shows them in the file's properties.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace tessellum::host {

struct VersionInfo {
    std::array<uint16_t, 4> fileVersion{};  // major, minor, and the two lower parts
    std::array<uint16_t, 4> productVersion{};
    std::map<std::string, std::string> strings;  // name to text; characters past ASCII as '?'
};

struct PeFile;

// Parses the resource's bytes. Throws PeError for a damaged resource.
VersionInfo ParseVersionInfo(const std::vector<uint8_t>& bytes);
// The version resource of a file; nothing if it has none. Throws PeError as above.
std::optional<VersionInfo> ReadVersionInfo(const PeFile& file);

}  // namespace tessellum::host
