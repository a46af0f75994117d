#pragma once

#include "screens/screen.h"

namespace dunkman {

// Kept in the program, but no screen switches to it.
class PauseScreen final : public GameScreenBase {
public:
    void enter() override {}
    void update() override;
    void render() override;
};

} // namespace dunkman
