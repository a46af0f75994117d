#pragma once

namespace dunkman::simulated {

// Keeps line ends in standard output as they are written, on every platform.
void makeStandardOutputBinary();

} // namespace dunkman::simulated
