#include "app/process_end.h"

#include "audio/sound.h"
#include "platform/platform.h"

namespace dunkman {

void endProcess(int status) {
    platform::restoreDesktop();
    finishAudio();
    platform::exitProcess(status);
}

} // namespace dunkman
