// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/vxapi_global.h"

#include <QPointF>
#include <QRectF>
#include <QSize>

/// Between places of a view (device-independent pixels) and centimetres of the luminescent image's field of
/// view, in which ROIs are kept: (0, 0) is the upper left corner of its first pixel, x to the right, y down.
class VXAPI_EXPORT FieldMapping
{
public:
    /// Maps nothing; everything becomes (0, 0).
    FieldMapping() = default;
    /// `place`: where the field lies in the view. `width`: the field of view [cm]. `pixels`: size of the
    /// luminescent image. Not valid unless all of them are finite and above 0.
    FieldMapping(const QRectF &place, double width, const QSize &pixels);

    bool isValid() const { return m_pixelSize > 0.0; }
    /// Side of a pixel of the luminescent image [cm].
    double pixelSize() const { return m_pixelSize; }
    /// The whole field [cm].
    QRectF field() const { return m_field; }
    QPointF toField(const QPointF &place) const;
    QPointF toView(const QPointF &field) const;
    QRectF toView(const QRectF &field) const;
    /// A length in the view as one in the field [cm].
    double lengthInField(double length) const;
    /// The nearest place [cm] that belongs to the field.
    QPointF clamped(const QPointF &field) const;
    /// The shift [cm] shortened so that a box inside of the field stays inside. A box that is not inside is
    /// let go wherever it is taken.
    QPointF clampedShift(const QRectF &box, const QPointF &by) const;

private:
    QRectF m_place;
    QRectF m_field;
    double m_pixelSize = 0.0;
};
