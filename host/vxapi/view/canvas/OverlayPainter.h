// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/view/canvas/LayoutGeometry.h"
#include "host/vxapi/view/canvas/NoteStrip.h"

#include <QFont>
#include <QImage>
#include <QStringList>
#include <QVector>

class ViewDecoration;

/// A text tag as it is to be painted.
struct OverlayTag
{
    QRectF rect; ///< device-independent pixels
    QStringList lines;
    QFont font;
    bool border = false;
};

/// The place of a slot without pixels.
struct OverlayEmptyPlace
{
    QRect rect;   ///< device pixels
    QString text; ///< why it is empty; may be empty itself
};

/// A colour bar as it is to be painted.
struct OverlayBar
{
    QRectF rect; ///< device-independent pixels
    CILPalette palette;
};

/// What lies over the images.
struct OverlayContent
{
    QSize size; ///< device pixels
    double pixelRatio = 1.0;
    double scale = 1.0; ///< device-independent pixels for one object unit
    QVector<OverlayEmptyPlace> emptyPlaces;
    QVector<QRect> images; ///< device pixels
    QVector<ViewDecoration *> decorations;
    QVector<OverlayBar> bars;
    QVector<OverlayTag> tags;
    NoteStrip notes;
};

/// The overlay as a transparent image of that size and pixel ratio: painted once, laid over the picture by
/// whichever engine paints, so that both show the same.
QImage paintOverlay(const OverlayContent &content);
