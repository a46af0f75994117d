#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <string>

#include "app/reset.h"
#include "base/fatal.h"
#include "tools/console/about.h"
#include "tools/headless/runner.h"
#include "workshop/playthrough/author.h"
#include "workshop/playthrough/senses.h"
#include "world/world.h"

namespace {

using namespace dunkman;

constexpr const char* usage =
    "usage: dunkman-author PLAN KEYS [--data DIR] [--seconds N] [--reaction STEPS] [--verbose]\n"
    "       dunkman-author --help | --version\n"
    "Plays the game by PLAN and writes the keys that were pressed to KEYS, for dunkman-headless --keys.\n";

struct Arguments {
    std::string plan;
    std::string keys;
    std::string data = "data";
    std::int64_t seconds = 240;
    int reactionSteps = 0;
    bool verbose = false;
};

// Nothing for unusable arguments.
bool readArguments(int count, char** words, Arguments& arguments) {
    int place = 0;
    for (int index = 1; index < count; ++index) {
        const std::string word = words[index];
        if (word == "--verbose") {
            arguments.verbose = true;
        } else if (word == "--data" && index + 1 < count) {
            arguments.data = words[++index];
        } else if (word == "--seconds" && index + 1 < count) {
            arguments.seconds = std::atoll(words[++index]);
        } else if (word == "--reaction" && index + 1 < count) {
            arguments.reactionSteps = std::atoi(words[++index]);
        } else if (place < 2 && word.substr(0, 2) != "--") {
            (place++ == 0 ? arguments.plan : arguments.keys) = word;
        } else {
            return false;
        }
    }
    return place == 2 && arguments.seconds > 0 && arguments.reactionSteps >= 0;
}

// One line whenever the hero's heart, weapon or place in the plan changes.
class Report {
public:
    bool operator()(std::int64_t step, int planLine) {
        const Player& hero = playthrough::hero();
        const std::size_t kills = world.objectsOfType(ObjectType::ZombieDead).size();
        const bool armed = static_cast<bool>(hero.heldWeapon);
        if (planLine != lastLine || hero.health != lastHealth || kills != lastKills || armed != lastArmed) {
            std::printf("%7.2f s  x %6.2f y %5.2f  plan line %3d  hearts %d  corpses %zu  %s%s\n",
                        static_cast<double>(step) / 60.0, hero.position.x, hero.position.y, planLine,
                        hero.health, kills,
                        armed ? (playthrough::holdsRangedWeapon() ? "pineapple" : "flamingo") : "unarmed",
                        playthrough::cameraIsHeld() ? "  held" : "");
        }
        lastLine = planLine;
        lastHealth = hero.health;
        lastKills = kills;
        lastArmed = armed;
        return true;
    }

private:
    int lastLine = -1;
    int lastHealth = 0;
    std::size_t lastKills = 0;
    bool lastArmed = false;
};

int author(const Arguments& arguments) {
    const std::vector<playthrough::Intention> plan = playthrough::readPlanFile(arguments.plan);
    std::ofstream file(arguments.keys, std::ios::binary);
    std::filesystem::current_path(arguments.data);
    const playthrough::Watcher watcher =
        arguments.verbose ? playthrough::Watcher(Report()) : playthrough::Watcher();
    playthrough::Conditions conditions;
    conditions.longest = arguments.seconds * 60;
    conditions.reactionSteps = arguments.reactionSteps;
    const playthrough::Performance performance = playthrough::perform(plan, conditions, watcher);
    resetProgram();
    file << "# Made by dunkman-author from " << std::filesystem::path(arguments.plan).filename().string()
         << ".\n"
         << playthrough::keyScriptOf(performance);
    file.close();
    std::printf("%.2f s, the hero %s\n", static_cast<double>(performance.steps) / 60.0,
                performance.died ? "died" : "lives");
    if (!file) {
        std::fprintf(stderr, "%s cannot be written\n", arguments.keys.c_str());
        return 1;
    }
    return 0;
}

} // namespace

int main(int argumentCount, char** words) {
    if (console::tellAbout(argumentCount, words, "dunkman-author", usage)) {
        return 0;
    }
    Arguments arguments;
    if (!readArguments(argumentCount, words, arguments)) {
        std::fputs(usage, stderr);
        return 2;
    }
    try {
        return author(arguments);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
