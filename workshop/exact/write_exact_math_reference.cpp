// Writes tests/exact/exact_math_reference.txt to the standard output: arguments and correctly rounded results
// of the exact functions, for machines on which MPFR is not at hand. One line holds the function's name, the
// bits of the argument and the bits of the result, all as doubles.
#include "tools/console/about.h"
#include "workshop/exact/mpfr_reference.h"

#include <bit>
#include <cinttypes>
#include <cmath>
#include <cstdio>
#include <limits>

using namespace dunkman::exact;

namespace {

void write(const NamedFunction& named, double argument) {
    if (std::isnan(argument)) {
        return;
    }
    const double result = reference(named.function, argument);
    if (std::isnan(result)) {
        return;
    }
    std::printf("%s %016" PRIx64 " %016" PRIx64 "\n", named.name, std::bit_cast<std::uint64_t>(argument),
                std::bit_cast<std::uint64_t>(result));
}

// Of a million arguments of ordinary size the few dozen that are hardest to round. This is where an error
// bound that claims too much shows: other hard arguments lie where the quick phase is better than its bound.
void writeHardestOfOrdinarySize(const NamedFunction& named) {
    RandomBits random(30);
    for (int count = 0; count < 1'000'000; ++count) {
        const double argument = random.below1() * 1.5;
        if (distanceFromMiddle(named.function, argument) < 0x1p-15) {
            write(named, argument);
        }
    }
}

constexpr const char* usage =
    "write_exact_math_reference              arguments and results of the exact functions, by MPFR\n"
    "write_exact_math_reference --help | --version\n";

} // namespace

int main(int argumentCount, char** arguments) {
    if (dunkman::console::tellAbout(argumentCount, arguments, "write_exact_math_reference", usage)) {
        return 0;
    }
    const double edges[] = {0.0,
                            -0.0,
                            0x1p-149,
                            0x1p-126,
                            0x1p-54,
                            0x1p-27,
                            0x1p-26,
                            0x1p-12,
                            0.5,
                            1.0,
                            1.5,
                            2.0,
                            1024.0,
                            0x1p31,
                            0x1p60,
                            0x1p127,
                            std::numeric_limits<double>::infinity()};
    for (const NamedFunction& named : allFunctions()) {
        RandomBits random(20);
        for (const double edge : edges) {
            write(named, edge);
            write(named, -edge);
        }
        for (int count = 0; count < 180; ++count) {
            write(named, randomArgument(named.function, random));
        }
        for (int count = 0; count < 220; ++count) {
            write(named, randomHardArgument(named.function, random));
        }
    }
    // The double that comes nearest to a multiple of pi / 2, and both ends of the exponential's results.
    for (const NamedFunction& named : allFunctions()) {
        if (named.function == Function::Sin || named.function == Function::Cos) {
            write(named, 6381956970095103.0 * 0x1p797);
        }
        if (named.function ==
            Function::Tan) { // the only four above 2^-12 and below 128 that a double does not settle
            for (const double hard : {0x1.713744p-12, 0x1.3240bcp-3, 0x1.02e9bap2, 0x1.ccfeb2p2}) {
                write(named, hard);
            }
        } else {
            writeHardestOfOrdinarySize(named);
        }
        if (named.function == Function::Exp) {
            for (const double edge : {0x1.62e42fefa39efp9, 0x1.62e42fefa39fp9, -0x1.74910d52d3051p9,
                                      -0x1.74910d52d3052p9, -0x1.6232bdd7abcd2p9, -0x1.6232bdd7abcd3p9}) {
                write(named, edge);
            }
        }
    }
    return 0;
}
