#include "audio/decode.h"

#include <span>
#include <string>
#include <utility>
#include <vector>

#include <windows.h>

#include <mferror.h>
#include <objbase.h>

#include "audio/call_result.h"
#include "audio/com_handle.h"
#include "audio/media_foundation_win32.h"
#include "audio/mp3_file.h"
#include "audio/pcm_collector.h"
#include "audio/wave_format.h"
#include "base/debug_output.h"
#include "base/file_contents.h"
#include "base/wide_text_win32.h"

namespace dunkman {

namespace {

constexpr std::uintmax_t maxMusicFileBytes = 256u << 20u; // hours of music

constexpr DWORD allStreams = static_cast<DWORD>(MF_SOURCE_READER_ALL_STREAMS);
constexpr DWORD audioStream = static_cast<DWORD>(MF_SOURCE_READER_FIRST_AUDIO_STREAM);

// Media Foundation, started, and COM, through which it resolves files; that may or may not be initialised on this
// thread.
class MediaSession {
public:
    explicit MediaSession(const MediaFoundationFunctions& itsFunctions)
        : hasCom(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))),
          functions(itsFunctions), startup{"MFStartup", functions.startup(MF_VERSION, MFSTARTUP_LITE)} {}
    ~MediaSession() {
        if (!startup.failed()) {
            functions.shutdown();
        }
        if (hasCom) {
            CoUninitialize();
        }
    }
    MediaSession(const MediaSession&) = delete;
    MediaSession& operator=(const MediaSession&) = delete;

    bool hasCom;
    const MediaFoundationFunctions& functions;
    CallResult startup;
};

// Mono at 48 kHz; not every system converts to that.
CallResult requestFormat(const MediaFoundationFunctions& functions, IMFSourceReader& reader) {
    ComHandle<IMFMediaType> type;
    HRESULT code = functions.createMediaType(type.receive());
    if (FAILED(code)) {
        return {"MFCreateMediaType", code};
    }
    code = functions.initMediaTypeFromWaveFormat(
        type.get(), reinterpret_cast<const WAVEFORMATEX*>(&decodedFormat), sizeof decodedFormat);
    if (FAILED(code)) {
        return {"MFInitMediaTypeFromWaveFormatEx", code};
    }
    return {"IMFSourceReader::SetCurrentMediaType",
            reader.SetCurrentMediaType(audioStream, nullptr, type.get())};
}

// 16-bit PCM in whatever rate and channels the file has.
CallResult requestFormatOfFile(const MediaFoundationFunctions& functions, IMFSourceReader& reader) {
    ComHandle<IMFMediaType> type;
    HRESULT code = functions.createMediaType(type.receive());
    if (FAILED(code)) {
        return {"MFCreateMediaType", code};
    }
    type->SetGUID(MF_MT_MAJOR_TYPE, MFMediaType_Audio);
    type->SetGUID(MF_MT_SUBTYPE, MFAudioFormat_PCM);
    type->SetUINT32(MF_MT_AUDIO_BITS_PER_SAMPLE, decodedFormat.bitsPerSample);
    return {"IMFSourceReader::SetCurrentMediaType",
            reader.SetCurrentMediaType(audioStream, nullptr, type.get())};
}

// Asks the reader what it really delivers.
CallResult adoptFormat(IMFSourceReader& reader, PcmCollector& collector) {
    constexpr const char* call = "IMFSourceReader::GetCurrentMediaType";
    ComHandle<IMFMediaType> type;
    const HRESULT code = reader.GetCurrentMediaType(audioStream, type.receive());
    if (FAILED(code)) {
        return {call, code};
    }
    GUID subtype = {};
    UINT32 bits = 0;
    UINT32 channels = 0;
    UINT32 rate = 0;
    type->GetGUID(MF_MT_SUBTYPE, &subtype);
    type->GetUINT32(MF_MT_AUDIO_BITS_PER_SAMPLE, &bits);
    type->GetUINT32(MF_MT_AUDIO_NUM_CHANNELS, &channels);
    type->GetUINT32(MF_MT_AUDIO_SAMPLES_PER_SECOND, &rate);
    if (subtype != MFAudioFormat_PCM || bits != decodedFormat.bitsPerSample || channels == 0 || rate == 0) {
        return {call, static_cast<std::int32_t>(MF_E_INVALIDMEDIATYPE)};
    }
    collector.setFormat(channels, rate);
    return {};
}

