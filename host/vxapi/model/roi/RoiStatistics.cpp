// SPDX-License-Identifier: MIT
#include "host/vxapi/model/roi/RoiStatistics.h"

#include "host/vximage/base/PixelTypes.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

/// Pixels of a row that belong to the ROI.
struct Run
{
    std::size_t first; ///< in the image's pixels
    std::size_t count;
};

/// A sum that carries the rounding error of every step (Knuth's two-sum).
class CompensatedSum
{
public:
    void add(double value)
    {
        const double sum = m_sum + value;
        const double part = sum - m_sum;
        m_error += (m_sum - (sum - part)) + (value - part);
        m_sum = sum;
    }
    double value() const { return std::isfinite(m_sum) ? m_sum + m_error : m_sum; }

private:
    double m_sum = 0.0;
    double m_error = 0.0;
};

double centre(std::size_t index, double pixelSize)
{
    return (double(index) + 0.5) * pixelSize;
}

/// The first of `count` pixels whose centre is at or behind an edge; `count` when there is none.
std::size_t firstFrom(double edge, double pixelSize, std::size_t count)
{
    const double estimate = std::ceil(edge / pixelSize - 0.5);
    if (std::isnan(estimate))
        return count;
    auto index = std::size_t(std::min(std::max(estimate, 0.0), double(count)));
    // The estimate is rounded; the centres themselves decide.
    while (index > 0 && centre(index - 1, pixelSize) >= edge)
        --index;
    while (index < count && centre(index, pixelSize) < edge)
        ++index;
    return index;
}

std::vector<Run> runsOf(const CILImage &image, const CROIBase &roi, double pixelSize)
{
    const std::size_t width = image.getWidth();
    const std::size_t height = image.getHeight();
    const QRectF box = roi.boundingBox();
    // A row more at either end: the lower edge of an ellipse belongs to it. The spans decide.
    const std::size_t top = firstFrom(box.top(), pixelSize, height);
    const std::size_t bottom = std::min(firstFrom(box.bottom(), pixelSize, height) + 1, height);
    std::vector<Run> runs;
    for (std::size_t y = top > 0 ? top - 1 : 0; y < bottom; ++y) {
        const QVector<RoiSpan> spans = roi.spansAt(centre(y, pixelSize));
        for (const RoiSpan &span : spans) {
            const std::size_t from = firstFrom(span.from, pixelSize, width);
            const std::size_t to = firstFrom(span.to, pixelSize, width);
            if (from < to)
                runs.push_back({y * width + from, to - from});
        }
    }
    return runs;
}

template <typename T>
void addRange(const T *pixels, const std::vector<Run> &runs, RoiStatistics *result)
{
    CompensatedSum sum;
    double minimum = std::numeric_limits<double>::infinity();
    double maximum = -minimum;
    for (const Run &run : runs) {
        for (std::size_t i = run.first; i < run.first + run.count; ++i) {
            const double value = double(pixels[i]);
            if (!std::isfinite(value)) {
                ++result->notFinitePixels;
                continue;
            }
            sum.add(value);
            minimum = std::min(minimum, value);
            maximum = std::max(maximum, value);
        }
        result->pixels += qint64(run.count);
    }
    result->pixels -= result->notFinitePixels;
    result->sum = sum.value();
    if (result->pixels == 0)
        return;
    result->mean = result->sum / double(result->pixels);
    result->minimum = minimum;
    result->maximum = maximum;
}

/// A pass of its own, about the mean: the difference of large sums would tell nothing of a small spread.
template <typename T>
void addDeviation(const T *pixels, const std::vector<Run> &runs, RoiStatistics *result)
{
    if (result->pixels < 2 || !std::isfinite(result->mean))
        return;
    CompensatedSum squares;
    CompensatedSum rest; // of a mean that is rounded
    for (const Run &run : runs) {
        for (std::size_t i = run.first; i < run.first + run.count; ++i) {
            if (!std::isfinite(double(pixels[i])))
                continue;
            const double difference = double(pixels[i]) - result->mean;
            squares.add(difference * difference);
            rest.add(difference);
        }
    }
    const double n = double(result->pixels);
    const double variance = (squares.value() - rest.value() * rest.value() / n) / (n - 1.0);
    result->standardDeviation = std::sqrt(std::max(variance, 0.0));
}

template <typename T>
qint64 countFrom(const T *pixels, const std::vector<Run> &runs, double level)
{
    qint64 count = 0;
    for (const Run &run : runs) {
        for (std::size_t i = run.first; i < run.first + run.count; ++i)
            count += std::isfinite(double(pixels[i])) && double(pixels[i]) >= level ? 1 : 0;
    }
    return count;
}

bool isPixelSize(double pixelSize)
{
    return pixelSize > 0.0 && std::isfinite(pixelSize);
}

} // namespace

RoiStatistics roiStatistics(const CILImage &image, const CROIBase &roi, double pixelSize)
{
    RoiStatistics result;
    if (!isPixelSize(pixelSize) || image.isEmpty())
        return result;
    const std::vector<Run> runs = runsOf(image, roi, pixelSize);
    il::withPixelType(image.getType(), [&](auto tag) {
        const auto *pixels = static_cast<decltype(tag)>(image.get_data());
        addRange(pixels, runs, &result);
        addDeviation(pixels, runs, &result);
    });
    return result;
}

qint64 roiPixelsAtOrAbove(const CILImage &image, const CROIBase &roi, double pixelSize, double level)
{
    if (!isPixelSize(pixelSize) || image.isEmpty())
        return 0;
    const std::vector<Run> runs = runsOf(image, roi, pixelSize);
    return il::withPixelType(image.getType(), [&](auto tag) {
        return countFrom(static_cast<decltype(tag)>(image.get_data()), runs, level);
    });
}
