// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/view/canvas/VXViewTypes.h"
#include "host/vxapi/vxapi_global.h"

#include <memory>
#include <QImage>
#include <QString>
#include <QStringList>
#include <QWidget>

class CILImage;
class CVXSTextTag;
class ViewDecoration;

/// Several images with colour bars and text tags over them.
///
///     CVXSMultiImageView view;
///     view.setLayout(ELAYOUT_THREE_ROWS);
///     view.addImage(&image, false, QString(), 0);    // drawn through the image's own palette
///     bar.rect = view.getColorBarRect();             // holds before the view is shown and after a resize
///     view.addColorbar(&bar);
///
/// Object units belong to the layout, not to the window: image column and colour-bar strip have a fixed size
/// in object units whatever the widget's pixels, y downwards. The picture is scaled to the widget as a whole
/// and centred. It is drawn with OpenGL (the pixels go to the card once per change of image; colour table,
/// limits, log and reverse are a look-up at draw time), or without OpenGL by the raster engine, which paints
/// the same picture.
///
/// Images, colour bars and tags belong to the caller and must live as long as they are in the view (tags take
/// themselves out).
class VXAPI_EXPORT CVXSMultiImageView : public QWidget
{
    Q_OBJECT

public:
    explicit CVXSMultiImageView(QWidget *parent = nullptr, const char *name = nullptr);
    ~CVXSMultiImageView() override;

    /// Whether all images are drawn as large as their cell allows (true), or each keeps its proportions to
    /// the others' physical size, pixels times binning factor (false).
    void setImagesSameSize(bool on);
    /// The border around every thumbnail in its cell, object units.
    void setImageBorder(int border);
    int getImageBorder() const;
    void setLayout(EIMAGELAYOUT layout);
    EIMAGELAYOUT imageLayout() const;
    using QWidget::setLayout; // the widget's own layout, unrelated

    /// Adds a slot with this image (null: an empty place). The other arguments are a caption and flags that
    /// this view does not use.
    bool addImage(CILImage *image, bool unused, const QString &caption, int flags);
    /// Replaces a slot's image (null empties it). False when there is no such slot.
    bool setImageAt(CILImage *image, bool unused, int slot, const QString &caption, int flags);
    /// Puts an image beneath that of a slot; both have the same centre, and the slot's place holds both. Of
    /// the slot's image, pixels at or below the lower limit of its palette are then not drawn, and the others
    /// with the given opacity; one that is not finite keeps its own colour, opaque. Without image in the
    /// slot nothing is drawn. False when there is no such slot.
    bool setUnderlay(int slot, const ImageUnderlay &underlay);
    /// What stands in a slot's place while it has no pixels; plain text, wrapped and made smaller to fit, below
    /// a tag that lies there. Empty: nothing. False when there is no such slot.
    bool setEmptyText(int slot, const QString &text);
    QString emptyText(int slot) const;
    /// Brightness and gamma of a slot's image; meant for photographs, a colour bar knows nothing of it.
    bool setImageTone(int slot, const PictureTone &tone);
    /// The image of a slot; null when the slot is empty or there is no such slot.
    CILImage *imageAt(int slot) const;
    int slotCount() const;

    /// The image column and the colour-bar strip, object units.
    VXSRECT getImageLayoutRect() const;
    VXSRECT getColorBarRect() const;
    /// Width and height of a thumbnail, object units; they depend on the layout alone, never on the border.
    float getThumbnailImageWidth() const;
    float getThumbnailImageHeight() const;
    /// A size in (device-independent) window pixels as object units, at the widget's present size.
    void convertWindowToObjectSize(int width, int height, double &objectWidth, double &objectHeight) const;

    /// A bar that stands beside an image is drawn with that image's palette (the first one's, from above), so
    /// that it never tells other numbers than the picture shows; without an image beside it, with its own
    /// palette, in the direction of the other images, or of the first bar when there are none.
    void addColorbar(SColorbar *bar);
    void removeColorbar(SColorbar *bar);
    /// A null pointer or a tag that is in the view already changes nothing.
    void addTextTag(CVXSTextTag *tag);
    void removeTextTag(CVXSTextTag *tag);
    /// Shows or hides all tags; each one's own show() counts as well.
    void setShowTextTag(bool on);

    /// What has to be known of the picture beside it: plain sentences that stand discreetly beside the last
    /// image, the whole of them in a tooltip too. Images, bars and tags stay where they are.
    void setNotes(const QStringList &notes);
    QStringList notes() const;
    /// Where they stand (device-independent pixels of the view); empty without notes.
    QRectF notesPlace() const;

    /// Something that paints over the images and below bars and tags. It belongs to the caller and must live
    /// as long as it is in the view. Call update() when it would paint something else.
    void addDecoration(ViewDecoration *decoration);
    void removeDecoration(ViewDecoration *decoration);

    /// The picture as it stands, at the widget's size times the screen's pixel ratio.
    void getImage(QImage &image) const;
    /// The same picture painted by the raster engine.
    QImage rasterImage() const;
    /// Whether OpenGL draws. The environment variable VEXA_OPENGL=0 makes it the raster engine.
    bool isOpenGL() const;
    /// How often pixels were read and handed to the painter: once per change of image.
    int uploadCount() const;
    /// Where the image of a slot is painted: device-independent pixels of the view, with the fractions that
    /// whole device pixels make. Empty where there is no image. Pixel (x, y) of a w x h image starts at
    /// topLeft + (x / w * width, y / h * height).
    QRectF imagePlace(int slot) const;
    /// Which pixel of which image stands at a place in the view (device-independent pixels); false where
    /// there is none.
    bool pixelAt(const QPoint &place, int *slot, QPoint *pixel) const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    bool event(QEvent *event) override;

private:
    friend class CVXSTextTag;
    class Private;
    std::unique_ptr<Private> d;
};
