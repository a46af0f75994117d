#pragma once

#include <exception>
#include <new>
#include <stdexcept>
#include <string>
#include <utility>

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

// What the player is told of anything that ended the game: a FatalError's own message; of the library's exceptions,
// whose texts say nothing to him, what they mean.
std::string faultMessage(const std::exception& fault);

// Runs what reads `file` and names the file when memory does not suffice for it.
template <class Action> decltype(auto) namingFile(const std::string& file, Action&& action) {
    try {
        return std::forward<Action>(action)();
    } catch (const std::bad_alloc&) {
        fatal("There is not enough memory for the file \"" + file +
              "\". Close other programs and try again, or make the file smaller.");
    }
}

// Runs what may end the game, and adds to the message where in the data files it was asked for: a sentence, which
// `place` makes only then.
template <class Place, class Action> decltype(auto) namingPlace(Place&& place, Action&& action) {
    try {
        return std::forward<Action>(action)();
    } catch (const FatalError& fault) {
        fatal(std::string(fault.what()) + ' ' + std::forward<Place>(place)());
    }
}

} // namespace dunkman
