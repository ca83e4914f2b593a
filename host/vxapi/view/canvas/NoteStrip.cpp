// SPDX-License-Identifier: MIT
#include "host/vxapi/view/canvas/NoteStrip.h"

#include <algorithm>
#include <cmath>
#include <QCoreApplication>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QTextLayout>

namespace {

constexpr int LEAST_PIXELS = 9; ///< of letters that can be read

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(NoteStrip)
};

/// The lines of one note, none wider than that; a word that is wider is broken.
QStringList wrapped(const QString &note, const QFont &font, double width)
{
    QTextLayout layout(note, font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    QStringList lines;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        lines += note.mid(line.textStart(), line.textLength()).trimmed();
    }
    layout.endLayout();
    return lines;
}

double insideOf(double width)
{
    return std::max(1.0, width - 2.0 * NoteStrip::SIDE);
}

/// All notes in a column of that width; of more than one each has a mark.
QStringList columnOf(const QStringList &notes, const QFont &font, double width)
{
    QStringList lines;
    for (const QString &note : notes) {
        const QString marked = notes.size() > 1 ? QChar(0x2022) + QStringLiteral(" ") + note : note;
        lines += wrapped(marked, font, insideOf(width));
    }
    return lines;
}

/// All notes as one text.
QString joined(const QStringList &notes)
{
    const QString all = notes.join(QStringLiteral(" \u2022 "));
    return notes.size() > 1 ? Text::tr("%1 notes: %2").arg(notes.size()).arg(all) : all;
}

double heightOf(const QStringList &lines, const QFont &font)
{
    return std::ceil(QFontMetricsF(font).lineSpacing() * lines.size() + 2.0 * NoteStrip::ABOVE);
}

int linesIn(double height, const QFont &font)
{
    return int((height - 2.0 * NoteStrip::ABOVE) / QFontMetricsF(font).lineSpacing());
}

/// The beginning of a text, in that many lines.
QStringList beginningOf(const QString &text, const QFont &font, double width, int lineCount)
{
    QStringList lines = wrapped(text, font, insideOf(width));
    if (lines.size() <= lineCount)
        return lines;
    const QString rest = QStringList(lines.mid(lineCount - 1)).join(QLatin1Char(' '));
    lines = lines.mid(0, lineCount - 1);
    lines += QFontMetricsF(font).elidedText(rest, Qt::ElideRight, insideOf(width));
    return lines;
}

/// The text in the largest letters of which all lines fit; shortened where there are none.
void fitInto(const QSizeF &room, const QString &text, NoteStrip *strip)
{
    const QFont given = strip->font;
    for (int pixels = QFontInfo(given).pixelSize(); pixels >= LEAST_PIXELS; --pixels) {
        strip->font.setPixelSize(pixels);
        strip->lines = wrapped(text, strip->font, insideOf(room.width()));
        if (strip->lines.size() <= linesIn(room.height(), strip->font))
            return;
    }
    strip->font = given;
    for (int pixels = QFontInfo(given).pixelSize();
         pixels >= LEAST_PIXELS && linesIn(room.height(), strip->font) < 1; --pixels)
        strip->font.setPixelSize(pixels);
    const int lineCount = std::max(1, linesIn(room.height(), strip->font));
    strip->lines = beginningOf(text, strip->font, room.width(), lineCount);
}

} // namespace

NoteStrip NoteStrip::of(const QStringList &notes, const QFont &font, const Surroundings &around)
{
    NoteStrip strip;
    if (notes.isEmpty() || around.view.isEmpty())
        return strip;
    strip.font = font;
    const double width = around.view.width();
    const double bottom = around.view.height();

    strip.lines = columnOf(notes, font, width);
    double height = heightOf(strip.lines, font);
    if (height <= bottom - std::max(around.floor, around.image.bottom())) {
        strip.rect = QRectF(0.0, bottom - height, width, height);
        return strip;
    }
    strip.lines = columnOf(notes, font, around.image.left());
    height = heightOf(strip.lines, font);
    if (around.image.left() >= LEAST && height <= around.image.bottom()) {
        strip.rect = QRectF(0.0, around.image.bottom() - height, around.image.left(), height);
        return strip;
    }
    fitInto({width, bottom - around.floor}, joined(notes), &strip);
    height = std::min(heightOf(strip.lines, strip.font), bottom);
    strip.rect = QRectF(0.0, bottom - height, width, height);
    return strip;
}
