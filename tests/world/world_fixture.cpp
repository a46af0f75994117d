#include "tests/world/world_fixture.h"

#include <string>

#include "app/reset.h"
#include "base/frame_state_writer.h"
#include "base/key_states_writer.h"
#include "json5/reader.h"
#include "render/image_table_writer.h"
#include "tests/world/drawn_sprites.h"
#include "world/object_class.h"

namespace dunkman {

WorldFixture::WorldFixture() {
    resetProgram();
    drawnSprites.clear();
    writable::frameState.frameDelta = sixtieth;
    writable::frameState.inputMode = InputMode::Live;
    addImage("box", 64, 32);
    addImage("player", 100, 200);
    addImage("playerUnarmed", 80, 200);
    addImage("zombie", 120, 200);
    addImage("zombieDeath0", 120, 200);
    addImage("zombieDeath1", 160, 200);
    addImage("zombieDeath2", 200, 200);
    addImage("zombieDeath3", 240, 200);
    addImage("flamingo", 60, 120);
    addImage("pineapple", 40, 80);
    for (const ObjectType type : subtypeWalk(ObjectType::Object)) {
        for (const std::string_view key : classOf(type).images) {
            if (!writable::pictures.imageTable.contains(std::string(key))) {
                addImage(key, 100, 200);
            }
        }
    }
}

WorldFixture::~WorldFixture() { resetProgram(); }

void WorldFixture::addImage(std::string_view key, std::uint32_t width, std::uint32_t height) {
    Texture2D texture;
    texture.name = static_cast<std::uint32_t>(writable::pictures.imageTable.size()) + 1;
    texture.internalFormat = 0x83F1;
    texture.width = width;
    texture.height = height;
    texture.levels = 3;
    writable::pictures.imageTable[std::string(key)] = texture;
}

void WorldFixture::step(int count) {
    for (int done = 0; done < count; ++done) {
        world.updateAll();
        world.lateUpdateAll();
        world.applyPending();
        ageKeyStates();
        writable::frameState.elapsedTime += frameState.frameDelta;
    }
}

void WorldFixture::press(std::int32_t virtualKey) { keyState(virtualKey) = KeyState::Pressed; }
void WorldFixture::hold(std::int32_t virtualKey) { keyState(virtualKey) = KeyState::Held; }
void WorldFixture::release(std::int32_t virtualKey) { keyState(virtualKey) = KeyState::Up; }

JsonValue json(std::string_view text) {
    JsonValue value;
    Json5Report report;
    parseDocument(text, report, value);
    EXPECT_TRUE(report.code == Json5Error::None || report.code == Json5Error::EndOfInput)
        << text << ": " << report.message;
    return value;
}

} // namespace dunkman
