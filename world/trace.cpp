#include "world/trace.h"

#include "world/player.h"
#include "world/trace_line.h"
#include "world/world.h"

namespace dunkman {

void appendObjectLine(std::string& out, const Object& object, std::string_view word) {
    out += word;
    out += ' ';
    out += typeName(object.getType());
    TraceLine line(out);
    object.traceState(line);
    out += '\n';
}

void appendWorldTrace(std::string& out) {
    for (std::size_t number = 0; number < objectTypeCount; ++number) {
        const auto type = static_cast<ObjectType>(number);
        for (const OwnedObject& object : world.objectsOfType(type)) {
            appendObjectLine(out, *object, "object");
            if (type == ObjectType::Player) {
                const auto& held = static_cast<const Player&>(*object).heldWeapon;
                if (held) {
                    appendObjectLine(out, *held, "held");
                }
            }
        }
    }
}

} // namespace dunkman
