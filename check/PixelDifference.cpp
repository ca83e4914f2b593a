// SPDX-License-Identifier: MIT
#include "check/PixelDifference.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <QCoreApplication>

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(ResultCheck)
};

QString sizeOf(const CILImage &image)
{
    return QStringLiteral("%1 x %2").arg(image.getWidth()).arg(image.getHeight());
}

bool isEqual(float a, float b)
{
    std::uint32_t bitsA = 0;
    std::uint32_t bitsB = 0;
    std::memcpy(&bitsA, &a, sizeof a);
    std::memcpy(&bitsB, &b, sizeof b);
    return bitsA == bitsB || (std::isnan(a) && std::isnan(b));
}

} // namespace

PixelDifference PixelDifference::compare(const CILImage &stored, const CILImage &computed)
{
    PixelDifference difference;
    difference.count = stored.pixelCount();
    if (stored.getWidth() != computed.getWidth() || stored.getHeight() != computed.getHeight()) {
        difference.shape =
            Text::tr("it has %1 pixels, computed again %2.").arg(sizeOf(stored), sizeOf(computed));
        return difference;
    }
    if (stored.getType() != VXS_FLOAT || computed.getType() != VXS_FLOAT) {
        difference.shape = Text::tr("its pixels are not 32-bit float.");
        return difference;
    }
    const float *a = stored.pixels<float>();
    const float *b = computed.pixels<float>();
    for (std::size_t i = 0; i < difference.count; ++i) {
        if (isEqual(a[i], b[i]))
            continue;
        ++difference.different;
        if (std::isfinite(a[i]) && std::isfinite(b[i]))
            difference.largest = std::max(difference.largest, std::abs(double(a[i]) - double(b[i])));
        else
            ++difference.oneFinite;
    }
    return difference;
}

QString PixelDifference::text(tag_edisplayunit unit) const
{
    if (!shape.isEmpty())
        return shape;
    const QString head = Text::tr("%1 of %2 pixels differ").arg(different).arg(count);
    if (oneFinite == different)
        return Text::tr("%1, all between a number and none.").arg(head);
    const QString most =
        Text::tr("%1, by at most %2%3").arg(head, QString::number(largest, 'g', 6), unitSuffix(unit));
    return oneFinite == 0
               ? most + QLatin1Char('.')
               : Text::tr("%1, and %2 of them between a number and none.").arg(most).arg(oneFinite);
}
