#pragma once

#include "render/view.h"
#include "screens/screen.h"
#include "world/drawable.h"

namespace dunkman {

// The play screen: drives the process-wide world and draws it between a fixed backdrop and the health display.
class GameScreen final : public GameScreenBase {
public:
    GameScreen(); // loads the scene once, so that a fault in it shows at start-up

    void enter() override; // starts afresh from the scene file; a recorded or replayed game with all keys up
    void update() override;
    void render() override;

    Drawable backdrop; // in the units of the identity view: the screen is 2 by 2
};

// The projection of the world's view times the camera's placement: the eye looks at the sprite plane from 10 units away.
Matrix4 worldViewProjection(double lookX, double lookY);

// The view of the health display: viewWidth wide, centred on the origin.
Matrix4 healthViewProjection();

} // namespace dunkman
