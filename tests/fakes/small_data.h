#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace dunkman {

// A data directory of its own for a test: every image and letter that the program looks up as a 4 by 4 texture, the
// game's own shaders, a scene of one hero and one camera, no recording and no music. It is the current directory
// while this lives and is gone afterwards.
class SmallData {
public:
    SmallData();
    ~SmallData();
    SmallData(const SmallData&) = delete;
    SmallData& operator=(const SmallData&) = delete;

    // Writes a file of the directory, byte for byte, in place of any earlier one.
    void write(const std::string& path, std::string_view text) const;
    std::string read(const std::string& path) const;
    void remove(const std::string& path) const;

    std::filesystem::path folder;

protected:
    std::filesystem::path previousFolder;
};

// The bytes of a DXT1 file of one level, all texels opaque white.
std::string smallDds(unsigned width, unsigned height);

} // namespace dunkman
