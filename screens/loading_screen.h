#pragma once

#include "screens/screen.h"

namespace dunkman {

// A cocktail glass that fills in steps for five and a half seconds.
class LoadingScreen final : public GameScreenBase {
public:
    void enter() override {}
    void update() override;
    void render() override;

    double progress = 0.0; // 0 empty, 1 full; the screen leaves above 1.1
};

} // namespace dunkman
