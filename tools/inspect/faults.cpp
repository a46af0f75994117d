#include "tools/inspect/faults.h"

#include <algorithm>
#include <map>
#include <tuple>

namespace dunkman::inspect {

void Faults::add(const Spot& spot, std::string_view message) {
    found.push_back({spot, std::string(message)});
}

std::vector<std::string> Faults::lines() const {
    std::map<std::string_view, std::size_t> order;
    for (const Fault& fault : found) {
        order.emplace(fault.spot.file, order.size());
    }
    std::vector<const Fault*> sorted;
    for (const Fault& fault : found) {
        sorted.push_back(&fault);
    }
    const auto key = [&order](const Fault* fault) {
        return std::tuple(order.at(fault->spot.file), fault->spot.line, fault->spot.column);
    };
    std::stable_sort(sorted.begin(), sorted.end(),
                     [&key](const Fault* left, const Fault* right) { return key(left) < key(right); });
    std::vector<std::string> lines;
    lines.reserve(sorted.size());
    for (const Fault* fault : sorted) {
        lines.push_back(fault->spot.file + ':' + std::to_string(fault->spot.line) + ':' +
                        std::to_string(fault->spot.column) + ": " + fault->message);
    }
    lines.erase(std::unique(lines.begin(), lines.end()), lines.end());
    return lines;
}

std::string inQuotes(std::string_view text) {
    std::string out = "\"";
    for (const char letter : text) {
        const bool isControl = static_cast<unsigned char>(letter) < ' ' || letter == '\x7f';
        out += isControl ? '?' : letter;
    }
    return out + '"';
}

} // namespace dunkman::inspect
