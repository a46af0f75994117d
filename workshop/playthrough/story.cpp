#include "workshop/playthrough/story.h"

#include <algorithm>
#include <cstdio>
#include <limits>
#include <utility>

#include "world/arena.h"
#include "world/world.h"

namespace dunkman::playthrough {

namespace {

constexpr double farLeft = std::numeric_limits<double>::lowest();

std::string toOneDecimal(double value) {
    char text[340]; // the largest double has 309 digits
    std::snprintf(text, sizeof text, "%.1f", value);
    return text;
}

std::string inShort(double value) {
    char text[40];
    std::snprintf(text, sizeof text, "%g", value);
    return text;
}

std::string fightAt(double x) { return "the fight at x = " + inShort(x); }

} // namespace

std::vector<Act> actsOf(const std::vector<Intention>& plan) {
    std::vector<Act> acts;
    for (const Intention& intention : plan) {
        if (intention.verb == Verb::Act) {
            acts.push_back({intention.x, intention.word});
        }
    }
    return acts;
}

std::vector<double> fightLines() {
    std::vector<double> lines;
    world.walk<Arena>([&lines](const Arena& arena) { lines.push_back(arena.position.x); });
    std::sort(lines.begin(), lines.end());
    lines.erase(std::unique(lines.begin(), lines.end()), lines.end());
    return lines;
}

Story::Story(std::vector<Act> levelActs, std::vector<double> levelFights)
    : acts(std::move(levelActs)), fights(std::move(levelFights)), furthest(farLeft) {
    if (acts.empty()) {
        acts.push_back({farLeft, ""});
    }
}

void Story::note(int line, double x, bool inFight) {
    fighting = inFight;
    planLine = line;
    heroX = x;
    furthest = std::max(furthest, x);
}

std::vector<std::string> Story::faults(std::int64_t steps, bool died) const {
    std::vector<std::string> found;
    const std::string missed = firstMissed();
    if (!died) {
        found.push_back(endOf(steps) + ": the hero is still alive, but he has to fall in the last fight");
    } else if (!missed.empty()) {
        found.push_back(endOf(steps) + ": the hero dies" + duringFight() + " before " + missed);
    }
    for (const Act& act : acts) {
        if (std::string line = missedIn(act); !line.empty()) {
            found.push_back(std::move(line));
        }
    }
    return found;
}

// " in the fight at x = 33," of the last one that he came to, while it is on.
std::string Story::duringFight() const {
    const auto next = std::find_if(fights.begin(), fights.end(), [this](double x) { return x >= furthest; });
    return fighting && next != fights.begin() ? " in " + fightAt(*(next - 1)) + "," : "";
}

std::string Story::nameOf(const Act& act) const {
    if (act.name.empty()) {
        return "the level";
    }
    return "act " + std::to_string(&act - acts.data() + 1) + " (" + act.name + ")";
}

const Act& Story::actAt(double x) const {
    const auto next =
        std::find_if(acts.begin() + 1, acts.end(), [x](const Act& act) { return act.from > x; });
    return *(next - 1);
}

std::string Story::endOf(std::int64_t steps) const {
    std::string place = "step " + std::to_string(steps) + " (" +
                        toOneDecimal(static_cast<double>(steps) / 60.0) + " s), " + nameOf(actAt(heroX)) +
                        ", x = " + toOneDecimal(heroX);
    if (planLine != 0) {
        place += ", line " + std::to_string(planLine) + " of the plan";
    }
    return place;
}

// What comes first from left to right, act or fight.
std::string Story::firstMissed() const {
    const auto isMissed = [this](double x) { return x >= furthest; };
    const auto fight = std::find_if(fights.begin(), fights.end(), isMissed);
    const auto act = std::find_if(acts.begin(), acts.end(), [&](const Act& a) { return isMissed(a.from); });
    if (act != acts.end() && (fight == fights.end() || act->from <= *fight)) {
        return nameOf(*act);
    }
    return fight != fights.end() ? fightAt(*fight) : "";
}

std::string Story::missedIn(const Act& act) const {
    const bool actIsMissed = act.from >= furthest;
    std::string missed = actIsMissed ? nameOf(act) + " is not reached" : "";
    for (const double fight : fights) {
        if (fight >= furthest && &actAt(fight) == &act) {
            missed += (missed.empty() ? nameOf(act) + ": " : ", ") + fightAt(fight) +
                      (actIsMissed ? " neither" : " is not reached");
        }
    }
    return missed;
}

} // namespace dunkman::playthrough
