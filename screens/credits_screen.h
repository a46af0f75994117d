#pragma once

#include "screens/hold_timer.h"
#include "screens/menu_decoration.h"
#include "screens/screen.h"

namespace dunkman {

// The last screen: after ten seconds the program ends.
class CreditsScreen final : public GameScreenBase {
public:
    void enter() override;
    void update() override;
    void render() override;

    MenuDecoration decoration;
    HoldTimer hold;
};

} // namespace dunkman
