#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <filesystem>
#include <span>
#include <string>
#include <vector>

#include "audio/decode.h"
#include "audio/pcm_collector.h"
#include "base/debug_output.h"
#include "base/fatal.h"

namespace dunkman {

namespace {

// A run of ffmpeg whose standard output is read here.
class Decoder {
public:
    explicit Decoder(const std::string& file) {
        std::array<int, 2> ends{};
        if (pipe(ends.data()) != 0) {
            fatal(std::string("No pipe to ffmpeg: ") + std::strerror(errno));
        }
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
        posix_spawn_file_actions_addclose(&actions, ends[0]);
        posix_spawn_file_actions_addclose(&actions, ends[1]);
        // The format that the game asks for: 16 bits, mono, 48 kHz.
        std::vector<std::string> words = {"ffmpeg",       "-nostdin", "-v",    "quiet", "-i",
                                          "file:" + file, "-f",       "s16le", "-ac",   "1",
                                          "-ar",          "48000",    "-"};
        std::vector<char*> arguments(words.size() + 1, nullptr);
        std::ranges::transform(words, arguments.begin(), [](std::string& word) { return word.data(); });
        const int error = posix_spawnp(&process, "ffmpeg", &actions, nullptr, arguments.data(), environ);
        posix_spawn_file_actions_destroy(&actions);
        close(ends[1]);
        output = ends[0];
        if (error != 0) {
            close(output);
            fatal(std::string("ffmpeg, which decodes the music, cannot be run: ") + std::strerror(error) +
                  ". Install ffmpeg.");
        }
    }

    ~Decoder() {
        close(output);
        waitpid(process, nullptr, 0);
    }

    Decoder(const Decoder&) = delete;
    Decoder& operator=(const Decoder&) = delete;

    // Fills a part of `bytes` and answers how much; 0 at the end.
    std::size_t read(std::span<std::byte> bytes) const {
        ssize_t count = 0;
        do {
            count = ::read(output, bytes.data(), bytes.size());
        } while (count < 0 && errno == EINTR);
        return count > 0 ? static_cast<std::size_t>(count) : 0;
    }

private:
    pid_t process = 0;
    int output = -1;
};

} // namespace

MusicTrack decodeMusic(const std::wstring& path) {
    const std::string file = std::filesystem::path(path).string();
    PcmCollector collector;
    {
        const Decoder decoder(file);
        std::vector<std::byte> bytes(65536);
        for (std::size_t count = decoder.read(bytes); count > 0; count = decoder.read(bytes)) {
            collector.append(std::span(bytes).first(count));
        }
    }
    MusicTrack track;
    track.samples = collector.take();
    track.position = track.frameCount();
    if (track.samples.empty()) {
        debugText("audio: " + file + " cannot be read, or is no MP3: no music from it");
    }
    return track;
}

} // namespace dunkman
