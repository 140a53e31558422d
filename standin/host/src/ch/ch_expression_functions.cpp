#include "ch/ch_tree.h"

#include <algorithm>
#include <cmath>

namespace
{
typedef const std::vector<CH_ExprValue>& Arguments;

const fpreal degrees = 57.295779513082320876798154814105;

fpreal number(Arguments arguments, std::size_t index) { return arguments[index].asNumber(); }

template <fpreal (*Function)(fpreal)>
CH_ExprValue ofOne(Arguments arguments)
{
    return CH_ExprValue(Function(number(arguments, 0)));
}

template <fpreal (*Function)(fpreal, fpreal)>
CH_ExprValue ofTwo(Arguments arguments)
{
    return CH_ExprValue(Function(number(arguments, 0), number(arguments, 1)));
}

// Angles are in degrees.
fpreal sine(fpreal x) { return std::sin(x / degrees); }
fpreal cosine(fpreal x) { return std::cos(x / degrees); }
fpreal tangent(fpreal x) { return std::tan(x / degrees); }
fpreal arcSine(fpreal x) { return std::asin(x) * degrees; }
fpreal arcCosine(fpreal x) { return std::acos(x) * degrees; }
fpreal arcTangent(fpreal x) { return std::atan(x) * degrees; }
fpreal arcTangent2(fpreal y, fpreal x) { return std::atan2(y, x) * degrees; }
fpreal magnitude(fpreal x) { return std::fabs(x); }
fpreal down(fpreal x) { return std::floor(x); }
fpreal up(fpreal x) { return std::ceil(x); }
fpreal nearest(fpreal x) { return std::floor(x + 0.5); }
fpreal whole(fpreal x) { return std::trunc(x); }
fpreal fraction(fpreal x) { return x - std::floor(x); }
fpreal squareRoot(fpreal x) { return std::sqrt(x); }
fpreal exponential(fpreal x) { return std::exp(x); }
fpreal naturalLog(fpreal x) { return std::log(x); }
fpreal decimalLog(fpreal x) { return std::log10(x); }
fpreal sign(fpreal x) { return (x > 0) - (x < 0); }
fpreal power(fpreal x, fpreal y) { return std::pow(x, y); }
fpreal smaller(fpreal x, fpreal y) { return std::min(x, y); }
fpreal larger(fpreal x, fpreal y) { return std::max(x, y); }

/// clamp(value, low, high)
CH_ExprValue clamp(Arguments arguments)
{
    return CH_ExprValue(std::max(number(arguments, 1), std::min(number(arguments, 0), number(arguments, 2))));
}

/// fit(value, oldLow, oldHigh, newLow, newHigh), limited to the new range
CH_ExprValue fit(Arguments arguments)
{
    const fpreal from = number(arguments, 1);
    const fpreal extent = number(arguments, 2) - from;
    const fpreal place = extent == 0 ? 0 : (number(arguments, 0) - from) / extent;
    const fpreal limited = std::max(0.0, std::min(place, 1.0));
    return CH_ExprValue(number(arguments, 3) + limited * (number(arguments, 4) - number(arguments, 3)));
}

CH_ExprValue textLength(Arguments arguments)
{
    return CH_ExprValue(static_cast<fpreal>(arguments[0].asText().size()));
}

CH_ExprValue joined(Arguments arguments)
{
    return CH_ExprValue(arguments[0].asText() + arguments[1].asText());
}

/// strcmp(a, b): 0 when equal, else 1 or -1
CH_ExprValue compared(Arguments arguments)
{
    const int order = arguments[0].asText().compare(arguments[1].asText());
    return CH_ExprValue(static_cast<fpreal>((order > 0) - (order < 0)));
}

std::string changedCase(std::string text, char first, char last, int by)
{
    for (char& c : text)
        if (c >= first && c <= last)
            c = static_cast<char>(c + by);
    return text;
}

CH_ExprValue lowerCase(Arguments arguments)
{
    return CH_ExprValue(changedCase(arguments[0].asText(), 'A', 'Z', 'a' - 'A'));
}

CH_ExprValue upperCase(Arguments arguments)
{
    return CH_ExprValue(changedCase(arguments[0].asText(), 'a', 'z', 'A' - 'a'));
}

const CH_ExprFunction functions[] = {
    {"abs", 1, 1, ofOne<magnitude>},
    {"acos", 1, 1, ofOne<arcCosine>},
    {"asin", 1, 1, ofOne<arcSine>},
    {"atan", 1, 1, ofOne<arcTangent>},
    {"atan2", 2, 2, ofTwo<arcTangent2>},
    {"ceil", 1, 1, ofOne<up>},
    {"clamp", 3, 3, clamp},
    {"cos", 1, 1, ofOne<cosine>},
    {"exp", 1, 1, ofOne<exponential>},
    {"fit", 5, 5, fit},
    {"floor", 1, 1, ofOne<down>},
    {"frac", 1, 1, ofOne<fraction>},
    {"int", 1, 1, ofOne<whole>},
    {"log", 1, 1, ofOne<naturalLog>},
    {"log10", 1, 1, ofOne<decimalLog>},
    {"max", 2, 2, ofTwo<larger>},
    {"min", 2, 2, ofTwo<smaller>},
    {"pow", 2, 2, ofTwo<power>},
    {"rint", 1, 1, ofOne<nearest>},
    {"round", 1, 1, ofOne<nearest>},
    {"sign", 1, 1, ofOne<sign>},
    {"sin", 1, 1, ofOne<sine>},
    {"sqrt", 1, 1, ofOne<squareRoot>},
    {"strcat", 2, 2, joined},
    {"strcmp", 2, 2, compared},
    {"strlen", 1, 1, textLength},
    {"tan", 1, 1, ofOne<tangent>},
    {"tolower", 1, 1, lowerCase},
    {"toupper", 1, 1, upperCase},
};
} // namespace

const CH_ExprFunction* CHfindFunction(const std::string& name)
{
    for (const CH_ExprFunction& function : functions)
        if (name == function.name)
            return &function;
    return nullptr;
}
