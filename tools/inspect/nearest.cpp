#include "tools/inspect/nearest.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "tools/inspect/faults.h"

namespace dunkman::inspect {

namespace {

constexpr std::size_t longestName = 100; // nobody mistypes longer ones

char lowerCase(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

std::size_t costOfChange(char from, char to) { return lowerCase(from) == lowerCase(to) ? 0 : 1; }

// Row by row over the first letters of `left`: what it takes to turn them into those of `right`.
std::size_t distance(std::string_view left, std::string_view right) {
    std::array<std::vector<std::size_t>, 3>
        rows; // the one being filled, the one before and the one before that
    rows.fill(std::vector<std::size_t>(right.size() + 1));
    for (std::size_t to = 0; to <= right.size(); ++to) {
        rows[0][to] = to;
    }
    for (std::size_t from = 1; from <= left.size(); ++from) {
        std::rotate(rows.begin(), rows.end() - 1, rows.end());
        auto& [row, above, twoAbove] = rows;
        row[0] = from;
        for (std::size_t to = 1; to <= right.size(); ++to) {
            row[to] = std::min({above[to] + 1, row[to - 1] + 1,
                                above[to - 1] + costOfChange(left[from - 1], right[to - 1])});
            const bool isSwapped =
                from > 1 && to > 1 && left[from - 1] == right[to - 2] && left[from - 2] == right[to - 1];
            if (isSwapped) {
                row[to] = std::min(row[to], twoAbove[to - 2] + 1);
            }
        }
    }
    return rows[0][right.size()];
}

} // namespace

std::string_view nearestName(std::string_view name, std::span<const std::string_view> known) {
    std::string_view nearest;
    if (name.size() > longestName) {
        return nearest;
    }
    std::size_t least = std::max<std::size_t>(1, name.size() / 3) + 1;
    for (const std::string_view candidate : known) {
        if (candidate.empty() || candidate.size() > longestName) {
            continue;
        }
        const std::size_t cost = distance(name, candidate);
        if (cost < least) {
            least = cost;
            nearest = candidate;
        }
    }
    return nearest;
}

std::string suggestion(std::string_view name, std::span<const std::string_view> known) {
    const std::string_view nearest = nearestName(name, known);
    return nearest.empty() ? std::string() : " Is " + inQuotes(nearest) + " meant?";
}

} // namespace dunkman::inspect
