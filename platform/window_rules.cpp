#include "platform/window_rules.h"

namespace dunkman::platform {

namespace {

// Each of these would run a loop of the system's own, and the game would stand still behind it, or would
// darken the display during a show that nobody has to touch a key for.
bool isUnwanted(std::uintptr_t command) {
    switch (command & ~std::uintptr_t{0xF}) {
    case system_commands::size:
    case system_commands::move:
    case system_commands::mouseMenu:
    case system_commands::keyMenu:
    case system_commands::screenSave:
    case system_commands::monitorPower:
        return true;
    default:
        return false;
    }
}

} // namespace

std::optional<std::intptr_t> ownAnswer(std::uint32_t message, std::uintptr_t wParam) {
    switch (message) {
    case messages::eraseBackground:
        return 1; // erased: every pixel is drawn by the game
    case messages::contextMenu:
    case messages::dropFiles:
    case messages::setInputContext:
    case messages::startComposition:
    case messages::composition:
    case messages::endComposition:
        return 0;
    case messages::systemCommand:
        return isUnwanted(wParam) ? std::optional<std::intptr_t>(0) : std::nullopt;
    default:
        return std::nullopt;
    }
}

std::optional<Area> areaToTake(const Area& window, const Area& display) {
    const bool isKnown = display.width > 0 && display.height > 0;
    return isKnown && window != display ? std::optional(display) : std::nullopt;
}

} // namespace dunkman::platform
