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

constexpr double heldReach = 5.5;    // units right of the middle of a held view that the hero can come
constexpr double widest = 21.0 / 9;  // proportions of a window; wider ones show less height
constexpr double settlingTime = 3.0; // seconds after which a camera is where it follows to
constexpr double easingRate = 4.0;   // 1/s, of the camera
constexpr double longStep = 0.05;    // seconds

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
        const Rect bounds = player->getBounds();
        const double topSpeed = player->acceleration.x / std::max(player->friction.x, 1e-3);
        hero = Hero{player->position.x, (bounds.minX + bounds.maxX) * 0.5 - player->position.x,
                    std::max(std::abs(topSpeed), std::abs(player->velocity.x))};
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
        for (const Vec2 centre : possibleViews(fight)) {
            found = std::min(found, pointsSurelyInView(centre));
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

double LevelPlaces::cameraLag() const {
    return hero ? hero->speed * (1.0 / easingRate + longStep) + 0.4 : 0.0;
}

// Where the camera may be when a fight starts, or between which places: after the hero; where the level puts it, if he has
// hardly begun; where another fight holds it. A point that all of these see is seen from everywhere between them.
std::vector<Vec2> LevelPlaces::possibleViews(const Fight& fight) const {
    const double start = startOf(fight);
    std::vector<Vec2> views = {{start + (hero ? hero->centre : 0.0), 0.0}};
    if (hero && camera && start <= hero->x + hero->speed * settlingTime) {
        views.push_back(*camera);
    }
    for (const Fight& other : fights) {
        const double reach = other.middle + cameraOffset.x + heldReach + (hero ? hero->speed : 0.0);
        if (&other != &fight && startOf(other) <= start && start <= reach) {
            views.push_back({other.middle, 0.0});
        }
    }
    return views;
}

std::size_t LevelPlaces::pointsSurelyInView(Vec2 centre) const {
    const double x = std::max(centre.x, leftmostView) + cameraOffset.x;
    const double y = centre.y + cameraOffset.y;
    const double halfWidth = halfViewWidth - cameraLag();
    const double halfHeight = halfViewWidth / widest - beachHalfDepth; // the camera's height is the hero's
    const auto isInView = [&](Vec2 point) {
        return std::abs(point.x - x) <= halfWidth && std::abs(point.y - y) <= halfHeight;
    };
    return static_cast<std::size_t>(std::count_if(spawnPoints.begin(), spawnPoints.end(), isInView));
}

} // namespace dunkman::inspect
