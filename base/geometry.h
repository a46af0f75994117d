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

} // namespace dunkman
