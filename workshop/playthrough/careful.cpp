#include "workshop/playthrough/careful.h"

#include <algorithm>
#include <cstdio>
#include <vector>

#include "workshop/playthrough/author.h"
#include "workshop/playthrough/story.h"
#include "world/world.h"
#include "world/zombie.h"

namespace dunkman::playthrough {

namespace {

constexpr double beforeZombie = 2.4; // units: out of reach, but near enough to be noticed
constexpr double behindLine = 0.4;

// Of the world as it stands, from left to right.
std::vector<double> stops() {
    std::vector<double> places;
    world.walk<Zombie>(
        [&places](const Zombie& zombie) { places.push_back(zombie.position.x - beforeZombie); });
    for (const double line : fightLines()) {
        places.push_back(line + behindLine);
    }
    std::sort(places.begin(), places.end());
    return places;
}

} // namespace

std::string carefulPlan() {
    std::string plan = "take flamingo\n";
    Conditions beforeTheFirstStep;
    beforeTheFirstStep.longest = 0;
    beforeTheFirstStep.prepare = [&plan] {
        const std::vector<double> places = stops();
        for (std::size_t stop = 0; stop < places.size(); ++stop) {
            char text[80];
            std::snprintf(text, sizeof text, "walk %.2f 0\nfight careful %s\n", places[stop],
                          stop + 1 < places.size() ? "clear" : "death");
            plan += text;
        }
    };
    perform(std::vector<Intention>(), beforeTheFirstStep);
    return plan;
}

} // namespace dunkman::playthrough
