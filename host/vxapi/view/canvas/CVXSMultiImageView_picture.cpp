// SPDX-License-Identifier: MIT
#include "host/vxapi/view/canvas/CVXSMultiImageView_p.h"
#include "host/vxapi/view/canvas/CVXSTextTag.h"
#include "host/vxapi/view/canvas/OverlayPainter.h"
#include "host/vxapi/view/canvas/PictureTone.h"
#include "host/vxapi/view/canvas/RasterPicture.h"

#include <algorithm>
#include <cmath>
#include <QFontMetricsF>
#include <QPainter>

namespace {

constexpr QRgb BACKGROUND = qRgb(0x20, 0x22, 0x26);
/// Thumbnails are small; a larger level 0 would cost memory traffic at every change and show nothing more.
constexpr int THUMBNAIL_LIMIT = 1024;

/// The image's size on the sensor, in unbinned pixels; empty for an empty place.
QSizeF physicalSize(const CILImage *image)
{
    if (!image || image->isEmpty())
        return QSizeF(0.0, 0.0);
    const double binning = image->binningFactor() > 0.0f ? double(image->binningFactor()) : 1.0;
    return QSizeF(image->getWidth() * binning, image->getHeight() * binning);
}

/// The underlay's size in the unit of the image above it; empty without one.
QSizeF underlaySize(const ViewSlot &slot, const QSizeF &above)
{
    const CILImage *below = slot.underlay.image;
    if (!below || below->isEmpty() || above.isEmpty() || !(slot.underlay.widthRatio > 0.0))
        return QSizeF(0.0, 0.0);
    const double width = above.width() * slot.underlay.widthRatio;
    return QSizeF(width, width * below->getHeight() / below->getWidth());
}

QRectF centredIn(const QRectF &place, const QSizeF &size)
{
    QRectF rect(QPointF(), size);
    rect.moveCenter(place.center());
    return rect;
}

} // namespace

QSizeF CVXSMultiImageView::Private::viewSize() const
{
    // Before it is laid out, a widget's size says nothing: what it wishes for is the better guess.
    return laidOut || q->testAttribute(Qt::WA_Resized) ? q->size() : q->sizeHint();
}

QVector<SlotPlaces> CVXSMultiImageView::Private::places() const
{
    QVector<QSizeF> above;
    QVector<QSizeF> below;
    QVector<QSizeF> whole;
    for (int i = 0; i < geometry.cellCount(); ++i) {
        const ViewSlot *slot = i < int(cells.size()) ? &cells[std::size_t(i)] : nullptr;
        above.append(physicalSize(slot ? slot->image : nullptr));
        below.append(slot ? underlaySize(*slot, above.last()) : QSizeF(0.0, 0.0));
        whole.append(above.last().expandedTo(below.last()));
    }
    const QVector<QRectF> rects = geometry.imageRects(whole);
    QVector<SlotPlaces> places;
    for (int i = 0; i < rects.size(); ++i) {
        if (below[i].isEmpty()) {
            places.append({rects[i], QRectF()});
            continue;
        }
        const double scale = rects[i].width() / whole[i].width();
        places.append({centredIn(rects[i], above[i] * scale), centredIn(rects[i], below[i] * scale)});
    }
    return places;
}

/// A bar explains the picture beside it: with limits, direction or scale of its own it would tell the wrong
/// numbers.
CILPalette CVXSMultiImageView::Private::barPalette(const SColorbar &bar) const
{
    const QVector<SlotPlaces> slotPlaces = places();
    for (int i = 0; i < slotPlaces.size(); ++i) {
        const QRectF &place = slotPlaces[i].image;
        const double middle = place.center().y();
        if (place.isEmpty() || middle < double(bar.rect.top) || middle > double(bar.rect.bottom))
            continue;
        return cells[std::size_t(i)].image->getPalette();
    }
    CILPalette palette = bar.palette;
    palette.setReversed(areColorsReversed());
    return palette;
}

/// The direction in which all of the view runs: a bar without an image must not turn round when its image
/// goes.
bool CVXSMultiImageView::Private::areColorsReversed() const
{
    for (const ViewSlot &slot : cells) {
        if (slot.image && !slot.image->isEmpty())
            return slot.image->getPalette().isReversed();
    }
    return !bars.isEmpty() && bars.first()->palette.isReversed();
}

