// SPDX-License-Identifier: MIT
#include "host/vxapi/model/roi/CROIBase.h"

#include <algorithm>
#include <cmath>
#include <QCoreApplication>

namespace {

/// Of what an ROI measures: rounding must not take some pixels from the edge of an ellipse and leave others,
/// nor give an area to a line.
constexpr double EDGE_TOLERANCE = 1e-12;

struct Stretch
{
    double begin;
    double length;
};

// Each cell begins where the one before ends, to the last bit, so that no pixel is lost between them or
// counted twice. (begin + length need not be the end that was wanted.)
Stretch cellStretch(double begin, double length, int count, int index)
{
    Stretch cell{begin, 0.0};
    for (int i = 0;; ++i) {
        const double part = i + 1 == count ? length : length * (i + 1) / count;
        cell.length = begin + part - cell.begin;
        if (i == index)
            return cell;
        cell.begin += cell.length;
    }
}

/// Where the last of the cells ends, which may be beside the end of the whole in the last bit.
double cellsEnd(double begin, double length, int count)
{
    const Stretch last = cellStretch(begin, length, count, count - 1);
    return last.begin + last.length;
}

bool areFinite(const QVector<QPointF> &outline)
{
    return std::all_of(outline.cbegin(), outline.cend(), [](const QPointF &corner) {
        return std::isfinite(corner.x()) && std::isfinite(corner.y());
    });
}

QRectF boxAround(const QVector<QPointF> &outline)
{
    if (outline.isEmpty())
        return QRectF();
    QPointF least = outline.first();
    QPointF largest = least;
    for (const QPointF &corner : outline) {
        least = QPointF(std::min(least.x(), corner.x()), std::min(least.y(), corner.y()));
        largest = QPointF(std::max(largest.x(), corner.x()), std::max(largest.y(), corner.y()));
    }
    return QRectF(least, largest);
}

bool isOnOneLine(const QVector<QPointF> &outline)
{
    const QPointF first = outline.first();
    const auto far =
        std::max_element(outline.cbegin(), outline.cend(), [&](const QPointF &a, const QPointF &b) {
            return (a - first).manhattanLength() < (b - first).manhattanLength();
        });
    const QPointF line = *far - first;
    const double negligible = EDGE_TOLERANCE * QPointF::dotProduct(line, line);
    return std::all_of(outline.cbegin(), outline.cend(), [&](const QPointF &corner) {
        const QPointF way = corner - first;
        return std::abs(line.x() * way.y() - line.y() * way.x()) <= negligible;
    });
}

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(ROI)
};

} // namespace

CROIBase::CROIBase(EROISHAPE shape, EROIKIND kind, const QRectF &box)
    : m_shape(shape), m_kind(kind), m_box(box.normalized())
{
}

CROIBase::CROIBase(EROISHAPE shape, EROIKIND kind, const QVector<QPointF> &outline)
    : m_shape(shape), m_kind(kind), m_box(boxAround(outline))
{
    if (!isOutlined())
        return;
    m_outline = outline;
    // Not with the points' own ==, which takes neighbours for the same.
    while (m_outline.size() > 1 && m_outline.first().x() == m_outline.last().x() &&
           m_outline.first().y() == m_outline.last().y())
        m_outline.removeLast();
}

CROIBase::CROIBase(EROIKIND kind, const QRectF &box, int rows, int columns)
    : m_shape(EROI_GRID),
      m_kind(kind),
      m_box(box.normalized()),
      m_rows(std::max(rows, 1)),
      m_columns(std::max(columns, 1))
{
}

bool CROIBase::contains(const QPointF &place) const
{
    const QVector<RoiSpan> spans = spansAt(place.y());
    return std::any_of(spans.cbegin(), spans.cend(),
                       [&](const RoiSpan &span) { return span.from <= place.x() && place.x() < span.to; });
}

QVector<RoiSpan> CROIBase::spansAt(double y) const
{
    if (m_shape == EROI_ELLIPSE)
        return ellipseSpansAt(y);
    if (isOutlined())
        return outlineSpansAt(y);
    const double bottom = cellsEnd(m_box.top(), m_box.height(), m_rows);
    if (m_box.top() <= y && y < bottom)
        return {{m_box.left(), cellsEnd(m_box.left(), m_box.width(), m_columns)}};
    return {};
}

