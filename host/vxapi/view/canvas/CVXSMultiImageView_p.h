// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/view/canvas/CVXSMultiImageView.h"
#include "host/vxapi/view/canvas/LayoutGeometry.h"
#include "host/vxapi/view/canvas/NoteStrip.h"
#include "host/vxapi/view/canvas/ViewCanvas.h"
#include "host/vximage/CILImage.h"

#include <deque>

/// A slot of the view.
struct ViewSlot
{
    CILImage *image = nullptr;
    ImagePyramid pyramid;
    PictureTone tone;
    ImageUnderlay underlay;
    ImagePyramid underlayPyramid;
    QString emptyText;
};

/// Where a slot's images lie, object units; empty for what is not there.
struct SlotPlaces
{
    QRectF image;
    QRectF underlay;
};

class CVXSMultiImageView::Private : public ViewPictureSource
{
public:
    explicit Private(CVXSMultiImageView *view) : q(view) {}

    QSizeF viewSize() const;
    QSize deviceSize() const { return viewSize().toSize() * q->devicePixelRatioF(); }
    QVector<SlotPlaces> places() const;
    CILPalette barPalette(const SColorbar &bar) const;
    bool areColorsReversed() const;
    NoteStrip noteStrip() const;
    void repaint() const;

    PictureContent picture() override;
    QImage overlay() override;
    QImage rasterPicture() override;

    CVXSMultiImageView *q;
    LayoutGeometry geometry;
    std::deque<ViewSlot> cells; // a deque: the pyramids stay where they are
    QVector<SColorbar *> bars;
    QVector<CVXSTextTag *> tags;
    QVector<ViewDecoration *> decorations;
    QStringList notes;
    bool showTags = true;
    bool laidOut = false; ///< the widget was given a size
    int uploads = 0;
    GlViewCanvas *glCanvas = nullptr;
    QWidget *canvas = nullptr;
};
