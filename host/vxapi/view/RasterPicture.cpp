// SPDX-License-Identifier: MIT
#include "host/vxapi/view/RasterPicture.h"

#include <QPainter>
#include <vector>

QImage paintPyramid(const ImagePyramid &pyramid, const CILPalette &palette, const QSize &size)
{
    QImage picture(size, QImage::Format_RGB32);
    const ImagePyramid::Level &level = pyramid.levels()[pyramid.levelFor(size)];
    const auto table = palette.table();
    std::vector<int> columns(size.width());
    for (int x = 0; x < size.width(); ++x)
        columns[x] = int((2LL * x + 1) * level.width / (2LL * size.width()));
    for (int y = 0; y < size.height(); ++y) {
        const auto row = std::size_t((2LL * y + 1) * level.height / (2LL * size.height()));
        const float *source = level.pixels.data() + row * level.width;
        auto *target = reinterpret_cast<QRgb *>(picture.scanLine(y));
        for (int x = 0; x < size.width(); ++x) {
            const double position = palette.position(double(source[columns[x]]));
            // Written so that a NaN, which compares as false, takes the second branch.
            target[x] =
                position >= 0.0 ? table[std::size_t(position * 255.0 + 0.5)] : CILPalette::notFiniteColor();
        }
    }
    return picture;
}

QImage paintRasterPicture(const SPictureContent &content)
{
    if (content.size.isEmpty())
        return QImage();
    QImage picture(content.size, QImage::Format_ARGB32_Premultiplied);
    picture.fill(content.background);
    QPainter painter(&picture);
    for (const SPictureItem &item : content.items)
        painter.drawImage(item.target.topLeft(),
                          paintPyramid(*item.pyramid, item.palette, item.target.size()));
    return picture;
}
