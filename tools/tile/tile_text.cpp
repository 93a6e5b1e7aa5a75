#include "tools/tile/tile_text.h"

#include <cstring>
#include <sstream>

namespace tessellum {
namespace {

bool ParseHexColor(const std::string& word, Rgb8& color) {
    if (word.size() != 6) return false;
    unsigned value = 0;
    for (char c : word) {
        const int digit = c >= '0' && c <= '9'   ? c - '0'
                          : c >= 'a' && c <= 'f' ? c - 'a' + 10
                          : c >= 'A' && c <= 'F' ? c - 'A' + 10
                                                 : -1;
        if (digit < 0) return false;
        value = value << 4 | static_cast<unsigned>(digit);
    }
    color = {static_cast<uint8_t>(value >> 16), static_cast<uint8_t>(value >> 8),
             static_cast<uint8_t>(value)};
    return true;
}

}  // namespace

bool ParseTileText(const std::string& text, FilterParameters& parameters, std::string& error) {
    std::memset(&parameters, 0, sizeof parameters);
    std::istringstream lines(text);
    std::string line;
    int lineNumber = 0, grid = 0, rows = 0;
    auto fail = [&](const std::string& why) {
        error = "line " + std::to_string(lineNumber) + ": " + why;
        return false;
    };
    while (std::getline(lines, line)) {
        ++lineNumber;
        const size_t hash = line.find('#');
        if (hash != std::string::npos) line.erase(hash);
        std::istringstream words(line);
        std::string keyword;
        if (!(words >> keyword)) continue;
        if (keyword == "grid") {
            if (grid != 0) return fail("the grid is given twice");
            std::string word;
            words >> word;
            if (word != "2" && word != "3" && word != "4" && word != "5" && word != "6" &&
                word != "8")
                return fail("grid must be 2, 3, 4, 5, 6 or 8, not \"" + word + "\"");
            grid = std::stoi(word);
        } else if (keyword == "row") {
            if (grid == 0) return fail("a row before the grid line");
            if (rows == grid) return fail("more rows than the grid has");
            std::string word;
            int column = 0;
            while (words >> word) {
                if (column == grid) return fail("more colours than the grid has columns");
                if (!ParseHexColor(word, parameters.tile.Cell(rows, column)))
                    return fail("\"" + word + "\" is not a colour of six hexadecimal digits");
                ++column;
            }
            if (column != grid) return fail("fewer colours than the grid has columns");
            ++rows;
        } else {
            return fail("unknown keyword \"" + keyword + "\"");
        }
    }
    if (grid == 0) return fail("no grid line");
    if (rows != grid) return fail("fewer rows than the grid has");
    parameters.gridSize = static_cast<uint8_t>(grid);
    return true;
}

}  // namespace tessellum
