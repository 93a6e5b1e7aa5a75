// Reads what a host needs to know of a Windows DLL without loading it: the machine it
// was built for, its exports and imports, and its resources. Portable, so the same
// reader serves our host and the static checks of the built plug-ins.
#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace tessellum::host {

constexpr uint16_t kMachineI386 = 0x014C;
constexpr uint16_t kMachineAmd64 = 0x8664;

// Raised for a file that is not a readable PE image; the text says why.
struct PeError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

struct PeResource {
    std::string type;  // a named type ("PIPL") or "#n" for a numbered one
    uint32_t id;       // numbered entries only; named ones are listed with id 0xFFFFFFFF
    uint16_t language;
    std::vector<uint8_t> data;
};

struct PeFile {
    uint16_t machine = 0;
    bool isDll = false;
    std::vector<std::string> exports;  // exported names
    std::vector<std::string> imports;  // names of the DLLs imported from
    std::vector<PeResource> resources;

    // Parses an image held in memory. Throws PeError.
    static PeFile Parse(const std::vector<uint8_t>& bytes);
    // Reads and parses a file. Throws PeError (also for a file that cannot be read).
    static PeFile Read(const std::string& path);

    const PeResource* FindResource(const std::string& type, uint32_t id) const;
};

std::string MachineName(uint16_t machine);

}  // namespace tessellum::host
