#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/geometry.h"
#include "tools/inspect/faults.h"

namespace dunkman::inspect {

// What matters for fights, of a whole level.
class LevelPlaces {
public:
    // Takes in what is in the world now, as made by one entry.
    void add(const std::string& entryName, const Spot& spot);

    // Reports scripted fights for whose spawn points it is not certain that they are in view when the hero comes,
    // however he walks and whatever the proportions of the window.
    void check(Faults& faults) const;

private:
    struct Fight {
        std::string entryName;
        Spot spot;
        double line = 0.0;   // x at which it starts
        double middle = 0.0; // where it holds the camera
        std::int32_t variant = 0;
    };

    struct Hero {
        double x = 0.0;      // where he begins
        double centre = 0.0; // of his picture, from his place
        double speed = 0.0;  // the highest he walks at, units/s
    };

    std::size_t pointsSurelyInView(Vec2 centre) const;
    std::vector<Vec2> possibleViews(const Fight& fight) const;
    double startOf(const Fight& fight) const;
    double cameraLag() const;

    std::vector<Fight> fights;
    std::vector<Vec2> spawnPoints;
    std::optional<Hero> hero;
    std::optional<Vec2> camera;
    Vec2 cameraOffset;
};

} // namespace dunkman::inspect
