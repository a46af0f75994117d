#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "audio/mp3_file.h"
#include "tools/inspect/file_checks.h"

namespace dunkman::inspect {

void checkMusic(Faults& faults) {
    for (const char* path : {"zombiegame.mp3", "intro.mp3"}) {
        const Spot spot{path, 1, 1};
        std::error_code ignored;
        if (!std::filesystem::is_regular_file(path, ignored)) {
            faults.add(spot, "The music is missing; the game stays silent without it.");
            continue;
        }
        std::ifstream file(path, std::ios::binary);
        const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
        const Mp3Fault fault = examineMp3(std::as_bytes(std::span(bytes)));
        if (fault != Mp3Fault::None) {
            faults.add(spot, std::string("The music ") + describe(fault) + '.');
        }
    }
}

} // namespace dunkman::inspect
