#pragma once

#include <string_view>

#include "base/geometry.h"

// What the menu-like screens share: the background, centred text and key pictures, the credit lines.
namespace dunkman {

// Sets the interface view and fills it with the menu background, whatever the window's proportions.
void drawMenuBackground();

// A line centred on a point.
void drawCentredText(std::string_view text, double letterHeight, Vec2 centre);

// A line that ends at a point, vertically centred on it.
void drawTextEndingAt(std::string_view text, double letterHeight, Vec2 end);

// An upright interface picture.
void drawInterfacePicture(std::string_view imageKey, Vec2 centre, double height, double angle,
                          double zOffset);

void drawCreditLines();

} // namespace dunkman
