// make-tile: writes a stored-parameters file for our host from a tile in readable text,
// so a run with --repeat lays that tile without the dialog.
#include <cstdio>
#include <fstream>
#include <sstream>
#include <vector>

#include "tools/host/parameters_file.h"
#include "tools/tile/tile_text.h"

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "Usage: make-tile TILE.txt PARAMETERS\n");
        return 2;
    }
    std::ifstream in(argv[1]);
    if (!in) {
        std::fprintf(stderr, "make-tile: cannot open %s\n", argv[1]);
        return 2;
    }
    std::stringstream text;
    text << in.rdbuf();
    tessellum::FilterParameters parameters;
    std::string error;
    if (!tessellum::ParseTileText(text.str(), parameters, error)) {
        std::fprintf(stderr, "make-tile: %s: %s\n", argv[1], error.c_str());
        return 2;
    }
    const auto* bytes = reinterpret_cast<const uint8_t*>(&parameters);
    if (!tessellum::host::WriteParametersFile(
            argv[2], std::vector<uint8_t>(bytes, bytes + sizeof parameters), error)) {
        std::fprintf(stderr, "make-tile: %s\n", error.c_str());
        return 2;
    }
    std::printf("make-tile: %s: GridSize %d\n", argv[2], parameters.gridSize);
    return 0;
}
