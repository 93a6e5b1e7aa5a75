// The file in which our host keeps a plug-in's parameters block between runs, as a
// paint program keeps it for "repeat filter". A short header guards against handing a
// plug-in the bytes of some unrelated file.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tessellum::host {

// Layout: the 8 bytes "8BFPARM1", the block's size as a little-endian uint32, the block.
constexpr char kParametersMagic[8] = {'8', 'B', 'F', 'P', 'A', 'R', 'M', '1'};
constexpr uint32_t kMaxParametersSize = 16u << 20;

bool ReadParametersFile(const std::string& path, std::vector<uint8_t>& block, std::string& error);
bool WriteParametersFile(const std::string& path, const std::vector<uint8_t>& block,
                         std::string& error);

}  // namespace tessellum::host
