#include "world/flamingo.h"

namespace dunkman {

Flamingo::Flamingo() {
    size.y = 1.2;
    useImage("flamingo");
    autoMirror = true;
    inverseMirror = true;
    fitWidthToImage();
}

} // namespace dunkman
