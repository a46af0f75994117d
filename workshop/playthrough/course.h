#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

// What people are told, on standard output, of a game while it is played.
namespace dunkman::playthrough {

// One line whenever the hero's hearts, his weapon, the number of the fallen or his place in the plan change.
class Course {
public:
    explicit Course(bool isTold) : told(isTold) {}

    // After each step.
    void note(std::int64_t step, int planLine);

private:
    bool told;
    int lastLine = -1;
    int lastHealth = 0;
    std::size_t lastKills = 0;
    bool lastArmed = false;
};

// One line whenever the hero comes to a fight.
class FightReport {
public:
    // The lines that start them, from left to right.
    void expect(std::vector<double> lines) { toCome = std::move(lines); }

    // After each step.
    void note(std::int64_t step);

private:
    std::vector<double> toCome;
    std::size_t next = 0;
};

} // namespace dunkman::playthrough