QVector<RoiSpan> CROIBase::ellipseSpansAt(double y) const
{
    const double halfWidth = m_box.width() / 2.0;
    const double halfHeight = m_box.height() / 2.0;
    const double up = (y - m_box.center().y()) / halfHeight;
    const double rest = 1.0 + EDGE_TOLERANCE - up * up;
    if (!(halfWidth > 0.0 && halfHeight > 0.0 && rest > 0.0))
        return {};
    const double half = halfWidth * std::sqrt(rest);
    const double middle = m_box.center().x();
    return {{middle - half, middle + half}};
}

QVector<RoiSpan> CROIBase::outlineSpansAt(double y) const
{
    QVector<double> crossings;
    for (int i = 0; i < m_outline.size(); ++i) {
        QPointF upper = m_outline[i];
        QPointF lower = m_outline[(i + 1) % m_outline.size()];
        if ((upper.y() <= y) == (lower.y() <= y))
            continue;
        // In one direction, so that neighbours who share this edge round alike.
        if (upper.y() > lower.y())
            std::swap(upper, lower);
        crossings += upper.x() + (y - upper.y()) * ((lower.x() - upper.x()) / (lower.y() - upper.y()));
    }
    std::sort(crossings.begin(), crossings.end());
    QVector<RoiSpan> spans;
    for (int i = 0; i + 1 < crossings.size(); i += 2)
        spans += RoiSpan{crossings[i], crossings[i + 1]};
    return spans;
}

QString CROIBase::complaint() const
{
    const bool isFinite = std::isfinite(m_box.left()) && std::isfinite(m_box.top()) &&
                          std::isfinite(m_box.right()) && std::isfinite(m_box.bottom());
    if (!isFinite || !areFinite(m_outline))
        return Text::tr("a coordinate is not a finite number");
    const bool hasBox = m_box.right() > m_box.left() && m_box.bottom() > m_box.top();
    if (!hasBox || (isOutlined() && (m_outline.size() < 3 || isOnOneLine(m_outline))))
        return Text::tr("it has no area");
    if (m_outline.size() > MAX_CORNERS)
        return Text::tr("it has more than %1 corners").arg(MAX_CORNERS);
    if (qint64(m_rows) * m_columns > MAX_CELLS)
        return Text::tr("it has more than %1 cells").arg(MAX_CELLS);
    return QString();
}

void CROIBase::translate(const QPointF &by)
{
    m_box.translate(by);
    for (QPointF &corner : m_outline)
        corner += by;
    if (isOutlined())
        m_box = boxAround(m_outline);
}

void CROIBase::setBoundingBox(const QRectF &box)
{
    const QRectF target = box.normalized();
    if (!(target.width() > 0.0 && target.height() > 0.0))
        return;
    if (!isOutlined()) {
        m_box = target;
        return;
    }
    if (m_box.isEmpty())
        return;
    for (QPointF &corner : m_outline) {
        corner = {target.x() + (corner.x() - m_box.x()) / m_box.width() * target.width(),
                  target.y() + (corner.y() - m_box.y()) / m_box.height() * target.height()};
    }
    m_box = boxAround(m_outline);
}

CROIBase CROIBase::cell(int row, int column) const
{
    const int y = qBound(0, row, m_rows - 1);
    const int x = qBound(0, column, m_columns - 1);
    const Stretch across = cellStretch(m_box.left(), m_box.width(), m_columns, x);
    const Stretch down = cellStretch(m_box.top(), m_box.height(), m_rows, y);
    CROIBase cell(EROI_RECTANGLE, m_kind, QRectF(across.begin, down.begin, across.length, down.length));
    cell.setName(QStringLiteral("%1 [%2, %3]").arg(m_name, QString::number(y + 1), QString::number(x + 1)));
    return cell;
}

QStringList CROIBase::cellNames() const
{
    QStringList names;
    if (m_shape != EROI_GRID)
        return names;
    names.reserve(m_rows * m_columns);
    for (int row = 1; row <= m_rows; ++row) {
        for (int column = 1; column <= m_columns; ++column)
            names += QStringLiteral("%1 [%2, %3]").arg(m_name, QString::number(row), QString::number(column));
    }
    return names;
}