NoteStrip CVXSMultiImageView::Private::noteStrip() const
{
    const QFont font = CVXSTextTag::font();
    const QSizeF size = viewSize();
    NoteStrip::Surroundings around;
    around.view = size;
    around.image = geometry.toDevice(geometry.thumbnailRect(geometry.cellCount() - 1), size);
    // Of the image the notes may cover the foot; a bar has a number at its end, half of it below.
    around.floor = around.image.center().y();
    for (const SColorbar *bar : bars) {
        const QRectF end(0.0, double(bar->rect.bottom), 1.0, 1.0);
        around.floor =
            std::max(around.floor, geometry.toDevice(end, size).top() + QFontMetricsF(font).ascent() / 2.0);
    }
    return NoteStrip::of(notes, font, around);
}

void CVXSMultiImageView::Private::repaint() const
{
    if (canvas)
        canvas->update();
}

PictureContent CVXSMultiImageView::Private::picture()
{
    PictureContent content;
    content.size = deviceSize();
    content.background = BACKGROUND;
    const int limit = geometry.layout == ELAYOUT_THREE_ROWS ? THUMBNAIL_LIMIT : GlPicture::TEXTURE_LIMIT;
    const auto add = [&](int number, ImagePyramid &pyramid, const CILImage *image, const PictureTone &tone,
                         const QRectF &place) -> PictureItem * {
        if (pyramid.load(image, limit))
            ++uploads;
        if (pyramid.isEmpty())
            return nullptr;
        const CILPalette palette = image->getPalette();
        content.items.append({number, &pyramid, palette, tonedTable(palette, tone),
                              geometry.toDevicePixels(place, content.size), 255, false});
        return &content.items.last();
    };
    const QVector<SlotPlaces> slotPlaces = places();
    for (int i = 0; i < std::min(slotPlaces.size(), int(cells.size())); ++i) {
        ViewSlot &slot = cells[std::size_t(i)];
        const SlotPlaces &place = slotPlaces[i];
        const ImageUnderlay &below = slot.underlay;
        // An underlay goes by a number that no slot has.
        const bool isCovering = !place.underlay.isEmpty() &&
                                add(-1 - i, slot.underlayPyramid, below.image, below.tone, place.underlay);
        PictureItem *item = add(i, slot.pyramid, slot.image, slot.tone, place.image);
        if (item && isCovering) {
            item->alpha = int(std::lround(255.0 * std::clamp(below.opacity, 0.0, 1.0)));
            item->isLowTransparent = true;
        }
    }
    return content;
}

QImage CVXSMultiImageView::Private::overlay()
{
    OverlayContent content;
    const QSizeF size = viewSize();
    content.size = deviceSize();
    content.pixelRatio = q->devicePixelRatioF();
    content.scale = geometry.scaleFor(size);
    const QVector<SlotPlaces> slotPlaces = places();
    for (int i = 0; i < slotPlaces.size(); ++i) {
        const QRectF whole = slotPlaces[i].image | slotPlaces[i].underlay;
        if (!whole.isEmpty())
            content.images.append(geometry.toDevicePixels(whole, content.size));
        else if (i < int(cells.size()))
            content.emptyPlaces.append({geometry.toDevicePixels(geometry.thumbnailRect(i), content.size),
                                        cells[std::size_t(i)].emptyText});
    }
    content.decorations = decorations;
    for (const SColorbar *bar : bars) {
        const VXSRECT &rect = bar->rect;
        const double right =
            rect.right > rect.left ? double(rect.right) : double(geometry.colorBarRect().right);
        const QRectF objectRect(double(rect.left), double(rect.top), right - double(rect.left),
                                double(rect.height()));
        content.bars.append({geometry.toDevice(objectRect, size), barPalette(*bar)});
    }
    for (const CVXSTextTag *tag : tags) {
        if (showTags && tag->isShown())
            content.tags.append({geometry.toDevice(QRectF(tag->position(), tag->sizeInObjectUnits()), size),
                                 tag->getStringList(), tag->font(), tag->hasBorder()});
    }
    content.notes = noteStrip();
    return paintOverlay(content);
}

QImage CVXSMultiImageView::Private::rasterPicture()
{
    QImage image = paintRasterPicture(picture());
    if (image.isNull())
        return image;
    image.setDevicePixelRatio(q->devicePixelRatioF());
    QPainter painter(&image);
    painter.drawImage(0, 0, overlay());
    return image;
}
