#pragma once

#include <string>

#include "tools/inspect/faults.h"

namespace dunkman::inspect {

// The expanded text of a stage. Lines end in a comment with their file and line, so that those can be told of it: see
// sourceOfLine.
struct ShaderStage {
    std::string path;
    std::string markedText;
};

// Checks the game's shaders as far as the game itself looks into them. Answers whether they are whole, and then their
// texts.
bool checkShaders(Faults& faults, ShaderStage& vertex, ShaderStage& fragment);

enum class ShaderCompiler { Absent, Present };

// Has the compiler, which takes arguments and reports as glslangValidator does, compile and link the two, where it is
// installed, and reports the first error.
ShaderCompiler compileShaders(const std::string& compiler, const ShaderStage& vertex,
                              const ShaderStage& fragment, Faults& faults);

// Where a line of a stage's text, from 1, comes from.
Spot sourceOfLine(const ShaderStage& stage, std::size_t line);

} // namespace dunkman::inspect
