#pragma once

namespace dunkman::simulated {

bool isAudioFinished(); // finishAudio was called since the last startAudio

} // namespace dunkman::simulated
