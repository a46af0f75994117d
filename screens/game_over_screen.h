#pragma once

#include "screens/hold_timer.h"
#include "screens/screen.h"

namespace dunkman {

// Shown for ten seconds after a game. The keys it names are shown only.
class GameOverScreen final : public GameScreenBase {
public:
    void enter() override;
    void update() override;
    void render() override;

    HoldTimer hold;
};

} // namespace dunkman
