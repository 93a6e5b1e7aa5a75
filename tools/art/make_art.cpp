// Build-time generator of the plug-in's pictures: reads text art and writes, into the
// output folder, NAME.bmp or NAME.cur for each NAME.txt (and the selected form of a
// button under the name its text gives).
//
//   make-art OUTPUT_FOLDER FILE.txt...
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

#include "tools/art/art_files.h"
#include "tools/art/art_text.h"

namespace {

using namespace tessellum::art;

bool WriteFile(const std::string& path, const std::vector<uint8_t>& bytes) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(bytes.data()),
              static_cast<std::streamsize>(bytes.size()));
    out.close();
    if (!out) std::cerr << "make-art: cannot write " << path << "\n";
    return static_cast<bool>(out);
}

std::string BaseName(const std::string& path) {
    const size_t slash = path.find_last_of('/');
    std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
    const size_t dot = name.rfind('.');
    return dot == std::string::npos ? name : name.substr(0, dot);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::cerr << "usage: make-art OUTPUT_FOLDER FILE.txt...\n";
        return 2;
    }
    const std::string folder = std::string(argv[1]) + "/";
    for (int i = 2; i < argc; ++i) {
        std::ifstream in(argv[i], std::ios::binary);
        if (!in) {
            std::cerr << "make-art: cannot read " << argv[i] << "\n";
            return 1;
        }
        const std::string text{std::istreambuf_iterator<char>(in),
                               std::istreambuf_iterator<char>()};
        ArtPicture picture;
        std::string error;
        if (!ParseArtText(text, picture, error)) {
            std::cerr << argv[i] << ": " << error << "\n";
            return 1;
        }
        const std::string name = BaseName(argv[i]);
        if (picture.cursor) {
            if (!WriteFile(folder + name + ".cur", CursorFileBytes(picture))) return 1;
            continue;
        }
        if (!WriteFile(folder + name + ".bmp", BitmapFileBytes(picture))) return 1;
        if (!picture.selectedName.empty() && !WriteFile(folder + picture.selectedName + ".bmp",
                                                        BitmapFileBytes(SelectedForm(picture)))) {
            return 1;
        }
    }
    return 0;
}
