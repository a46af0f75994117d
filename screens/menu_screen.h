#pragma once

#include "screens/hold_timer.h"
#include "screens/menu_decoration.h"
#include "screens/screen.h"

namespace dunkman {

// The title with the controls. It reads no keys: after eight seconds the game starts.
class MenuScreen final : public GameScreenBase {
public:
    void enter() override;
    void update() override;
    void render() override;

    MenuDecoration decoration;
    HoldTimer hold;
};

} // namespace dunkman
