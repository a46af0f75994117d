#pragma once

#include <cstdlib>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace dunkman {

// A `draw` line of a trace, taken apart.
struct DrawnSprite {
    std::string image; // key, or glyph:A
    unsigned flags = 0;
    std::vector<double> dest; // lower corner from the position, width, height
    std::vector<double> pos;  // position, cosine, sine
    double z = 0.0;

    double centreX() const { return pos[0] + dest[0] + dest[2] / 2.0; }
    double centreY() const { return pos[1] + dest[1] + dest[3] / 2.0; }
};

inline std::vector<double> numbers(const std::string& text) {
    std::vector<double> values;
    std::istringstream stream(text);
    for (std::string item; std::getline(stream, item, ',');) {
        values.push_back(std::strtod(item.c_str(), nullptr));
    }
    return values;
}

// The sprites among the lines; `view` lines are passed over.
inline std::vector<DrawnSprite> drawnSprites(const std::vector<std::string>& lines) {
    std::vector<DrawnSprite> sprites;
    for (const std::string& line : lines) {
        if (!line.starts_with("draw ")) {
            continue;
        }
        std::map<std::string, std::string> fields;
        std::istringstream stream(line.substr(5));
        for (std::string field; stream >> field;) {
            fields[field.substr(0, field.find('='))] = field.substr(field.find('=') + 1);
        }
        sprites.push_back({fields["image"], static_cast<unsigned>(std::stoul(fields["flags"])),
                           numbers(fields["dest"]), numbers(fields["pos"]), numbers(fields["z"])[0]});
    }
    return sprites;
}

// The letters drawn, in order, as one string; pictures are passed over.
inline std::string lettersOf(const std::vector<DrawnSprite>& sprites) {
    std::string letters;
    for (const DrawnSprite& sprite : sprites) {
        if (sprite.image.starts_with("glyph:")) {
            letters += sprite.image.substr(6);
        }
    }
    return letters;
}

} // namespace dunkman
