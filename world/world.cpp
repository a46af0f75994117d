#include "world/world.h"

#include <algorithm>
#include <cassert>
#include <utility>

#include "world/drawable.h"
#include "world/random.h"

namespace dunkman {

World world;

World::~World() { clear(); }

void World::updateAll() {
    const Passage passage(*this);
    for (const auto& bucket : buckets) {
        for (const OwnedObject& object : bucket) {
            object->update();
        }
    }
}

void World::lateUpdateAll() {
    const Passage passage(*this);
    for (const auto& bucket : buckets) {
        for (const OwnedObject& object : bucket) {
            object->lateUpdate();
        }
    }
}

void World::drawAll() const {
    walk<Drawable>([](Drawable& drawable) { drawable.draw(); });
}

void World::queueAdd(OwnedObject object) { pendingAdd.push_back(std::move(object)); }

void World::queueDetach(Object& object) { pendingDetach.push_back(&object); }

void World::queueDestroy(Object& object) { pendingDestroy.push_back(&object); }

bool World::isQueuedForDetach(const Object& object) const {
    return std::find(pendingDetach.begin(), pendingDetach.end(), &object) != pendingDetach.end();
}

bool World::isQueuedForDestroy(const Object& object) const {
    return std::find(pendingDestroy.begin(), pendingDestroy.end(), &object) != pendingDestroy.end();
}

void World::applyPending() {
    assert(passages == 0);
    enterAndDetach();
    removeQueued(pendingDestroy);
    removed.clear();
}

void World::enterAndDetach() {
    for (OwnedObject& object : pendingAdd) {
        auto& bucket = buckets[indexOf(object->getType())];
        bucket.push_back(std::move(object));
    }
    pendingAdd.clear();

    removeQueued(pendingDetach);
    for (OwnedObject& object : removed) {
        // Whoever asked for the detachment owns it by now.
        static_cast<void>(object.release());
    }
    removed.clear();
}

void World::removeQueued(std::vector<Object*>& queue) {
    if (queue.empty()) {
        return;
    }
    removed.reserve(queue.size()); // so that from here on nothing can fail half-way
    std::array<bool, objectTypeCount> concerned{};
    for (Object* object : queue) {
        object->leaving = true;
        concerned[indexOf(object->getType())] = true;
    }
    for (std::size_t number = 0; number < objectTypeCount; ++number) {
        if (!concerned[number]) {
            continue;
        }
        auto& bucket = buckets[number];
        auto kept = bucket.begin();
        for (OwnedObject& object : bucket) {
            if (object->leaving) {
                removed.push_back(std::move(object));
            } else {
                // Not onto itself: that would empty the pointer's slot first.
                if (&*kept != &object) {
                    *kept = std::move(object);
                }
                ++kept;
            }
        }
        bucket.erase(kept, bucket.end());
    }
    // Nothing has been freed yet, so entries that named an object twice or one outside the world are good
    // here.
    for (Object* object : queue) {
        object->leaving = false;
    }
    queue.clear();
}

void World::clear() {
    assert(passages == 0);
    // What is queued for detachment has an owner already, though it still stands in its bucket or waits to enter it.
    enterAndDetach();
    pendingDestroy.clear();
    for (auto& bucket : buckets) {
        bucket.clear();
    }
}

void resetWorld() {
    world.clear();
    resetRandom();
}

} // namespace dunkman
