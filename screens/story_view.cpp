#include "screens/story_view.h"

#include <algorithm>
#include <cmath>

#include "base/frame_state.h"
#include "base/geometry.h"
#include "screens/intro_screen.h"

namespace dunkman {

namespace {

constexpr double firstLineY = -3.0;
constexpr double lineSpacing = 0.6;
constexpr double gap = lineSpacing - storyLetterHeight;

constexpr double marginBelow = 0.5; // between the letters of the lowest line and the window's edge
constexpr double easeSeconds = 0.5; // in which the view follows a line, from its start
constexpr double highestCut = -1.2; // the logo, rocking, comes down to -1.08

double lowestAllowedCentre(double halfHeight) { return -halfHeight + marginBelow + storyLetterHeight / 2.0; }

// How far the view has to be lowered for a line.
double loweringFor(int line, double halfHeight) {
    return std::max(lowestAllowedCentre(halfHeight) - storyLineCentre(line), 0.0);
}

// From 0 to 1, slow at both ends.
double eased(double seconds) {
    const double part = std::clamp(seconds / easeSeconds, 0.0, 1.0);
    return part * part * (3.0 - 2.0 * part);
}

// Once the view follows, the lines come to rest on one raster, whichever of them is the lowest. The cut lies in one
// of its gaps, as high as the logo allows, but no further from the line below than half a gap.
double cutBetweenLines(double halfHeight) {
    constexpr double tolerance = 1e-6; // at 4:3 a line ends exactly at the highest cut
    const double lowestTop = lowestAllowedCentre(halfHeight) + storyLetterHeight / 2.0;
    const double linesAbove = std::floor((highestCut - lowestTop) / lineSpacing + tolerance);
    const double topBelowCut = lowestTop + linesAbove * lineSpacing;
    return std::min(topBelowCut + gap / 2.0, highestCut);
}

} // namespace

double storyLineCentre(int line) { return firstLineY - line * lineSpacing; }

StoryView storyViewAt(double storyTime) {
    const double halfHeight = halfViewWidth / frameState.aspectRatio;
    StoryView view;
    view.cutAt = cutBetweenLines(halfHeight);
    double before = 0.0;
    for (int line = 0; line < static_cast<int>(storyLines.size()); ++line) {
        const double after = loweringFor(line, halfHeight);
        view.lowered +=
            (after - before) * eased(storyTime - storyLines[static_cast<std::size_t>(line)].start);
        before = after;
    }
    return view;
}

} // namespace dunkman
