// SPDX-License-Identifier: MIT
#include "host/vxapi/view/canvas/OverlayPainter.h"

#include "host/vxapi/view/canvas/ColorbarPainter.h"
#include "host/vxapi/view/canvas/KeepInSight.h"
#include "host/vxapi/view/canvas/ViewDecoration.h"

#include <algorithm>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>

namespace {

// Of the text in an empty place [device-independent pixels].
constexpr int LARGEST_TEXT = 13;
constexpr int SMALLEST_TEXT = 8;
constexpr double TEXT_MARGIN = 6.0;

/// The rectangle moved into the picture as far as it fits.
QRectF movedInside(const QRectF &rect, const QSizeF &picture)
{
    return {placeInSight(rect.topLeft(), rect.size(), QRectF(QPointF(), picture)), rect.size()};
}

void paintFrames(QPainter &painter, const OverlayContent &content)
{
    painter.save();
    painter.scale(1.0 / content.pixelRatio, 1.0 / content.pixelRatio);
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(Qt::NoPen);
    for (const OverlayEmptyPlace &place : content.emptyPlaces)
        painter.fillRect(place.rect, QColor(0x19, 0x1a, 0x1d));
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QColor(0x3c, 0x3f, 0x46));
    for (const OverlayEmptyPlace &place : content.emptyPlaces)
        painter.drawRect(place.rect.adjusted(0, 0, -1, -1));
    // Around the image, not over its edge pixels.
    for (const QRect &image : content.images)
        painter.drawRect(image.adjusted(-1, -1, 0, 0));
    painter.restore();
}

/// The part of an empty place that no tag covers: what is below them.
QRectF freeOf(const QRectF &place, const QVector<OverlayTag> &tags)
{
    QRectF free = place.adjusted(TEXT_MARGIN, TEXT_MARGIN, -TEXT_MARGIN, -TEXT_MARGIN);
    for (const OverlayTag &tag : tags) {
        if (!tag.lines.isEmpty() && tag.rect.intersects(free))
            free.setTop(tag.rect.bottom());
    }
    return free;
}

/// As large as the font of the tags, or smaller, so that all of it can be read.
void paintEmptyText(QPainter &painter, const OverlayEmptyPlace &place, const OverlayContent &content)
{
    const QRectF whole(QPointF(place.rect.topLeft()) / content.pixelRatio,
                       QSizeF(place.rect.size()) / content.pixelRatio);
    const QRectF free = freeOf(whole, content.tags);
    if (place.text.isEmpty() || free.isEmpty())
        return;
    // From the top where even the smallest does not fit: the beginning says most.
    int flags = Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap;
    // A path is one word: it is broken behind its separators, at a place that is not seen.
    QString text = place.text;
    text.replace(QLatin1Char('/'), QStringLiteral("/") + QChar(0x200b));
    QFont font = QGuiApplication::font();
    for (int pixels = LARGEST_TEXT; pixels >= SMALLEST_TEXT; --pixels) {
        font.setPixelSize(pixels);
        const QRectF needed = QFontMetricsF(font).boundingRect(free, flags, text);
        if (needed.width() <= free.width() && needed.height() <= free.height()) {
            flags = Qt::AlignCenter | Qt::TextWordWrap;
            break;
        }
    }
    painter.save();
    painter.setClipRect(whole);
    painter.setFont(font);
    painter.setPen(QColor(0xc8, 0xcb, 0xd2));
    painter.drawText(free, flags, text);
    painter.restore();
}

void paintTag(QPainter &painter, const OverlayTag &tag, const QSizeF &picture)
{
    if (tag.lines.isEmpty() || tag.rect.isEmpty())
        return;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    QRectF rect = movedInside(tag.rect, picture);
    if (rect.width() > picture.width() && picture.width() > 0.0) {
        // A line that is longer than the window is wide is painted smaller rather than cut off.
        const double shrink = picture.width() / rect.width();
        painter.translate(0.0, rect.center().y());
        painter.scale(shrink, shrink);
        rect.moveTopLeft(QPointF(0.0, -rect.height() / 2.0));
    }
    if (tag.border) {
        painter.setPen(QColor(0xc8, 0xcb, 0xd2));
        painter.setBrush(QColor(0x10, 0x11, 0x14, 0xd8));
        painter.drawRoundedRect(rect.adjusted(0.5, 0.5, -0.5, -0.5), 3.0, 3.0);
    }
    const QFontMetricsF metrics(tag.font);
    const double textHeight = metrics.lineSpacing() * tag.lines.size();
    double baseline = rect.center().y() - textHeight / 2.0 + metrics.ascent();
    painter.setFont(tag.font);
    for (const QString &line : tag.lines) {
        const QPointF at(rect.center().x() - metrics.size(Qt::TextSingleLine, line).width() / 2.0, baseline);
        if (!tag.border) {
            // A dark rim keeps the text legible where it lies on a bright picture.
            QPainterPath path;
            path.addText(at, tag.font, line);
            painter.strokePath(path,
                               QPen(QColor(0, 0, 0, 0xc0), 2.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        }
        painter.setPen(QColor(0xf0, 0xf1, 0xf4));
        painter.drawText(at, line);
        baseline += metrics.lineSpacing();
    }
    painter.restore();
}

void paintNotes(QPainter &painter, const NoteStrip &notes)
{
    if (notes.lines.isEmpty())
        return;
    painter.save();
    painter.fillRect(notes.rect, QColor(0x10, 0x11, 0x14, 0xd8));
    painter.setPen(QColor(0xf2, 0xc6, 0x6d));
    painter.setFont(notes.font);
    const QFontMetricsF metrics(notes.font);
    double baseline = notes.rect.top() + NoteStrip::ABOVE + metrics.ascent();
    for (const QString &line : notes.lines) {
        painter.drawText(QPointF(notes.rect.left() + NoteStrip::SIDE, baseline), line);
        baseline += metrics.lineSpacing();
    }
    painter.restore();
}

} // namespace

QImage paintOverlay(const OverlayContent &content)
{
    if (content.size.isEmpty())
        return QImage();
    QImage overlay(content.size, QImage::Format_ARGB32_Premultiplied);
    overlay.setDevicePixelRatio(content.pixelRatio);
    overlay.fill(Qt::transparent);
    QPainter painter(&overlay);
    paintFrames(painter, content);
    for (const OverlayEmptyPlace &place : content.emptyPlaces)
        paintEmptyText(painter, place, content);
    for (ViewDecoration *decoration : content.decorations) {
        painter.save();
        decoration->paintOver(painter);
        painter.restore();
    }
    ColorbarPainter bars(painter, content.scale);
    for (const OverlayBar &bar : content.bars)
        bars.paint(bar.rect, bar.palette);
    const QSizeF picture = QSizeF(content.size) / content.pixelRatio;
    for (const OverlayTag &tag : content.tags)
        paintTag(painter, tag, picture);
    paintNotes(painter, content.notes);
    return overlay;
}
