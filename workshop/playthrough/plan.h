#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace dunkman::playthrough {

// A plan that cannot be read. what() is "NAME:LINE: message".
class PlanError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

enum class Verb {
    Act,   // X NAME: here begins this act, at this x; takes no time
    Wait,  // SECONDS: no key down
    Walk,  // X Y
    Face,  // left | right
    Take,  // flamingo | pineapple: the nearest one, dropping what is in hand
    Swing, // COUNT: attacks at once, whoever is there
    Snipe, // DISTANCE: one throw that will hit a zombie at least so far away
    Kite,  // SECONDS: runs rings around the zombies without hitting back
    Fight, // careful | reckless, then an end: clear | broken | hearts COUNT | kills COUNT | seconds SECONDS |
           // death
};

// Apart from seconds and death, a fight also ends when nobody is left.

enum class FightEnd { Clear, Broken, Hearts, Kills, Seconds, Death };

// One line of a plan: what the hero wants until it is done.
struct Intention {
    Verb verb = Verb::Wait;
    double x = 0.0;   // the first number of the line; units, seconds or a count
    double y = 0.0;   // the second one
    std::string word; // of a face or take, and the name of an act
    bool careful = true;
    FightEnd end = FightEnd::Clear;
    int line = 0;
};

// One intention a line; "#" starts a comment. Throws PlanError.
std::vector<Intention> readPlan(std::string_view text, const std::string& name);
std::vector<Intention> readPlanFile(const std::string& path);

} // namespace dunkman::playthrough
