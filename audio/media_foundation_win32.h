#pragma once

#include <windows.h>

#include <mfapi.h>
#include <mfidl.h>
#include <mfreadwrite.h>

namespace dunkman {

// Media Foundation's functions as far as the decoder calls them. They are looked up at run time: an edition of Windows
// without media features lacks their libraries, and a program that names them in its imports does not even start there.
struct MediaFoundationFunctions {
    decltype(&::MFStartup) startup = nullptr;
    decltype(&::MFShutdown) shutdown = nullptr;
    decltype(&::MFCreateMediaType) createMediaType = nullptr;
    decltype(&::MFInitMediaTypeFromWaveFormatEx) initMediaTypeFromWaveFormat = nullptr;
    decltype(&::MFCreateSourceReaderFromURL) createSourceReaderFromUrl = nullptr;
};

// Null where the system has none; the first call writes one line about that to the debugger output. The libraries stay
// loaded. Main thread only.
const MediaFoundationFunctions* mediaFoundation();

} // namespace dunkman
