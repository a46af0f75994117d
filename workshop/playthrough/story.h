#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "workshop/playthrough/plan.h"

namespace dunkman::playthrough {

// A stretch of the beach, as the plan names it.
struct Act {
    double from = 0.0; // x
    std::string name;
};

// The acts of a plan, in its order.
std::vector<Act> actsOf(const std::vector<Intention>& plan);

// The x of every line that starts a fight in the world as it stands, from left to right, each once.
std::vector<double> fightLines();

// Watches a game and says what was left out of its story: the hero comes to every act and into every fight, and falls
// in the last one.
class Story {
public:
    // Both from left to right. A level without acts is one act.
    Story(std::vector<Act> levelActs, std::vector<double> levelFights);

    // After each step: which line of the plan the hero follows, 0 for none, where he is, and whether a fight is on.
    void note(int line, double x, bool inFight);

    // Of a game of so many steps: one sentence each, its end first. None if all was told.
    std::vector<std::string> faults(std::int64_t steps, bool died) const;

private:
    std::string duringFight() const;
    std::string nameOf(const Act& act) const;
    const Act& actAt(double x) const;
    std::string endOf(std::int64_t steps) const;
    std::string firstMissed() const;
    std::string missedIn(const Act& act) const;

    std::vector<Act> acts;
    std::vector<double> fights;
    double heroX = 0.0;
    double furthest;
    bool fighting = false;
    int planLine = 0;
};

} // namespace dunkman::playthrough
