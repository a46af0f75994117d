#include <algorithm>
#include <array>
#include <cstdint>

#include "base/key_states.h"
#include "tools/inspect/file_checks.h"
#include "tools/inspect/level_files.h"
#include "tools/inspect/nearest.h"

namespace dunkman::inspect {

namespace {

constexpr std::array<std::string_view, 2> recordKeys = {"frame", "newKeyStates"};
constexpr std::array<std::string_view, 2> changeKeys = {"key", "state"};
constexpr std::int64_t lastState = 3;

// That an object has just the keys that it should have.
bool hasKeys(const std::string& name, const Located& object, const std::array<std::string_view, 2>& wanted,
             Faults& faults) {
    if (object->kind != JsonKind::Object) {
        faults.add(object.spot(), name + ": it is no object with " + inQuotes(wanted[0]) + " and " +
                                      inQuotes(wanted[1]) + '.');
        return false;
    }
    bool hasAll = true;
    bool hasOther = false;
    for (const LocatedMember& member : object.members()) {
        if (std::find(wanted.begin(), wanted.end(), member.key) == wanted.end()) {
            faults.add(member.keySpot(), name + ": nothing reads " + inQuotes(member.key) + '.' +
                                             suggestion(member.key, wanted));
            hasOther = true;
        }
    }
    for (const std::string_view key : wanted) {
        hasAll = hasAll && object->contains(key);
        if (!object->contains(key) && !hasOther) {
            faults.add(object.spot(), name + ": " + inQuotes(key) + " is missing.");
        }
    }
    return hasAll;
}

void checkChange(const std::string& name, const Located& change, Faults& faults) {
    if (!hasKeys(name, change, changeKeys, faults)) {
        return;
    }
    const Located key = change.get(changeKeys[0]);
    const Located state = change.get(changeKeys[1]);
    if (key->kind != JsonKind::Integer ||
        std::find(polledKeys.begin(), polledKeys.end(), key->intValue()) == polledKeys.end()) {
        faults.add(key.spot(), name + ": \"key\" is none of the keys that the game knows.");
    }
    if (state->kind != JsonKind::Integer || state->intValue() < 0 || state->intValue() > lastState) {
        faults.add(state.spot(), name + ": \"state\" is no whole number from 0 to 3.");
    }
}

} // namespace

void checkRecording(const DataFile& recording, Faults& faults) {
    if (!recording.isSound()) {
        return;
    }
    std::int64_t previous = -1;
    std::size_t number = 0;
    for (const Located& record : recording.top().elements()) {
        const std::string name = "record " + std::to_string(++number);
        if (!hasKeys(name, record, recordKeys, faults)) {
            continue;
        }
        const Located frame = record.get(recordKeys[0]);
        if (frame->kind != JsonKind::Integer || frame->intValue() <= previous) {
            faults.add(frame.spot(), name + ": \"frame\" is no whole number above that of the record before "
                                            "it, so a replay never gets past it.");
        } else {
            previous = frame->intValue();
        }
        const Located changes = record.get(recordKeys[1]);
        if (changes->kind != JsonKind::Array) {
            faults.add(changes.spot(), name + ": \"newKeyStates\" is no array of key changes, [ ... ].");
        }
        std::size_t changeNumber = 0;
        for (const Located& change : changes.elements()) {
            checkChange(name + ", change " + std::to_string(++changeNumber), change, faults);
        }
    }
}

} // namespace dunkman::inspect
