#include "workshop/playthrough/course.h"

#include <cstdio>

#include "workshop/playthrough/senses.h"
#include "world/world.h"

namespace dunkman::playthrough {

void Course::note(std::int64_t step, int planLine) {
    if (!told) {
        return;
    }
    const std::size_t kills = world.objectsOfType(ObjectType::ZombieDead).size();
    const bool armed = static_cast<bool>(hero().heldWeapon);
    if (planLine != lastLine || hero().health != lastHealth || kills != lastKills || armed != lastArmed) {
        std::printf("%7.2f s  x %6.2f y %5.2f  plan line %3d  hearts %d  corpses %zu  %s%s\n",
                    static_cast<double>(step) / 60.0, hero().position.x, hero().position.y, planLine,
                    hero().health, kills,
                    armed ? (holdsRangedWeapon() ? "pineapple" : "flamingo") : "unarmed",
                    cameraIsHeld() ? "  held" : "");
    }
    lastLine = planLine;
    lastHealth = hero().health;
    lastKills = kills;
    lastArmed = armed;
}

void FightReport::note(std::int64_t step) {
    for (; next < toCome.size() && hero().position.x > toCome[next]; ++next) {
        std::printf("%7.2f s  the fight at x = %g, with %d hearts\n", static_cast<double>(step) / 60.0,
                    toCome[next], hero().health);
    }
}

} // namespace dunkman::playthrough
