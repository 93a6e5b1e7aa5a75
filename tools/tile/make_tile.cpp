// make-tile: writes a stored-parameters file for our host, so that a run with --repeat
// lays the tile at once, without the dialog. The tile comes either from a colour, turned
// into its checker of two web-safe colours by the plug-in's own colour core, or from a
// tile written as readable text.
#include <cctype>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "color/web_safe.h"
#include "tools/host/parameters_file.h"
#include "tools/tile/tile_text.h"

namespace {

const char kUsage[] =
    "Usage: make-tile --color RRGGBB PARAMETERS\n"
    "       make-tile TILE.txt PARAMETERS\n"
    "The first lays the colour's 2x2 checker of two web-safe colours and prints them;\n"
    "the second reads a tile written as text (see tools/tile/tile_text.h).\n";

bool ParseHex(const std::string& text, uint8_t rgb[3]) {
    if (text.size() != 6) return false;
    for (int i = 0; i < 3; ++i) {
        unsigned value = 0;
        if (std::sscanf(text.substr(2 * i, 2).c_str(), "%2x", &value) != 1) return false;
        if (!std::isxdigit(static_cast<unsigned char>(text[2 * i])) ||
            !std::isxdigit(static_cast<unsigned char>(text[2 * i + 1])))
            return false;
        rgb[i] = static_cast<uint8_t>(value);
    }
    return true;
}

bool TileFromColor(const std::string& hex, tessellum::FilterParameters& parameters,
                   std::string& error) {
    uint8_t rgb[3];
    if (!ParseHex(hex, rgb)) {
        error = "\"" + hex + "\" is not a colour of six hexadecimal digits";
        return false;
    }
    uint8_t table[tessellum::kWebSafeTableBytes];
    tessellum::FillWebSafeTable(table);
    uint8_t lower = 0, upper = 0;
    tessellum::ColorToTileIndices(rgb[0], rgb[1], rgb[2], &lower, &upper);
    std::memset(&parameters, 0, sizeof parameters);
    tessellum::WriteTile(table, parameters.tile, lower, upper);
    parameters.gridSize = 2;
    const uint8_t* a = &table[3 * lower];
    const uint8_t* b = &table[3 * upper];
    std::printf("make-tile: #%s becomes the checker of #%02X%02X%02X and #%02X%02X%02X%s\n",
                hex.c_str(), a[0], a[1], a[2], b[0], b[1], b[2],
                lower == upper ? " (a web-safe colour: one solid colour)" : "");
    return true;
}

bool TileFromText(const char* path, tessellum::FilterParameters& parameters, std::string& error) {
    std::ifstream in(path);
    if (!in) {
        error = std::string("cannot open ") + path;
        return false;
    }
    std::stringstream text;
    text << in.rdbuf();
    if (!tessellum::ParseTileText(text.str(), parameters, error)) {
        error = std::string(path) + ": " + error;
        return false;
    }
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    tessellum::FilterParameters parameters;
    std::string error;
    bool ok = false;
    const char* output = nullptr;
    if (argc == 4 && std::strcmp(argv[1], "--color") == 0) {
        ok = TileFromColor(argv[2], parameters, error);
        output = argv[3];
    } else if (argc == 3 && argv[1][0] != '-') {
        ok = TileFromText(argv[1], parameters, error);
        output = argv[2];
    } else {
        std::fputs(kUsage, stderr);
        return 2;
    }
    if (!ok) {
        std::fprintf(stderr, "make-tile: %s\n", error.c_str());
        return 2;
    }
    const auto* bytes = reinterpret_cast<const uint8_t*>(&parameters);
    if (!tessellum::host::WriteParametersFile(
            output, std::vector<uint8_t>(bytes, bytes + sizeof parameters), error)) {
        std::fprintf(stderr, "make-tile: %s\n", error.c_str());
        return 2;
    }
    std::printf("make-tile: wrote %s (GridSize %d)\n", output, parameters.gridSize);
    return 0;
}
