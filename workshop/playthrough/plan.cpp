#include "workshop/playthrough/plan.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <map>
#include <sstream>
#include <utility>

namespace dunkman::playthrough {

namespace {

const std::map<std::string_view, Verb> verbs = {
    {"act", Verb::Act},     {"wait", Verb::Wait}, {"walk", Verb::Walk},
    {"face", Verb::Face},   {"take", Verb::Take}, {"swing", Verb::Swing},
    {"snipe", Verb::Snipe}, {"kite", Verb::Kite}, {"fight", Verb::Fight},
};

const std::map<std::string_view, FightEnd> fightEnds = {
    {"clear", FightEnd::Clear}, {"broken", FightEnd::Broken},   {"hearts", FightEnd::Hearts},
    {"kills", FightEnd::Kills}, {"seconds", FightEnd::Seconds}, {"death", FightEnd::Death},
};

// The words of one line, taken one after another.
class Words {
public:
    Words(const std::string& line, std::string lineName) : words(line), name(std::move(lineName)) {}

    bool more() {
        words >> std::ws;
        return !words.eof();
    }

    std::string word(std::string_view what) {
        std::string result;
        if (!(words >> result)) {
            fail("missing " + std::string(what));
        }
        return result;
    }

    // All that is left of the line.
    std::string rest(std::string_view what) {
        std::string result = word(what);
        for (std::string next; words >> next;) {
            result += " " + next;
        }
        return result;
    }

    double number(std::string_view what) {
        const std::string text = word(what);
        double value = 0.0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
        if (error != std::errc() || end != text.data() + text.size()) {
            fail(std::string(what) + " is no number: " + text);
        }
        return value;
    }

    std::string oneOf(std::string_view what, std::string_view first, std::string_view second) {
        std::string result = word(what);
        if (result != first && result != second) {
            fail(std::string(what) + " is " + result + "; it must be " + std::string(first) + " or " +
                 std::string(second));
        }
        return result;
    }

    [[noreturn]] void fail(const std::string& message) const { throw PlanError(name + ": " + message); }

private:
    std::istringstream words;
    std::string name;
};

void readFight(Words& words, Intention& intention) {
    intention.careful = words.oneOf("manner", "careful", "reckless") == "careful";
    const std::string end = words.word("end");
    const auto found = fightEnds.find(end);
    if (found == fightEnds.end()) {
        words.fail("unknown end of a fight: " + end);
    }
    intention.end = found->second;
    if (intention.end == FightEnd::Hearts || intention.end == FightEnd::Kills ||
        intention.end == FightEnd::Seconds) {
        intention.x = words.number("count");
    }
}

Intention readIntention(Words& words, Verb verb) {
    Intention intention;
    intention.verb = verb;
    switch (verb) {
    case Verb::Act:
        intention.x = words.number("x");
        intention.word = words.rest("name");
        break;
    case Verb::Wait:
    case Verb::Kite:
        intention.x = words.number("seconds");
        break;
    case Verb::Swing:
        intention.x = words.number("count");
        break;
    case Verb::Snipe:
        intention.x = words.number("distance");
        break;
    case Verb::Walk:
        intention.x = words.number("x");
        intention.y = words.number("y");
        break;
    case Verb::Face:
        intention.word = words.oneOf("side", "left", "right");
        break;
    case Verb::Take:
        intention.word = words.oneOf("weapon", "flamingo", "pineapple");
        break;
    case Verb::Fight:
        readFight(words, intention);
        break;
    }
    return intention;
}

} // namespace

std::vector<Intention> readPlan(std::string_view text, const std::string& name) {
    std::vector<Intention> plan;
    std::istringstream lines{std::string(text)};
    std::string line;
    for (int number = 1; std::getline(lines, line); ++number) {
        line.resize(std::min(line.find('#'), line.size()));
        Words words(line, name + ":" + std::to_string(number));
        if (!words.more()) {
            continue;
        }
        const std::string verb = words.word("verb");
        const auto found = verbs.find(verb);
        if (found == verbs.end()) {
            words.fail("unknown verb: " + verb);
        }
        plan.push_back(readIntention(words, found->second));
        plan.back().line = number;
        if (words.more()) {
            words.fail("unexpected: " + words.word("word"));
        }
    }
    return plan;
}

std::vector<Intention> readPlanFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw PlanError(path + ":0: the file cannot be read");
    }
    std::ostringstream text;
    text << file.rdbuf();
    return readPlan(text.str(), path);
}

} // namespace dunkman::playthrough
