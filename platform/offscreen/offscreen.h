#pragma once

#include <cstdint>
#include <string>
#include <vector>

// The simulated machine with a real OpenGL: it draws in software, or on a graphics card, into memory instead of a
// window. Linked in place of the OpenGL that draws nothing; clock, keyboard and client size are those of
// platform/simulated/platform_sim.h. The picture has the client size of the moment of start-up.
namespace dunkman::offscreen {

// Colours as they lie in the picture: row by row from the top, three bytes (red, green, blue) a pixel.
struct Picture {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::vector<std::uint8_t> rgb;
};

// What has been drawn so far.
Picture takePicture();

// The same as it lies in the driver's memory, which takes the least time: row by row from below, four bytes (red, green,
// blue, and one without meaning) a pixel.
void readPixelsFromBelow(std::vector<std::uint8_t>& rgba);

// Waits until everything that was asked for is drawn.
void finishDrawing();

// The driver's own words about itself: renderer and version.
std::string driverName();

} // namespace dunkman::offscreen
