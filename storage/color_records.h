// The pieces the library file and the list exchange file share: a name as a length byte
// and its characters, and a colour record behind its tag (name, GridSize, 192 bytes of
// cells).
#pragma once

#include "color/color_library.h"
#include "storage/binary_file.h"

namespace tessellum {

class RecordBlocks;

void ReadName(BinaryFile& file, char (&name)[kNameBytes]);
void WriteName(BinaryFile& file, const char (&name)[kNameBytes]);

// Appends the colour read to list; a failure releases the half-read colour.
void ReadColorRecord(BinaryFile& file, ColorList& list, RecordBlocks& blocks);
void WriteColorRecord(BinaryFile& file, const ColorEntry& entry);

}  // namespace tessellum
