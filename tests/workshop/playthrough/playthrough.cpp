#include "tests/workshop/playthrough/playthrough.h"

#include <string>
#include <string_view>

#include "app/frame.h"
#include "app/lifecycle.h"
#include "app/main_loop.h"
#include "app/reset.h"
#include "platform/simulated/platform_sim.h"
#include "screens/screen.h"
#include "tools/headless/key_script.h"
#include "tools/headless/runner.h"
#include "workshop/playthrough/author.h"
#include "world/arena.h"
#include "world/camera.h"
#include "world/player.h"
#include "world/trace.h"
#include "world/world.h"
#include "world/zombie.h"

namespace dunkman {

namespace {

constexpr std::int64_t stepNanoseconds =
    16666667;                                     // just over 1/60 s, so that each iteration replays one step
constexpr std::int64_t longestGame = 4 * 60 * 60; // steps

std::uint64_t fnv1a(std::string_view text) {
    std::uint64_t hash = 0xcbf29ce484222325u;
    for (const char letter : text) {
        hash = (hash ^ static_cast<unsigned char>(letter)) * 0x100000001b3u;
    }
    return hash;
}

std::uint64_t digestOfWorld() {
    static std::string text;
    text.clear();
    const auto append = [](const Object& object) { appendObjectLine(text, object, "object"); };
    world.walk<Movable>(append);
    for (const ObjectType type :
         {ObjectType::ZombieDead, ObjectType::ResortSign, ObjectType::Camera, ObjectType::Arena}) {
        for (const OwnedObject& object : world.objectsOfType(type)) {
            append(*object);
        }
    }
    if (const Player* hero = world.first<Player>(); hero != nullptr && hero->heldWeapon) {
        appendObjectLine(text, *hero->heldWeapon, "held");
    }
    return fnv1a(text);
}

int countOf(ObjectType type) { return static_cast<int>(world.objectsOfType(type).size()); }

class Notes final : public FrameObserver {
public:
    Notes() { frameObserver = this; }
    ~Notes() { frameObserver = nullptr; }
    Notes(const Notes&) = delete;
    Notes& operator=(const Notes&) = delete;

    void inputApplied() override { onGameScreen = isCurrent(ScreenId::Game); }

    void updated() override {
        if (!onGameScreen) {
            return;
        }
        const Player& hero = *world.first<Player>();
        const Weapon* weapon = hero.heldWeapon.get();
        StepNote note;
        note.digest = digestOfWorld();
        note.heroX = hero.position.x;
        note.hearts = hero.health;
        note.held = weapon != nullptr ? weapon->getType() : ObjectType::Invalid;
        note.durability = weapon != nullptr ? weapon->durability : 0;
        note.corpses = countOf(ObjectType::ZombieDead);
        note.projectiles = countOf(ObjectType::Projectile);
        note.zombies = countOf(ObjectType::Zombie);
        note.cameraHeld = world.first<Camera>()->target != nullptr;
        note.swung =
            weapon != nullptr && weapon->attackTimeout.running && weapon->attackTimeout.elapsed == 0.0;
        steps.push_back(note);
    }

    std::vector<StepNote> steps;

private:
    bool onGameScreen = false;
};

} // namespace

ShippedData::ShippedData() : startFolder(std::filesystem::current_path()) {
    std::filesystem::current_path("data");
    resetProgram();
}

ShippedData::~ShippedData() {
    resetProgram();
    std::filesystem::current_path(startFolder);
}

std::vector<playthrough::Act> ShippedData::acts() {
    return playthrough::actsOf(playthrough::readPlanFile("../workshop/playthrough/playthrough.plan"));
}

std::vector<double> ShippedData::fights() {
    std::vector<double> lines;
    playthrough::Conditions beforeTheFirstStep;
    beforeTheFirstStep.longest = 0;
    beforeTheFirstStep.prepare = [&lines] { lines = playthrough::fightLines(); };
    playthrough::perform(std::vector<playthrough::Intention>(), beforeTheFirstStep);
    return lines;
}

std::vector<StepNote> play(KeySource source, platform::ClientSize window) {
    resetProgram();
    simulated::machine.clientSize = window;
    headless::KeyScript keys;
    if (source == KeySource::KeyScript) {
        keys = headless::KeyScript::readFile("../workshop/playthrough/playthrough.keys");
    }
    startUp(source == KeySource::KeyScript ? InputMode::Record : InputMode::Replay, ScreenId::Game);
    Notes notes;
    std::int64_t iteration = 0;
    while (isCurrent(ScreenId::Game)) {
        ++iteration;
        if (iteration > longestGame) {
            ADD_FAILURE() << "the game does not end";
            break;
        }
        simulated::machine.clockNanoseconds = iteration * stepNanoseconds;
        keys.applyUntil(iteration, simulated::machine.keysDown);
        runIteration();
    }
    return notes.steps;
}

} // namespace dunkman
