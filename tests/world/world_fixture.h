#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string_view>

#include "json5/value.h"
#include "world/registry.h"
#include "world/world.h"

namespace dunkman {

inline constexpr double sixtieth = 1.0 / 60.0;

// A world of its own for each test: all process-wide state is as in a fresh process, except that frameDelta
// is a sixtieth of a second, inputMode is Live and the images below stand in the image table. Needs no
// OpenGL.
class WorldFixture : public testing::Test {
protected:
    WorldFixture();
    ~WorldFixture() override;

    // Enters the image table under the key, with a texture name of its own.
    static void addImage(std::string_view key, std::uint32_t width, std::uint32_t height);

    // Makes an object and brings it into the world at once.
    template <class Kind> static Kind& add(Vec2 position = {}) {
        auto object = makeObject<Kind>();
        Kind& added = *object;
        added.position = position;
        world.queueAdd(std::move(object));
        world.applyPending();
        return added;
    }

    // Steps of the world without drawing; keys age and time goes on after each.
    static void step(int count = 1);

    static void press(std::int32_t virtualKey);   // went down in this step
    static void hold(std::int32_t virtualKey);    // down, and was before
    static void release(std::int32_t virtualKey); // not down, nor just let go

    static std::size_t count(ObjectType type) { return world.objectsOfType(type).size(); }
};

// The value of a JSON5 text; the test fails when the text is faulty.
JsonValue json(std::string_view text);

} // namespace dunkman
