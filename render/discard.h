#pragma once

namespace dunkman {

// While it lives, clearing and drawing leave no pixels behind. Software is not even asked to draw sprites. Not two at once.
class PixelsDiscarded {
public:
    PixelsDiscarded();
    ~PixelsDiscarded();
    PixelsDiscarded(const PixelsDiscarded&) = delete;
    PixelsDiscarded& operator=(const PixelsDiscarded&) = delete;
};

} // namespace dunkman
