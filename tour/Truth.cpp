// SPDX-License-Identifier: MIT
#include "tour/Truth.h"

#include "tour/Hand.h"

#include <QFile>

CILImage truth::read(const QString &path)
{
    CILImage image;
    if (image.loadTIFF(QFile::encodeName(path).constData()) != EIL_SUCCESS)
        hand::giveUp(QString::fromStdString(CILImage::lastError()));
    image.ChangeType(VXS_FLOAT);
    return image;
}

double truth::sum(const CILImage &image, const imagetool::DrawnRoi &roi, double width,
                  const std::function<double(double)> &value)
{
    const double pixel = width / double(image.getWidth());
    const QRectF &box = roi.box;
    const float *pixels = image.pixels<float>();
    double total = 0.0;
    for (unsigned row = 0; row < image.getHeight(); ++row) {
        const double y = (row + 0.5) * pixel;
        for (unsigned column = 0; column < image.getWidth(); ++column) {
            const double x = (column + 0.5) * pixel;
            const double across = (x - box.center().x()) / (0.5 * box.width());
            const double down = (y - box.center().y()) / (0.5 * box.height());
            const bool isInside =
                roi.isEllipse ? across * across + down * down <= 1.0
                              : x >= box.left() && x < box.right() && y >= box.top() && y < box.bottom();
            if (isInside)
                total += value(double(pixels[std::size_t(row) * image.getWidth() + column]));
        }
    }
    return total;
}

double truth::sum(const CILImage &image, const imagetool::DrawnRoi &roi, double width)
{
    return sum(image, roi, width, [](double value) { return value; });
}

double truth::count(const CILImage &image, const imagetool::DrawnRoi &roi, double width)
{
    return sum(image, roi, width, [](double) { return 1.0; });
}