CallResult appendSample(IMFSample& sample, PcmCollector& collector) {
    ComHandle<IMFMediaBuffer> buffer;
    HRESULT code = sample.ConvertToContiguousBuffer(buffer.receive());
    if (FAILED(code)) {
        return {"IMFSample::ConvertToContiguousBuffer", code};
    }
    BYTE* data = nullptr;
    DWORD length = 0;
    code = buffer->Lock(&data, nullptr, &length);
    if (FAILED(code)) {
        return {"IMFMediaBuffer::Lock", code};
    }
    collector.append(std::as_bytes(std::span(data, length)));
    buffer->Unlock();
    return {};
}

// Until the end of the file or the first failing call.
CallResult readSamples(IMFSourceReader& reader, PcmCollector& collector) {
    while (true) {
        ComHandle<IMFSample> sample;
        DWORD flags = 0;
        const HRESULT code = reader.ReadSample(audioStream, 0, nullptr, &flags, nullptr, sample.receive());
        if (FAILED(code)) {
            return {"IMFSourceReader::ReadSample", code};
        }
        if ((flags & MF_SOURCE_READERF_ENDOFSTREAM) != 0) {
            return {};
        }
        if ((flags & MF_SOURCE_READERF_CURRENTMEDIATYPECHANGED) != 0) {
            const CallResult adopted = adoptFormat(reader, collector);
            if (adopted.failed()) {
                return adopted;
            }
        }
        if (sample.get() == nullptr) {
            continue; // a gap in the stream, or only the change of format
        }
        const CallResult appended = appendSample(*sample.get(), collector);
        if (appended.failed()) {
            return appended;
        }
    }
}

CallResult decodeFile(const MediaFoundationFunctions& functions, const std::wstring& path,
                      PcmCollector& collector) {
    const MediaSession session(functions);
    if (session.startup.failed()) {
        return session.startup;
    }
    ComHandle<IMFSourceReader> reader;
    const HRESULT code = functions.createSourceReaderFromUrl(path.c_str(), nullptr, reader.receive());
    if (FAILED(code)) {
        return {"MFCreateSourceReaderFromURL", code};
    }
    reader->SetStreamSelection(allStreams, FALSE);
    reader->SetStreamSelection(audioStream, TRUE);
    if (requestFormat(functions, *reader.get()).failed()) {
        const CallResult requested = requestFormatOfFile(functions, *reader.get());
        if (requested.failed()) {
            return requested;
        }
    }
    const CallResult adopted = adoptFormat(*reader.get(), collector);
    return adopted.failed() ? adopted : readSamples(*reader.get(), collector);
}

} // namespace

MusicTrack decodeMusic(const std::wstring& path) {
    const std::string name = utf8Text(path);
    const FileContents file = readFile(name, maxMusicFileBytes);
    if (file.fault != FileFault::None) {
        debugText("audio: " + name + " cannot be read: no music from it");
        return {};
    }
    const Mp3Fault fault = examineMp3(std::as_bytes(std::span(file.bytes.text())));
    if (fault == Mp3Fault::Empty || fault == Mp3Fault::NotMp3) {
        debugText("audio: " + name + " " + describe(fault) + ": no music from it");
        return {};
    }
    const MediaFoundationFunctions* const functions = mediaFoundation();
    if (functions == nullptr) {
        return {};
    }
    PcmCollector collector;
    const CallResult decoded = decodeFile(*functions, path, collector);
    MusicTrack track;
    track.samples = collector.take();
    track.position = track.frameCount();
    if (fault == Mp3Fault::CutOff) {
        const char* const consequence =
            track.samples.empty() ? ": no music from it" : ": it plays as far as it goes";
        debugText("audio: " + name + " " + describe(fault) + consequence);
    } else if (decoded.failed()) {
        const std::string consequence = track.samples.empty() ? "no music from " : "not all music from ";
        debugText(describe(decoded, (consequence + name).c_str()));
    }
    return track;
}

} // namespace dunkman
