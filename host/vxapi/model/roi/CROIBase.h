// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/vxapi_global.h"

#include <QPointF>
#include <QRectF>
#include <QString>
#include <QStringList>
#include <QVector>

enum EROISHAPE {
    EROI_RECTANGLE = 0,
    EROI_ELLIPSE = 1,
    EROI_POLYGON = 2,
    EROI_FREEHAND = 3, ///< a polygon with many corners, drawn in one stroke
    EROI_GRID = 4      ///< a rectangle of rows x columns equal cells, each measured on its own
};

enum EROIKIND { EROI_MEASUREMENT = 0, EROI_BACKGROUND = 1 };

/// The record of a selected ROI.
struct tagROIInfo
{
    QString name;
    EROISHAPE shape = EROI_RECTANGLE;
    EROIKIND kind = EROI_MEASUREMENT;
    QRectF boundingBox; ///< [cm]
};

/// A stretch of a row that belongs to an ROI: from <= x < to [cm].
struct RoiSpan
{
    double from;
    double to;
};

/// A region of interest in centimetres of the field of view: (0, 0) is the upper left corner of the image's
/// first pixel, x to the right, y down. So an ROI covers the same tissue in a dataset of another binning.
///
/// A pixel belongs to an ROI when its centre does. A centre exactly on the left or upper edge of a rectangle
/// (or grid cell) belongs to it, on the right or lower edge it does not, so that neighbours share no pixel
/// and lose none; on the edge of an ellipse it belongs to it. Polygons follow the odd-even rule with the same
/// treatment of edges.
///
/// A value; its manager owns those of a dataset and gives them their names.
class VXAPI_EXPORT CROIBase
{
public:
    /// More are refused by the manager: no hand draws them, and measuring would not end.
    static constexpr int MAX_CORNERS = 100000;
    static constexpr int MAX_CELLS = 10000;

    /// Rectangle or ellipse in that box [cm]; the box is normalised.
    CROIBase(EROISHAPE shape, EROIKIND kind, const QRectF &box);
    /// Polygon or free-hand outline [cm]; closed without repeating the first corner.
    CROIBase(EROISHAPE shape, EROIKIND kind, const QVector<QPointF> &outline);
    /// Grid of rows x columns (1 or more each).
    CROIBase(EROIKIND kind, const QRectF &box, int rows, int columns);

    QString name() const { return m_name; }
    void setName(const QString &name) { m_name = name; }
    EROISHAPE shape() const { return m_shape; }
    EROIKIND kind() const { return m_kind; }
    void setKind(EROIKIND kind) { m_kind = kind; }
    QRectF boundingBox() const { return m_box; }
    /// Corners of a polygon or free-hand outline; empty for the others.
    QVector<QPointF> outline() const { return m_outline; }
    int rows() const { return m_rows; }
    int columns() const { return m_columns; }

    /// Whether that place [cm] belongs to the ROI.
    bool contains(const QPointF &place) const;
    /// What belongs to the ROI of the row at that height [cm], from left to right, without overlap. This is
    /// the one definition of the shapes: contains() and the statistics follow it.
    QVector<RoiSpan> spansAt(double y) const;
    /// Why the ROI cannot be kept, for the user: no area, a coordinate that is not finite, too many corners or
    /// cells. Null when it can.
    QString complaint() const;

    /// Shifts the ROI by that much [cm].
    void translate(const QPointF &by);
    /// Moves and scales the ROI into that box [cm] (normalised); an empty box changes nothing.
    void setBoundingBox(const QRectF &box);
    /// A cell of a grid as a rectangle ROI, named "<name> [row, column]" counted from 1; row and column from
    /// 0.
    CROIBase cell(int row, int column) const;
    /// Names of a grid's cells, row by row; empty for the others.
    QStringList cellNames() const;

private:
    bool isOutlined() const { return m_shape == EROI_POLYGON || m_shape == EROI_FREEHAND; }
    QVector<RoiSpan> ellipseSpansAt(double y) const;
    QVector<RoiSpan> outlineSpansAt(double y) const;

    QString m_name;
    EROISHAPE m_shape;
    EROIKIND m_kind;
    QRectF m_box;
    QVector<QPointF> m_outline;
    int m_rows = 1;
    int m_columns = 1;
};
