#include "world/pineapple.h"

namespace dunkman {

Pineapple::Pineapple() {
    durability = 5;
    size.y = 0.8;
    useImage("pineapple");
    fitWidthToImage();
    handPivot = {0.5, 0.25};
    attackTimeout = {1.0};
    timeoutAnimationPercentage = 0.2;
    attackArc = {0.0, -90.0}; // no forward swing; the back swing lifts the fruit
}

} // namespace dunkman
