#include "workshop/exact/mpfr_reference.h"

#include "exact/exact_math.h"

#include <bit>
#include <cmath>
#include <limits>
#include <mpfr.h>

namespace dunkman::exact {
namespace {

// Bits and exponents of the results: floats for the tangent, doubles for all others. MPFR counts exponents
// for mantissas in [1/2, 1).
struct Format {
    mpfr_prec_t bits;
    mpfr_exp_t leastExponent;
    mpfr_exp_t greatestExponent;
};

Format formatOf(Function function) {
    return function == Function::Tan ? Format{24, -148, 128} : Format{53, -1073, 1024};
}

class Number {
public:
    explicit Number(mpfr_prec_t bits) { mpfr_init2(value, bits); }
    ~Number() { mpfr_clear(value); }
    Number(const Number&) = delete;
    Number& operator=(const Number&) = delete;

    mpfr_t value;
};

int evaluate(Function function, Number& result, const Number& argument) {
    switch (function) {
    case Function::Sin:
        return mpfr_sin(result.value, argument.value, MPFR_RNDN);
    case Function::Cos:
        return mpfr_cos(result.value, argument.value, MPFR_RNDN);
    case Function::Exp:
        return mpfr_exp(result.value, argument.value, MPFR_RNDN);
    case Function::Atan:
        return mpfr_atan(result.value, argument.value, MPFR_RNDN);
    case Function::Tan:
        return mpfr_tan(result.value, argument.value, MPFR_RNDN);
    }
    return 0;
}

int invert(Function function, Number& argument, const Number& result) {
    switch (function) {
    case Function::Sin:
        return mpfr_asin(argument.value, result.value, MPFR_RNDN);
    case Function::Cos:
        return mpfr_acos(argument.value, result.value, MPFR_RNDN);
    case Function::Exp:
        return mpfr_log(argument.value, result.value, MPFR_RNDN);
    case Function::Atan:
        return mpfr_tan(argument.value, result.value, MPFR_RNDN);
    case Function::Tan:
        return mpfr_atan(argument.value, result.value, MPFR_RNDN);
    }
    return 0;
}

// |f(x) - x| for a small positive x, by three terms of the series.
double distanceFromArgument(Function function, double x) {
    const double square = x * x;
    const double cube = x * square;
    switch (function) {
    case Function::Sin:
        return cube * (1.0 / 6.0 - square * (1.0 / 120.0 - square * (1.0 / 5040.0)));
    case Function::Atan:
        return cube * (1.0 / 3.0 - square * (1.0 / 5.0 - square * (1.0 / 7.0)));
    default: // the tangent
        return cube * (1.0 / 3.0 + square * (2.0 / 15.0 + square * (17.0 / 315.0)));
    }
}

double asArgument(Function function, double value) {
    return function == Function::Tan ? static_cast<double>(static_cast<float>(value)) : value;
}

double angle(RandomBits& random) {
    switch (random.next() % 8) {
    case 0: // walk phases and the wobble of a long game
        return (random.below1() - 0.5) * 20000.0;
    case 1: // elapsed time, 13-fold, for years
        return random.below1() * 0x1p31;
    case 2: // every size, subnormals included
        return std::bit_cast<double>(random.next());
    case 3:
        return random.scaled(-32, 34);
    case 4: { // beside multiples of pi / 2
        const double multiple = static_cast<double>(random.next() % 2'000'000) * 1.5707963267948966;
        return multiple + multiple * 0x1p-52 * (static_cast<double>(random.next() % 64) - 32.0);
    }
    case 5:
        return (random.below1() - 0.5) * 4.0;
    default:
        return (random.below1() - 0.5) * 200.0;
    }
}

} // namespace

const std::vector<NamedFunction>& allFunctions() {
    static const std::vector<NamedFunction> functions = {
        {Function::Sin, "sin", exactSin},
        {Function::Cos, "cos", exactCos},
        {Function::Exp, "exp", exactExp},
        {Function::Atan, "atan", exactAtan},
        {Function::Tan, "tan",
         [](double radians) { return static_cast<double>(exactTan(static_cast<float>(radians))); }}};
    return functions;
}

double reference(Function function, double argument) {
    const Format format = formatOf(function);
    mpfr_set_emin(format.leastExponent);
    mpfr_set_emax(format.greatestExponent);
    Number x(53);
    Number y(format.bits);
    mpfr_set_d(x.value, argument, MPFR_RNDN);
    const int direction = evaluate(function, y, x);
    mpfr_subnormalize(y.value, direction, MPFR_RNDN);
    return mpfr_get_d(y.value, MPFR_RNDN);
}

double hardArgument(Function function, double nearResult) {
    const Format format = formatOf(function);
    mpfr_set_emin(mpfr_get_emin_min());
    mpfr_set_emax(mpfr_get_emax_max());
    const bool isFloat = function == Function::Tan;
    const double next = isFloat
                            ? static_cast<double>(std::nextafter(static_cast<float>(nearResult), HUGE_VALF))
                            : std::nextafter(nearResult, nearResult < 0.0 ? -HUGE_VAL : HUGE_VAL);
    Number middle(format.bits + 1);
    Number nextNumber(format.bits);
    mpfr_set_d(middle.value, nearResult, MPFR_RNDN);
    mpfr_set_d(nextNumber.value, next, MPFR_RNDN);
    mpfr_add(middle.value, middle.value, nextNumber.value, MPFR_RNDN);
    mpfr_div_2ui(middle.value, middle.value, 1, MPFR_RNDN);
    Number argument(format.bits);
    invert(function, argument, middle);
    return mpfr_get_d(argument.value, MPFR_RNDN);
}

double distanceFromMiddle(Function function, double argument) {
    mpfr_set_emin(mpfr_get_emin_min());
    mpfr_set_emax(mpfr_get_emax_max());
    Number x(53);
    Number y(160);
    mpfr_set_d(x.value, argument, MPFR_RNDN);
    evaluate(function, y, x);
    mpfr_abs(y.value, y.value, MPFR_RNDN);
    mpfr_mul_2si(y.value, y.value, formatOf(function).bits - mpfr_get_exp(y.value),
                 MPFR_RNDN); // in last places
    mpfr_frac(y.value, y.value, MPFR_RNDN);
    mpfr_sub_d(y.value, y.value, 0.5, MPFR_RNDN);
    return std::fabs(mpfr_get_d(y.value, MPFR_RNDN));
}

std::uint64_t RandomBits::next() {
    state += 0x9E3779B97F4A7C15u;
    std::uint64_t mixed = state;
    mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9u;
    mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBu;
    return mixed ^ (mixed >> 31);
}

double RandomBits::below1() { return static_cast<double>(next() >> 11) * 0x1p-53; }

double RandomBits::scaled(int leastExponent, int exponents) {
    const int exponent = leastExponent + static_cast<int>(next() % static_cast<unsigned>(exponents));
    const double size = std::ldexp(1.0 + below1(), exponent);
    return (next() & 1u) != 0 ? -size : size;
}

double randomArgument(Function function, RandomBits& random) {
    switch (function) {
    case Function::Sin:
    case Function::Cos:
        return angle(random);
    case Function::Tan:
        if (random.next() % 4 == 0) { // any float
            return static_cast<double>(std::bit_cast<float>(static_cast<std::uint32_t>(random.next())));
        }
        return asArgument(function, random.next() % 2 == 0 ? random.below1() * 1.6 : angle(random));
    case Function::Exp:
        switch (random.next() % 8) {
        case 0:
            return std::bit_cast<double>(random.next());
        case 1: // subnormal results, and a little beyond
            return -708.0 - random.below1() * 38.0;
        case 2:
            return random.scaled(-60, 62);
        case 3:
            return (random.below1() - 0.5) * 1420.0;
        default: // four times a step between nothing and a quarter of a minute
            return random.below1() * (random.next() % 2 == 0 ? -1.0 : -60.0);
        }
    case Function::Atan:
        switch (random.next() % 4) {
        case 0:
            return std::bit_cast<double>(random.next());
        case 1:
            return random.scaled(-32, 100);
        default:
            return (random.below1() - 0.5) * 16.0;
        }
    }
    return 0.0;
}

// A small x beside which f(x) - x is an odd multiple of half a last place of x, so that f(x) is close to a
// middle.
double hardSmallArgument(Function function, RandomBits& random) {
    const bool isFloat = function == Function::Tan;
    const int exponent =
        isFloat ? -12 + static_cast<int>(random.next() % 6) : -26 + static_cast<int>(random.next() % 20);
    const double lastPlace = std::ldexp(1.0, exponent - (isFloat ? 23 : 52));
    double x = std::ldexp(1.0 + random.below1(), exponent);
    const double wanted = (std::floor(distanceFromArgument(function, x) / lastPlace) + 0.5) * lastPlace;
    for (int round = 0; round < 6; ++round) { // the distance grows with the cube of x
        x += x * (wanted / distanceFromArgument(function, x) - 1.0) / 3.0;
    }
    return asArgument(function, x);
}

double randomHardArgument(Function function, RandomBits& random) {
    const double besideOne = 1.0 - std::fabs(random.scaled(-53, 52));
    switch (function) {
    case Function::Sin:
        return random.next() % 2 == 0 ? hardSmallArgument(function, random)
                                      : hardArgument(function, besideOne);
    case Function::Cos:
        return hardArgument(function, besideOne);
    case Function::Exp:
        switch (random.next() % 4) {
        case 0: // a subnormal result
            return hardArgument(function, std::bit_cast<double>(random.next() >> (12 + random.next() % 40)));
        case 1:
            return hardArgument(function, std::fabs(random.scaled(-1022, 2045)));
        default:
            return hardArgument(function, 1.0 + random.scaled(-52, 51));
        }
    case Function::Atan:
        return random.next() % 2 == 0
                   ? hardSmallArgument(function, random)
                   : hardArgument(function, 1.5707963267948966 - std::fabs(random.scaled(-50, 49)));
    case Function::Tan:
        return random.next() % 2 == 0
                   ? hardSmallArgument(function, random)
                   : hardArgument(function,
                                  static_cast<double>(static_cast<float>(std::fabs(random.scaled(-12, 30)))));
    }
    return 0.0;
}

} // namespace dunkman::exact
