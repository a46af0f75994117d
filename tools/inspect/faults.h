#pragma once

#include <compare>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace dunkman::inspect {

// Where a fault is. Lines and columns count from 1, columns in bytes; a fault of a file as a whole is at 1:1.
struct Spot {
    std::string file;
    std::size_t line = 1;
    std::size_t column = 1;
};

// Collects what is wrong.
class Faults {
public:
    void add(const Spot& spot, std::string_view message);

    bool empty() const { return found.empty(); }

    // "FILE:LINE:COLUMN: message", file by file in the order in which they first came up, each from its top to its end.
    std::vector<std::string> lines() const;

private:
    struct Fault {
        Spot spot;
        std::string message;
    };

    std::vector<Fault> found;
};

std::string inQuotes(std::string_view text); // what cannot be printed as a question mark

} // namespace dunkman::inspect
