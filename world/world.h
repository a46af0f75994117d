#pragma once

#include <array>
#include <span>
#include <vector>

#include "world/object.h"
#include "world/object_type.h"
#include "world/registry.h"

namespace dunkman {

// All objects in play, in one bucket for each exact type, each bucket in order of insertion. The buckets own
// their objects. Buckets change in applyPending and clear only, so passes and walks never see one change
// under them.
class World {
public:
    World() = default;
    World(const World&) = delete;
    World& operator=(const World&) = delete;
    ~World();

    // A step is these three, in this order. The passes go through the buckets in ascending type number. Late
    // updates must come after all damage and before anything is freed: arenas and the camera hold plain
    // pointers.
    void updateAll();
    void lateUpdateAll();
    void applyPending();

    // Draws every Drawable, in the order of the subtype walk.
    void drawAll() const;

    // To enter, leave alive, or be freed at the next applyPending, which works in this order: an object
    // queued to enter and to be freed enters and is freed. Queuing an object twice does no more than once. An
    // object that is not in the world when its turn comes is left alone, as long as its owner keeps it until then.
    void queueAdd(OwnedObject object);
    void queueDetach(Object& object); // the caller owns the object from applyPending on
    void queueDestroy(Object& object);

    bool isQueuedForDetach(const Object& object) const;
    bool isQueuedForDestroy(const Object& object) const;

    // The objects of exactly this type.
    std::span<const OwnedObject> objectsOfType(ObjectType type) const { return buckets[indexOf(type)]; }

    // The first object of exactly this class, or null.
    template <class Kind> Kind* first() const {
        const auto& bucket = buckets[indexOf(Kind::type)];
        return bucket.empty() ? nullptr : static_cast<Kind*>(bucket.front().get());
    }

    // Calls visit(Kind&) for every object of the class and of its subclasses, breadth first over the types.
    template <class Kind, class Visit> void walk(Visit&& visit) const {
        const Passage passage(*this);
        for (const ObjectType type : subtypeWalk(Kind::type)) {
            for (const OwnedObject& object : buckets[indexOf(type)]) {
                visit(static_cast<Kind&>(*object));
            }
        }
    }

    // Frees everything, what is queued and what the hero holds included.
    void clear();

private:
    // Somebody is on the way through the buckets, which must not change meanwhile.
    class Passage {
    public:
        explicit Passage(const World& passed) : passedWorld(passed) { ++passedWorld.passages; }
        Passage(const Passage&) = delete;
        Passage& operator=(const Passage&) = delete;
        ~Passage() { --passedWorld.passages; }

    private:
        const World& passedWorld;
    };

    void enterAndDetach();

    // Takes what a queue names out of the buckets, keeping the order of the rest, at a cost of the queue's
    // length plus the lengths of the buckets concerned. Fills `removed`; empties the queue.
    void removeQueued(std::vector<Object*>& queue);

    std::array<std::vector<OwnedObject>, objectTypeCount> buckets;
    std::vector<OwnedObject> pendingAdd;
    std::vector<Object*> pendingDetach;
    std::vector<Object*> pendingDestroy;
    std::vector<OwnedObject> removed; // scratch, kept for its storage
    mutable int passages = 0;         // under way, one within the other
};

extern World world;

// Empties the world and winds back the random numbers, as for a new process. A new game within the process
// clears the world only.
void resetWorld();

} // namespace dunkman
