#pragma once

#include <span>

// The machine that films are made on: the off-screen one with sound. Music is decoded by the program ffmpeg, and the feed
// fills a ring that nobody drains but takeSound: the one who makes the film is the device, and its clock.
namespace dunkman::film {

// The sound of the stretch that begins with the last step's picture, as the feed has mixed it: two floats a frame, left
// first. At most the 100 ms that a feed mixes ahead; what is not there is silence.
void takeSound(std::span<float> stereo);

} // namespace dunkman::film
