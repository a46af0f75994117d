#pragma once

// What every developer program answers when it is asked about itself.
namespace dunkman::console {

// With --help among the arguments prints `usage`, with --version the program's name and the version of Dunkman; returns
// whether it did. The program then ends with status 0.
bool tellAbout(int argumentCount, const char* const* arguments, const char* program, const char* usage);

} // namespace dunkman::console
