#pragma once

namespace dunkman {

// Where the lines of the story stand, in interface units. A line's height is that of its letters.
inline constexpr double storyLetterHeight = 0.25;
double storyLineCentre(int line); // from 0, downward

// How the interface view follows the story where the window is too low for all of its lines.
struct StoryView {
    double lowered = 0.0; // the view has moved down by this much: 0 as long as no line was too low
    double cutAt = 0.0;   // lines are not shown above this height of the screen, where the logo is
};

// At a story time in seconds, in a window of the current aspect ratio.
StoryView storyViewAt(double storyTime);

} // namespace dunkman
