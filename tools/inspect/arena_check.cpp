#include "tools/inspect/arena_check.h"

#include <algorithm>
#include <cmath>

#include "tools/reference/class_defaults.h"
#include "world/arena.h"
#include "world/beach.h"
#include "world/camera.h"
#include "world/player.h"
#include "world/spawn_point.h"
#include "world/world.h"

namespace dunkman::inspect {

namespace {

constexpr double cameraLag = 1.0;   // units that the camera may be from where it goes
constexpr double heldReach = 5.5;   // units right of a held camera that the hero can come
constexpr double widest = 21.0 / 9; // proportions of a window; wider ones show less height

// The lowest number of spawn points that a script can do with.
std::size_t pointsWanted(std::int32_t variant) {
    const WaveScript* script = waveScriptFor(variant);
    std::int32_t wanted = 0;
    if (script != nullptr) {
        for (const WaveStep& step : script->steps) {
            wanted = std::max(wanted, step.place + 1);
        }
    }
    return static_cast<std::size_t>(wanted);
}

std::string plain(double number) { return reference::plainText(JsonValue::makeFloat(number)); }

} // namespace

void LevelPlaces::add(const std::string& entryName, const Spot& spot) {
    world.walk<Arena>([&](const Arena& arena) {
        const Rect bounds = arena.getBounds();
        fights.push_back(
            {entryName, spot, arena.position.x, (bounds.minX + bounds.maxX) * 0.5, arena.enemyVariant});
    });
    world.walk<SpawnPoint>([&](const SpawnPoint& point) { spawnPoints.push_back(point.position); });
    if (const Player* player = world.first<Player>(); player != nullptr && !hero) {
        hero = player->position;
    }
    if (const Camera* eye = world.first<Camera>(); eye != nullptr && !camera) {
        camera = eye->position;
        cameraOffset = eye->offset;
    }
}

void LevelPlaces::check(Faults& faults) const {
    for (const Fight& fight : fights) {
        const std::size_t wanted = pointsWanted(fight.variant);
        std::size_t found = wanted;
        for (const double centreX : possibleViews(fight)) {
            found = std::min(found, pointsSurelyInView(centreX));
        }
        if (found < wanted) {
            faults.add(fight.spot, fight.entryName + ": the scripted fight that starts at x = " +
                                       plain(fight.line) + " wants " + std::to_string(wanted) +
                                       " SpawnPoint surely in view when the hero comes; there is " +
                                       (found == 0 ? "none" : std::to_string(found)) +
                                       ". Place it near the line that starts the fight, at y from 0 to 4.");
        }
    }
}

double LevelPlaces::startOf(const Fight& fight) const {
    return hero ? std::max(hero->x, fight.line) : fight.line;
}

// Where the camera may be when a fight starts: after the hero, where the level puts it if he stands beyond the line from
// the first, or where another fight holds it.
std::vector<double> LevelPlaces::possibleViews(const Fight& fight) const {
    const double start = startOf(fight);
    std::vector<double> views;
    if (hero && camera && hero->x > fight.line) {
        views.push_back(camera->x);
    } else {
        views.push_back(start);
    }
    for (const Fight& other : fights) {
        if (&other != &fight && startOf(other) <= start && start <= other.middle + heldReach) {
            views.push_back(other.middle);
        }
    }
    return views;
}

std::size_t LevelPlaces::pointsSurelyInView(double centreX) const {
    const double x = std::max(centreX, leftmostView) + cameraOffset.x;
    const double halfHeight = halfViewWidth / widest - beachHalfDepth;
    const auto isInView = [&](Vec2 point) {
        return std::abs(point.x - x) <= halfViewWidth - cameraLag &&
               std::abs(point.y - cameraOffset.y) <= halfHeight;
    };
    return static_cast<std::size_t>(std::count_if(spawnPoints.begin(), spawnPoints.end(), isInView));
}

} // namespace dunkman::inspect
