#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include "app/reset.h"
#include "base/fatal.h"
#include "tools/console/about.h"
#include "tools/console/fault.h"
#include "tools/headless/key_script.h"
#include "tools/headless/runner.h"
#include "workshop/playthrough/author.h"
#include "workshop/playthrough/careful.h"
#include "workshop/playthrough/course.h"
#include "workshop/playthrough/senses.h"
#include "workshop/playthrough/story.h"

namespace {

using namespace dunkman;
using playthrough::Performance;

constexpr const char* usage =
    "usage: dunkman-author PLAN KEYS [--keep-keys] [--data DIR] [--seconds N] [--reaction STEPS] "
    "[--verbose]\n"
    "       dunkman-author --careful [--data DIR] [--seconds N] [--reaction STEPS] [--verbose]\n"
    "       dunkman-author --help | --version\n"
    "Plays the game by PLAN and writes the keys that were pressed to KEYS, for dunkman-headless --keys. "
    "Writes nothing,\n"
    "and ends with status 1, when the game does not tell its story: the hero has to come to every act of "
    "PLAN and into\n"
    "every fight of the scene, and to fall in the last one.\n"
    "  --keep-keys   plays KEYS, which stays as it is; only the acts are taken from PLAN\n"
    "  --careful     plays as somebody who takes no risks, and tells with how many hearts he comes to each "
    "fight\n"
    "  --reaction    how many steps of 1/60 s pass between what is seen and what the fingers do (0)\n"
    "  --verbose     a line whenever a heart, the weapon, the fallen or the line of the plan change\n";

struct Arguments {
    std::string plan;
    std::string keys;
    std::string data = "data";
    std::int64_t seconds = 240;
    int reactionSteps = 0;
    bool keepKeys = false;
    bool careful = false;
    bool verbose = false;
};

// False for unusable arguments.
bool readArguments(int count, char** words, Arguments& arguments) {
    int place = 0;
    for (int index = 1; index < count; ++index) {
        const std::string word = words[index];
        if (word == "--verbose") {
            arguments.verbose = true;
        } else if (word == "--keep-keys") {
            arguments.keepKeys = true;
        } else if (word == "--careful") {
            arguments.careful = true;
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
    return place == (arguments.careful ? 0 : 2) && arguments.seconds > 0 && arguments.reactionSteps >= 0;
}

playthrough::Conditions conditionsOf(const Arguments& arguments) {
    playthrough::Conditions conditions;
    conditions.longest = arguments.seconds * 60;
    conditions.reactionSteps = arguments.reactionSteps;
    return conditions;
}

void tellEnd(const Performance& performance) {
    std::printf("%.2f s, the hero %s\n", static_cast<double>(performance.steps) / 60.0,
                performance.died ? "died" : "lives");
}

int playCarefully(const Arguments& arguments) {
    std::filesystem::current_path(arguments.data);
    playthrough::Course course(arguments.verbose);
    playthrough::FightReport fights;
    const auto plan = playthrough::readPlan(playthrough::carefulPlan(), "the careful player");
    playthrough::Conditions conditions = conditionsOf(arguments);
    conditions.prepare = [&fights] { fights.expect(playthrough::fightLines()); };
    tellEnd(playthrough::perform(plan, conditions, [&](std::int64_t step, int planLine) {
        course.note(step, planLine);
        fights.note(step);
        return true;
    }));
    resetProgram();
    return 0;
}

bool writeKeys(const std::string& path, const std::string& planName, const Performance& performance) {
    std::ofstream file(path, std::ios::binary);
    file << "# Made by dunkman-author from " << planName << ".\n" << playthrough::keyScriptOf(performance);
    file.close();
    return static_cast<bool>(file);
}

int author(const Arguments& arguments) {
    const std::vector<playthrough::Intention> plan = playthrough::readPlanFile(arguments.plan);
    const std::string keysPath = std::filesystem::absolute(arguments.keys).string();
    std::optional<headless::KeyScript> keptKeys;
    if (arguments.keepKeys) {
        keptKeys = headless::KeyScript::readFile(arguments.keys);
    }
    std::filesystem::current_path(arguments.data);
    playthrough::Course course(arguments.verbose);
    std::optional<playthrough::Story> story;
    playthrough::Conditions conditions = conditionsOf(arguments);
    conditions.prepare = [&] { story.emplace(playthrough::actsOf(plan), playthrough::fightLines()); };
    const playthrough::Watcher watch = [&](std::int64_t step, int planLine) {
        course.note(step, planLine);
        story->note(planLine, playthrough::hero().position.x, playthrough::cameraIsHeld());
        return true;
    };
    const Performance performance = keptKeys ? playthrough::perform(*keptKeys, conditions, watch)
                                             : playthrough::perform(plan, conditions, watch);
    resetProgram();
    const std::vector<std::string> faults = story->faults(performance.steps, performance.died);
    if (!faults.empty()) {
        std::fprintf(stderr, "%s does not tell the story of this level:\n",
                     (keptKeys ? arguments.keys : arguments.plan).c_str());
        for (const std::string& fault : faults) {
            std::fprintf(stderr, "  %s\n", fault.c_str());
        }
        return 1;
    }
    tellEnd(performance);
    const std::string planName = std::filesystem::path(arguments.plan).filename().string();
    if (!keptKeys && !writeKeys(keysPath, planName, performance)) {
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
        return arguments.careful ? playCarefully(arguments) : author(arguments);
    } catch (const std::exception& error) {
        return console::endWithFault(error);
    }
}
