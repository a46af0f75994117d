#include "json5/data_file.h"

#include "base/fatal.h"
#include "json5/reader.h"

namespace dunkman {

namespace {

// Digits may go on for megabytes.
std::string shortened(const std::string& literal) {
    constexpr std::size_t most = 40;
    return literal.size() <= most ? literal : literal.substr(0, most) + "...";
}

} // namespace

JsonValue loadDataFile(const std::string& path) {
    try {
        return parseFile(path);
    } catch (const NumberOutOfRange& fault) {
        const std::string key = fault.keys.empty() ? "" : ", the value of \"" + fault.keys + "\",";
        fatal(path + ":" + std::to_string(fault.start.line + 1) + ":" +
              std::to_string(fault.start.column + 1) + ": the number " + shortened(fault.literal) + key +
              " is too large, or too close to 0, for the game to hold. Write an ordinary one.");
    }
}

} // namespace dunkman
