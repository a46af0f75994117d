#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "screens/menu_decoration.h"
#include "screens/screen.h"

namespace dunkman {

struct StoryLine {
    double start; // seconds of story time
    std::string_view text;
};

inline constexpr std::array<StoryLine, 9> storyLines = {{
    {-0.5, "WELCOME TO THE STORY OF AGENT DUNKMAN"},
    {6.5, "A SIMPLE MAN WORKING HARD ON THE JOB"},
    {11.5, "THIS SUMMER HE TAKES A WELL DESERVED HOLIDAY"},
    {16.5, "THE SUN ON HIS FACE A COCKTAIL IN HIS HAND"},
    {21.5, "ENJOYING A FANCY SEASIDE RESORT"},
    {24.5, "BOOKED AT SUNNYDOOM DOT RESORT"},
    {28.5, "SO CHEAP WHAT A DEAL WHAT A DUNK MAN"},
    {34.5, "BUT LITTLE DOES HE KNOW HE CAN CHECK IN ANY TIME"},
    {40.5, "BUT CAN HE LEAVE"},
}};

// How many characters of a line are typed at a story time at or after its start.
std::size_t typedCharacters(const StoryLine& line, double storyTime);

// The story, typed out line by line; X or space skips it.
class IntroScreen final : public GameScreenBase {
public:
    void enter() override;
    void update() override;
    void render() override;

    MenuDecoration decoration;
    double storyTime = 0.0; // seconds; never reset, so a second visit goes on where the first ended

private:
    void drawStory() const;
};

} // namespace dunkman
