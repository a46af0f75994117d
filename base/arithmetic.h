#pragma once

// The processor's settings for arithmetic: how results are rounded, and what becomes of numbers so small that
// they are kept without a leading one. Libraries that others bring into the process may change them for a
// thread and leave them so; a recording then no longer replays.
namespace dunkman {

// Whether this thread rounds to nearest and keeps the smallest numbers, as operands and as results. Finds out
// by calculating, so it knows of no particular processor.
bool hasDefaultArithmetic();

} // namespace dunkman
