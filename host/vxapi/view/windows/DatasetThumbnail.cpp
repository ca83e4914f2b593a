// SPDX-License-Identifier: MIT
#include "host/vxapi/view/windows/DatasetThumbnail.h"

#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/VXCalibration.h"
#include "host/vxapi/view/canvas/ImagePyramid.h"
#include "host/vxapi/view/canvas/RasterPicture.h"
#include "host/vximage/AutoRange.h"

#include <cmath>
#include <QPainter>

namespace {

constexpr QRgb BACKGROUND = qRgb(0x20, 0x22, 0x26);

QImage painted(const CILImage &image, const CILPalette &palette, const QSize &size)
{
    ImagePyramid pyramid;
    pyramid.load(&image, 2 * std::max(size.width(), size.height()));
    return paintPyramid(pyramid, palette, size);
}

QSize fitted(const CILImage &image, int side)
{
    const QSize size =
        QSize(int(image.getWidth()), int(image.getHeight())).scaled(side, side, Qt::KeepAspectRatio);
    return size.expandedTo(QSize(1, 1));
}

CILPalette greyPalette(const CILImage &image)
{
    CILPalette palette;
    palette.SetColorTable(VXS_CT_GRAYS, double(image.getMin()), double(image.getMax()), 0, 0);
    return palette;
}

CILPalette luminescentPalette(const CVXSDataset &dataset, const CILImage &image)
{
    double low = double(image.getMin());
    double high = double(image.getMax());
    ilAutoRange(image, VX_SATURATED_COUNTS, VX_RANGE_BINS, &low, &high);
    CILPalette palette;
    palette.SetColorTable(dataset.getColorTable(), low, high, dataset.getToolInfo().reversed ? 1 : 0, 0);
    palette.setLogScale(dataset.getToolInfo().logarithmic ? 1 : 0);
    return palette;
}

/// What is dark in the luminescent image is left to the photograph.
void fadeDark(QImage &colours, const CILImage &image, const CILPalette &palette)
{
    CILPalette ramp;
    ramp.SetColorTable(VXS_CT_GRAYS, palette.getImageMin(), palette.getImageMax(), 0, 0);
    ramp.setLogScale(palette.isLogScale() ? 1 : 0);
    colours.setAlphaChannel([&] {
        QImage alpha = painted(image, ramp, colours.size()).convertToFormat(QImage::Format_Grayscale8);
        for (int y = 0; y < alpha.height(); ++y) {
            uchar *line = alpha.scanLine(y);
            for (int x = 0; x < alpha.width(); ++x)
                line[x] = uchar(std::min(230, line[x] * 3));
        }
        return alpha;
    }());
}

/// How much of the photograph's width the luminescent image covers.
double relativeWidth(const CVXSDataset &dataset)
{
    const double luminescent = dataset.getFOVForImage(EIMAGE_LUMINESCENT);
    const double photograph = dataset.getFOVForImage(EIMAGE_PHOTOGRAPH);
    const double ratio = luminescent / photograph;
    return std::isfinite(ratio) && ratio > 0.05 && ratio < 20.0 ? ratio : 1.0;
}

} // namespace

QImage datasetThumbnail(const CVXSDataset &dataset, int side)
{
    QImage thumbnail(side, side, QImage::Format_ARGB32_Premultiplied);
    thumbnail.fill(BACKGROUND);
    QPainter painter(&thumbnail);
    const auto place = [&](const QImage &picture) {
        painter.drawImage((side - picture.width()) / 2, (side - picture.height()) / 2, picture);
    };
    const auto core = [&](tag_eimagetype type) -> const CILImage * {
        const CILImage *image =
            dataset.getImageList()->isPresent(type) ? dataset.getCoreImage(type) : nullptr;
        return image && !image->isEmpty() ? image : nullptr;
    };
    const CILImage *below = core(EIMAGE_PHOTOGRAPH);
    if (!below)
        below = core(EIMAGE_XRAY);
    if (below)
        place(painted(*below, greyPalette(*below), fitted(*below, side)));
    if (const CILImage *image = core(EIMAGE_LUMINESCENT)) {
        QSize size = fitted(*image, side);
        if (below)
            size = (QSizeF(size) * std::min(1.0, relativeWidth(dataset))).toSize().expandedTo(QSize(1, 1));
        const CILPalette palette = luminescentPalette(dataset, *image);
        QImage colours = painted(*image, palette, size);
        if (below)
            fadeDark(colours, *image, palette);
        place(colours);
    }
    return thumbnail;
}
