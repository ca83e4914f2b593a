// SPDX-License-Identifier: MIT
#include "host/vxapi/view/canvas/RasterPicture.h"

#include <QPainter>
#include <vector>

namespace {

/// The item's pixels, premultiplied.
QImage paintItem(const PictureItem &item)
{
    const QSize size = item.target.size();
    QImage picture(size, QImage::Format_ARGB32_Premultiplied);
    const ImagePyramid::Level &level = item.pyramid->levels()[item.pyramid->levelFor(size)];
    std::array<QRgb, 256> table{};
    for (std::size_t i = 0; i < table.size(); ++i)
        table[i] = qPremultiply((item.table[i] & 0xffffffu) | (QRgb(item.alpha) << 24));
    std::vector<int> columns(size.width());
    for (int x = 0; x < size.width(); ++x)
        columns[x] = int((2LL * x + 1) * level.width / (2LL * size.width()));
    for (int y = 0; y < size.height(); ++y) {
        const auto row = std::size_t((2LL * y + 1) * level.height / (2LL * size.height()));
        const float *source = level.pixels.data() + row * level.width;
        auto *target = reinterpret_cast<QRgb *>(picture.scanLine(y));
        for (int x = 0; x < size.width(); ++x) {
            const double position = item.palette.position(double(source[columns[x]]));
            // Written so that a NaN, which compares as false, takes the last branch.
            if (item.isLowTransparent && position <= 0.0)
                target[x] = 0;
            else
                target[x] = position >= 0.0 ? table[std::size_t(position * 255.0 + 0.5)]
                                            : CILPalette::notFiniteColor();
        }
    }
    return picture;
}

} // namespace

QImage paintPyramid(const ImagePyramid &pyramid, const CILPalette &palette, const QSize &size)
{
    return paintItem({0, &pyramid, palette, palette.table(), QRect(QPoint(), size), 255, false})
        .convertToFormat(QImage::Format_RGB32);
}

QImage paintRasterPicture(const PictureContent &content)
{
    if (content.size.isEmpty())
        return QImage();
    QImage picture(content.size, QImage::Format_ARGB32_Premultiplied);
    picture.fill(content.background);
    QPainter painter(&picture);
    for (const PictureItem &item : content.items)
        painter.drawImage(item.target.topLeft(), paintItem(item));
    return picture;
}
