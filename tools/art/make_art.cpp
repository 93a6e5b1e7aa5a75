// Build-time generator of the plug-in's pictures: reads text art and writes, into the
// output folder, NAME.bmp or NAME.cur for each NAME.txt (and the selected form of a
// button under the name its text gives), and the same for every larger display scale
// as NAME@DPI.bmp or NAME@DPI.cur. With --scaled it also writes scaled_art.rc: the
// resource lines of those, numbered as controls/dpi_scale.h finds them, from the
// resource script of the 96-DPI pictures and the header of their numbers.
//
//   make-art OUTPUT_FOLDER [--scaled RESOURCE_IDS.h ART.rc] FILE.txt...
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <sstream>
#include <string>

#include "controls/dpi_scale.h"
#include "tools/art/art_files.h"
#include "tools/art/art_text.h"

namespace {

using namespace tessellum::art;
using tessellum::kArtDpiStep;
using tessellum::kArtDpiSteps;
using tessellum::kArtIdStride;
using tessellum::kBaseDpi;

bool WriteFile(const std::string& path, const std::vector<uint8_t>& bytes) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(bytes.data()),
              static_cast<std::streamsize>(bytes.size()));
    out.close();
    if (!out) std::cerr << "make-art: cannot write " << path << "\n";
    return static_cast<bool>(out);
}

bool ReadText(const std::string& path, std::string& text) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        std::cerr << "make-art: cannot read " << path << "\n";
        return false;
    }
    text.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    return true;
}

std::string BaseName(const std::string& path) {
    const size_t slash = path.find_last_of('/');
    std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
    const size_t dot = name.rfind('.');
    return dot == std::string::npos ? name : name.substr(0, dot);
}

// "" at 96 DPI, else "@DPI": the file name's mark of a scale.
std::string Mark(int dpi) {
    return dpi == kBaseDpi ? "" : "@" + std::to_string(dpi);
}

// The picture (and its selected form) at every step of scale.
bool WritePictures(const std::string& folder, const std::string& name, const ArtPicture& picture) {
    for (int step = 0; step < kArtDpiSteps; ++step) {
        const int dpi = kBaseDpi + step * kArtDpiStep;
        const ArtPicture scaled = ScaledArt(picture, dpi);
        if (picture.cursor) {
            if (!WriteFile(folder + name + Mark(dpi) + ".cur", CursorFileBytes(scaled)))
                return false;
            continue;
        }
        if (!WriteFile(folder + name + Mark(dpi) + ".bmp", BitmapFileBytes(scaled))) return false;
        if (!picture.selectedName.empty() &&
            !WriteFile(folder + picture.selectedName + Mark(dpi) + ".bmp",
                       BitmapFileBytes(ScaledArt(SelectedForm(picture), dpi)))) {
            return false;
        }
    }
    return true;
}

// For each line `NAME BITMAP|CURSOR "generated_art/FILE.EXT"` of the script, the same
// resource at every larger scale, its number NAME's plus the step's stride.
bool WriteScaledScript(const std::string& folder, const std::string& idsPath,
                       const std::string& scriptPath) {
    std::string ids, script;
    if (!ReadText(idsPath, ids) || !ReadText(scriptPath, script)) return false;
    std::map<std::string, long> numbers;
    std::istringstream idLines(ids);
    for (std::string line; std::getline(idLines, line);) {
        std::istringstream words(line);
        std::string define, name;
        long number = 0;
        if (words >> define >> name >> number && define == "#define") numbers[name] = number;
    }
    std::ostringstream out;
    out << "// Made by make-art: the pictures and pointers at every larger display scale.\n";
    const std::string folderMark = "\"generated_art/";
    int count = 0;
    std::istringstream scriptLines(script);
    for (std::string line; std::getline(scriptLines, line);) {
        std::istringstream words(line);
        std::string name, type, file;
        if (!(words >> name >> type >> file) || (type != "BITMAP" && type != "CURSOR") ||
            file.rfind(folderMark, 0) != 0 || file.size() < folderMark.size() + 6) {
            continue;
        }
        const auto number = numbers.find(name);
        if (number == numbers.end()) {
            std::cerr << "make-art: " << name << " has no number in " << idsPath << "\n";
            return false;
        }
        // "generated_art/NAME.EXT" without its quotes, cut before the extension.
        const std::string path = file.substr(1, file.size() - 6);
        const std::string ext = file.substr(file.size() - 5, 4);
        for (int step = 1; step < kArtDpiSteps; ++step) {
            out << number->second + static_cast<long>(step * kArtIdStride) << " " << type << " \""
                << path << Mark(kBaseDpi + step * kArtDpiStep) << ext << "\"\n";
        }
        ++count;
    }
    if (count == 0) {
        std::cerr << "make-art: no pictures in " << scriptPath << "\n";
        return false;
    }
    const std::string text = out.str();
    return WriteFile(folder + "scaled_art.rc", std::vector<uint8_t>(text.begin(), text.end()));
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::cerr << "usage: make-art OUTPUT_FOLDER [--scaled RESOURCE_IDS.h ART.rc] FILE.txt...\n";
        return 2;
    }
    const std::string folder = std::string(argv[1]) + "/";
    int first = 2;
    if (std::string(argv[2]) == "--scaled") {
        if (argc < 6 || !WriteScaledScript(folder, argv[3], argv[4])) return argc < 6 ? 2 : 1;
        first = 5;
    }
    for (int i = first; i < argc; ++i) {
        std::string text;
        if (!ReadText(argv[i], text)) return 1;
        ArtPicture picture;
        std::string error;
        if (!ParseArtText(text, picture, error)) {
            std::cerr << argv[i] << ": " << error << "\n";
            return 1;
        }
        if (!WritePictures(folder, BaseName(argv[i]), picture)) return 1;
    }
    return 0;
}
