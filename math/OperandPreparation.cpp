// SPDX-License-Identifier: MIT
#include "math/OperandPreparation.h"

#include "math/FormText.h"

namespace imagemath {

namespace {

void binDown(CILImage &image, std::uint32_t width, std::uint32_t height, int factor)
{
    image.ChangeType(VXS_FLOAT);
    if (image.downSample(width, height, IL_RESAMPLE_BINNING) == EIL_SUCCESS)
        image.setBinningFactor(image.binningFactor() * float(factor));
}

} // namespace

Combination compareOperands(double fieldOfViewA, const CILImage &a, double fieldOfViewB, const CILImage &b)
{
    if (!(fieldOfViewA == fieldOfViewB))
        return Combination::DifferentFieldOfView;
    const auto extent = [](std::uint32_t pixels, const CILImage &image) -> float {
        return float(pixels) * image.binningFactor();
    };
    if (extent(a.getWidth(), a) != extent(b.getWidth(), b) ||
        extent(a.getHeight(), a) != extent(b.getHeight(), b))
        return Combination::DifferentSize;
    return Combination::Possible;
}

QStringList messageOf(Combination combination)
{
    switch (combination) {
    case Combination::Possible:
        return {};
    case Combination::MissingImage:
        return {formText("Need two images.")};
    case Combination::DifferentFieldOfView:
        return {formText("Can't combine images"), formText("having different FOV.")};
    case Combination::DifferentSize:
        return {formText("Can't combine images"), formText("of different sizes.")};
    }
    return {};
}

void reconcileBinning(CILImage &a, CILImage &b, CILImage &countsB)
{
    const float binningA = a.binningFactor();
    const float binningB = b.binningFactor();
    if (binningB > binningA) {
        const int factor = int(binningB / binningA);
        binDown(a, a.getWidth() / unsigned(factor), a.getHeight() / unsigned(factor), factor);
    } else if (binningA > binningB) {
        const int factor = int(binningA / binningB);
        const std::uint32_t width = b.getWidth() / unsigned(factor);
        const std::uint32_t height = b.getHeight() / unsigned(factor);
        binDown(b, width, height, factor);
        binDown(countsB, width, height, factor);
    }
}

} // namespace imagemath
