#pragma once

namespace dunkman {

// A point, an extent or a pair of factors; world units unless said otherwise, y grows upward.
struct Vec2 {
    double x = 0.0;
    double y = 0.0;

    friend bool operator==(const Vec2&, const Vec2&) = default;
};

struct Rect {
    double minX = 0.0;
    double minY = 0.0;
    double maxX = 0.0;
    double maxY = 0.0;

    friend bool operator==(const Rect&, const Rect&) = default;
};

// Pi as the whole game uses it. Not the nearest double to pi: angles in recordings and on screen were made with
// these digits.
inline constexpr double pi = 3.14159265359;
inline constexpr double twoPi = 6.28318530718;

// Degrees to radians with that pi, in the two ways of the game. They differ in their last bits: neither can stand in
// for the other.
inline constexpr double radiansPerDegree = 0.017453292519944444;
constexpr double clockwiseRadians(double degrees) { return degrees * pi / -180.0; }

// World units. The screen always shows this width, from -halfViewWidth to halfViewWidth in the interface and as much
// about its centre in the world; the height follows from the proportions of the window.
inline constexpr double viewWidth = 18.0;
inline constexpr double halfViewWidth = 9.0;

} // namespace dunkman
