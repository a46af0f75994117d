#include "world/registry.h"

#include <array>
#include <new>

#include "json5/value.h"
#include "world/arena.h"
#include "world/camera.h"
#include "world/drawable.h"
#include "world/flamingo.h"
#include "world/hint.h"
#include "world/interactable.h"
#include "world/movable.h"
#include "world/object.h"
#include "world/pineapple.h"
#include "world/player.h"
#include "world/projectile.h"
#include "world/ranged_weapon.h"
#include "world/resort_sign.h"
#include "world/spawn_point.h"
#include "world/walker.h"
#include "world/wave.h"
#include "world/weapon.h"
#include "world/zombie.h"
#include "world/zombie_dead.h"

namespace dunkman {

// The only one that may end the life of a plain Object.
struct ObjectLifetime {
    template <class Kind> static Object* create() { return new Kind; }

    template <class Kind> static void destroy(Object* object) {
        // The destructor is called by its qualified name: `object` is exactly a Kind, though Kind may be a
        // base of other classes, which is why compilers distrust a delete expression here.
        Kind* exact = static_cast<Kind*>(object);
        exact->Kind::~Kind();
        ::operator delete(static_cast<void*>(exact));
    }
};

namespace {

struct ClassRecord {
    Object* (*create)() = nullptr;
    void (*destroy)(Object* object) = nullptr;
};

template <class Kind> constexpr void enter(std::array<ClassRecord, objectTypeCount>& table) {
    table[indexOf(Kind::type)] = {&ObjectLifetime::create<Kind>, &ObjectLifetime::destroy<Kind>};
}

template <class... Kinds> constexpr std::array<ClassRecord, objectTypeCount> makeClassTable() {
    static_assert(sizeof...(Kinds) == objectTypeCount - 1, "every type but Invalid has a class");
    std::array<ClassRecord, objectTypeCount> table{};
    (enter<Kinds>(table), ...);
    return table;
}

constexpr auto classTable = makeClassTable<Object, Drawable, Movable, Interactable, Weapon, Flamingo,
                                           Projectile, RangedWeapon, Pineapple, Walker, Zombie, ZombieDead,
                                           Player, Camera, SpawnPoint, Arena, ResortSign, Wave, Hint>();

} // namespace

void destroyObject(Object* object) {
    if (object != nullptr) {
        classTable[indexOf(object->getType())].destroy(object);
    }
}

OwnedObject createObject(ObjectType type) {
    const auto create = classTable[indexOf(type)].create;
    return OwnedObject(create != nullptr ? create() : nullptr);
}

OwnedObject createFromValue(const JsonValue& value) {
    if (value.kind != JsonKind::Object) {
        return nullptr;
    }
    const JsonValue& name = value.get("_type");
    if (name.kind != JsonKind::String) {
        return nullptr;
    }
    const auto type = typeFromName(name.stringValue);
    if (!type) {
        return nullptr;
    }
    OwnedObject object = createObject(*type);
    if (object) {
        object->readProperties(value);
    }
    return object;
}

} // namespace dunkman
