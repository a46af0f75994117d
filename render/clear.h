#pragma once

namespace dunkman {

// Begins a frame: its pixels get the clear colour, its depths the farthest. Where OpenGL is done in software not before the
// first sprite is drawn, so that pixels which are all put in place by a copy need not be cleared, too.
void clearPicture();

// Clears what is still to be cleared: everything, or the depths alone, when the pixels are those of a copy. With a scissor
// rectangle or without depth writes, less would be cleared.
void finishClear();
void finishClearAroundCopy();

} // namespace dunkman
