// SPDX-License-Identifier: MIT
#include "host/vxapi/view/canvas/CVXSTextTag.h"

#include "host/vxapi/view/canvas/CVXSMultiImageView.h"

#include <algorithm>
#include <cmath>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QGuiApplication>

namespace {

constexpr int MARGIN_X = 6;
constexpr int MARGIN_Y = 2;

} // namespace

CVXSTextTag::CVXSTextTag() = default;

CVXSTextTag::~CVXSTextTag()
{
    if (m_view)
        m_view->removeTextTag(this);
}

QFont CVXSTextTag::font()
{
    QFont font = QGuiApplication::font();
    // Small enough for the border between two thumbnails, large enough to be read.
    font.setPixelSize(std::clamp(QFontInfo(font).pixelSize(), 11, 14));
    return font;
}

void CVXSTextTag::setStringList(const QStringList &lines)
{
    if (lines == m_lines)
        return;
    m_lines = lines;
    changed();
}

QSize CVXSTextTag::getSize() const
{
    if (m_lines.isEmpty())
        return QSize(0, 0);
    const QFontMetricsF metrics(font());
    double width = 0.0;
    for (const QString &line : m_lines)
        width = std::max(width, metrics.size(Qt::TextSingleLine, line).width());
    const double height = metrics.lineSpacing() * m_lines.size();
    return QSize(int(std::ceil(width)) + 2 * MARGIN_X, int(std::ceil(height)) + 2 * MARGIN_Y);
}

QSizeF CVXSTextTag::sizeInObjectUnits() const
{
    const QSize size = getSize();
    if (!m_view)
        return size;
    double width = 0.0;
    double height = 0.0;
    m_view->convertWindowToObjectSize(size.width(), size.height(), width, height);
    return {width, height};
}

void CVXSTextTag::setPosition(double x, double y)
{
    const QSizeF size = sizeInObjectUnits();
    m_center = QPointF(x + size.width() / 2.0, y + size.height() / 2.0);
    changed();
}

QPointF CVXSTextTag::position() const
{
    const QSizeF size = sizeInObjectUnits();
    return {m_center.x() - size.width() / 2.0, m_center.y() - size.height() / 2.0};
}

void CVXSTextTag::showBorder(bool on)
{
    m_border = on;
    changed();
}

void CVXSTextTag::show(bool on)
{
    m_shown = on;
    changed();
}

void CVXSTextTag::changed()
{
    if (m_view)
        m_view->update();
}
