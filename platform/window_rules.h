#pragma once

#include <cstdint>
#include <optional>

// What the game's window decides for itself. The window is of a class of the system's, an edit field; nothing
// of what such a field does by itself may show or hold up the game. Numbers are those of the Windows
// messages.
namespace dunkman::platform {

namespace messages {
inline constexpr std::uint32_t eraseBackground = 0x0014;  // WM_ERASEBKGND
inline constexpr std::uint32_t contextMenu = 0x007B;      // WM_CONTEXTMENU
inline constexpr std::uint32_t startComposition = 0x010D; // WM_IME_STARTCOMPOSITION
inline constexpr std::uint32_t endComposition = 0x010E;   // WM_IME_ENDCOMPOSITION
inline constexpr std::uint32_t composition = 0x010F;      // WM_IME_COMPOSITION
inline constexpr std::uint32_t systemCommand = 0x0112;    // WM_SYSCOMMAND
inline constexpr std::uint32_t dropFiles = 0x0233;        // WM_DROPFILES
inline constexpr std::uint32_t setInputContext = 0x0281;  // WM_IME_SETCONTEXT
} // namespace messages

// wParam of a system command, without its lowest four bits, which the system uses itself.
namespace system_commands {
inline constexpr std::uintptr_t size = 0xF000;
inline constexpr std::uintptr_t move = 0xF010;
inline constexpr std::uintptr_t close = 0xF060;
inline constexpr std::uintptr_t mouseMenu = 0xF090;
inline constexpr std::uintptr_t keyMenu = 0xF100; // Alt, F10, Alt + Space
inline constexpr std::uintptr_t screenSave = 0xF140;
inline constexpr std::uintptr_t monitorPower = 0xF170;
} // namespace system_commands

// What the window answers to a message that it keeps to itself: menus, erasing, input methods, dragging,
// moving, and a display that wants to go dark. Nothing: the message goes the way of all others, to the
// system's default.
std::optional<std::intptr_t> ownAnswer(std::uint32_t message, std::uintptr_t wParam);

struct Area {
    std::int32_t left = 0, top = 0;     // pixels
    std::int32_t width = 0, height = 0; // pixels

    bool operator==(const Area&) const = default;
};

// Where a window has to go that was opened at `window` on a display at `display`: over the whole of it.
// Nothing: it is there already.
std::optional<Area> areaToTake(const Area& window, const Area& display);

} // namespace dunkman::platform
