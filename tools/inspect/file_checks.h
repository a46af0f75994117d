#pragma once

#include "tools/inspect/data_file.h"

namespace dunkman::inspect {

// Checks of the files that hold no level. All paths are relative to the current directory.

void checkImages(const DataFile& images, Faults& faults); // the textures too
void checkGlyphs(Faults& faults);
void checkMusic(Faults& faults);
void checkRecording(const DataFile& recording, Faults& faults);

} // namespace dunkman::inspect
