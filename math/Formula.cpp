// SPDX-License-Identifier: MIT
#include "math/Formula.h"

#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/clickinfo/ClickInfoValues.h"

#include <algorithm>

namespace imagemath {

namespace {

void sum(const Operands &operands, CILImage &result)
{
    result = operands.b;
    result *= operands.k;
    result += operands.a;
    result.takeValuesOf(operands.a);
}

void difference(const Operands &operands, CILImage &result)
{
    result = operands.b;
    result *= operands.k;
    result = operands.a - result;
}

void product(const Operands &operands, CILImage &result)
{
    result = operands.b;
    result *= operands.k;
    result *= operands.a;
    result.takeValuesOf(operands.a);
}

void quotient(const Operands &operands, CILImage &result)
{
    result = operands.a;
    result /= operands.b;
    result *= operands.k;
}

// The masks multiply, they do not select: a NaN of A stays a NaN outside of them, and a mask edge may be a
// fraction.
void thresholdedRatio(const Operands &operands, CILImage &result)
{
    CILImage aboveThreshold;
    operands.countsB.Threshold(operands.k, aboveThreshold);
    result = operands.a * aboveThreshold;
    result /= operands.b;
    result *= operands.ratioScale;
    if (operands.tissueMask)
        result *= *operands.tissueMask;
}

} // namespace

const std::array<Formula, 5> &formulas()
{
    static const std::array<Formula, 5> table{{
        {"A + B * k", false, sum},
        {"A - B * k", false, difference},
        {"A * B * k", false, product},
        {"(A / B) * k", false, quotient},
        {"A/B if Counts(B)>k", true, thresholdedRatio},
    }};
    return table;
}

const Formula *formulaAt(int index)
{
    const auto &table = formulas();
    return index >= 0 && index < int(table.size()) ? &table[std::size_t(index)] : nullptr;
}

const Formula *formulaNamed(const QString &text)
{
    const auto &table = formulas();
    const auto found = std::find_if(table.begin(), table.end(), [&text](const Formula &formula) {
        return text == QLatin1String(formula.text);
    });
    return found != table.end() ? &*found : nullptr;
}

double ratioScaleOf(const CPLClickInfo *clickInfo)
{
    using namespace clickinfo;
    const QString level =
        clickInfo ? textOf(*clickInfo, SECTION_LUMINESCENT, KEY_FLUORESCENCE_LEVEL) : QString();
    return level.toLower() == QLatin1String("high") ? 100.0 : 10.0;
}

} // namespace imagemath
