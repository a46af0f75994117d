#pragma once

#include <stdexcept>
#include <string>

namespace dunkman {

// A state that the game cannot go on from. The program's entry catches it, shows what() to the player and ends
// with exit status 1.
class FatalError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Ends the game with a message for the player: plain words that name the file, key or value at fault and say
// what to do about it.
[[noreturn]] void fatal(const std::string& message);

} // namespace dunkman
