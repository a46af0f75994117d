#pragma once

#include <string>
#include <vector>

namespace dunkman::inspect {

struct CheckOptions {
    std::string shaderCompiler =
        "glslangValidator"; // program; where it is absent, or empty, nothing compiles
};

struct CheckResult {
    std::vector<std::string> faults; // see Faults::lines
    std::vector<std::string> notes;  // what was not checked and why
};

// Every fault of the current data directory: what would stop the game, and what it passes over in silence though
// somebody surely meant something by it.
CheckResult checkData(const CheckOptions& options = {});

} // namespace dunkman::inspect
