#pragma once

#include <string>
#include <vector>

#include "tests/fakes/small_data.h"

namespace dunkman {

// A data directory without fault: tests/tools/good_data, textures, shaders and music.
class GoodData : public SmallData {
public:
    GoodData();
};

// A file of tests/tools/broken_data: what is broken in a good directory, and what the check says then. Line by line:
//   in FILE            the following lines are about this file
//   replace TEXT       which stands there once...
//   by TEXT            ...by this
//   write TEXT         the whole file
//   prepend TEXT, append TEXT
//   repeat TEXT COUNT  the whole file
//   cut BYTES          keeps so many
//   byte OFFSET VALUE
//   remove             the file
//   folder             makes a folder of that name
//   needs PROGRAM      which may be absent
//   expect LINE        of what the check prints; the lines in their order are all of it
// TEXT has the escapes \n, \\ and \xHH.
struct BrokenExample {
    std::string name;
    std::vector<std::string> steps;
    std::string expected;
    std::string neededProgram;
};

std::vector<BrokenExample> brokenExamples();

// Throws std::runtime_error when a step does not fit the directory.
void breakData(const BrokenExample& example, const SmallData& data);

} // namespace dunkman
