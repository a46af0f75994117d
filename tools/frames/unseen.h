#pragma once

namespace dunkman::frames {

// While it lives, nothing leaves pixels behind, however often the game turns that on and off: for running ahead to a
// step that is to be seen. The game must have looked up the functions of OpenGL.
class Unseen {
public:
    Unseen();
    ~Unseen();
    Unseen(const Unseen&) = delete;
    Unseen& operator=(const Unseen&) = delete;
};

} // namespace dunkman::frames
