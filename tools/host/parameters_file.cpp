#include "tools/host/parameters_file.h"

#include <cstdio>
#include <cstring>
#include <memory>

#ifdef _WIN32
#include <windows.h>
#endif

namespace tessellum::host {
namespace {

using File = std::unique_ptr<FILE, int (*)(FILE*)>;

bool MoveOver(const std::string& from, const std::string& to) {
#ifdef _WIN32
    return MoveFileExA(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING) != 0;
#else
    return std::rename(from.c_str(), to.c_str()) == 0;
#endif
}

}  // namespace

bool ReadParametersFile(const std::string& path, std::vector<uint8_t>& block, std::string& error) {
    File file(std::fopen(path.c_str(), "rb"), &std::fclose);
    if (!file) {
        error = "cannot open the parameters file " + path;
        return false;
    }
    uint8_t header[12];
    if (std::fread(header, 1, sizeof header, file.get()) != sizeof header ||
        std::memcmp(header, kParametersMagic, sizeof kParametersMagic) != 0) {
        error = path + " is not a stored-parameters file";
        return false;
    }
    const uint32_t size =
        header[8] | header[9] << 8 | header[10] << 16 | static_cast<uint32_t>(header[11]) << 24;
    if (size == 0 || size > kMaxParametersSize) {
        error = path + " holds an implausible block size (" + std::to_string(size) + " bytes)";
        return false;
    }
    std::vector<uint8_t> bytes(size);
    if (std::fread(bytes.data(), 1, size, file.get()) != size || std::fgetc(file.get()) != EOF) {
        error = path + " is damaged: its length does not match its header";
        return false;
    }
    block.swap(bytes);
    return true;
}

bool WriteParametersFile(const std::string& path, const std::vector<uint8_t>& block,
                         std::string& error) {
    // Written beside the old file and moved over it only when complete, so a failed
    // write never destroys the stored parameters.
    const std::string temporary = path + ".new";
    File file(std::fopen(temporary.c_str(), "wb"), &std::fclose);
    if (!file) {
        error = "cannot create " + temporary;
        return false;
    }
    const uint32_t size = static_cast<uint32_t>(block.size());
    const uint8_t sizeBytes[4] = {static_cast<uint8_t>(size), static_cast<uint8_t>(size >> 8),
                                  static_cast<uint8_t>(size >> 16),
                                  static_cast<uint8_t>(size >> 24)};
    bool ok = std::fwrite(kParametersMagic, 1, 8, file.get()) == 8 &&
              std::fwrite(sizeBytes, 1, 4, file.get()) == 4 &&
              std::fwrite(block.data(), 1, block.size(), file.get()) == block.size();
    ok = std::fclose(file.release()) == 0 && ok;
    if (ok) {
        ok = MoveOver(temporary, path);
    }
    if (!ok) {
        std::remove(temporary.c_str());
        error = "cannot write the parameters file " + path;
    }
    return ok;
}

}  // namespace tessellum::host
