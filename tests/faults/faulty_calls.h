#pragma once

#include <array>
#include <cstdint>
#include <string_view>

// The system's calls that a program on the simulated machine makes, counted, and one of them failing when asked. They
// stand in front of the C library's own.
namespace dunkman {

enum class SystemCall { Allocation, Status, Open, Read, Write, Close, Rename };

inline constexpr std::array<std::string_view, 7> systemCallNames = {"allocation", "status", "open",  "read",
                                                                    "write",      "close",  "rename"};

// Counts from here on. The `number`th call of this kind, from 1 on, fails; with 0 none does.
void beginCounting(SystemCall failing = SystemCall::Allocation, std::int64_t number = 0);

// How often each has been called since, the failing one included; from now on nothing is counted and nothing fails.
std::array<std::int64_t, systemCallNames.size()> endCounting();

} // namespace dunkman
