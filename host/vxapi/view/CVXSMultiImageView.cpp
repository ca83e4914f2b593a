// SPDX-License-Identifier: MIT
#include "host/vxapi/view/CVXSMultiImageView.h"

#include "host/vxapi/view/CVXSTextTag.h"
#include "host/vxapi/view/LayoutGeometry.h"
#include "host/vxapi/view/OverlayPainter.h"
#include "host/vxapi/view/RasterPicture.h"
#include "host/vxapi/view/ViewCanvas.h"
#include "host/vximage/CILImage.h"

#include <algorithm>
#include <cmath>
#include <deque>
#include <QEvent>
#include <QPainter>

namespace {

constexpr QRgb BACKGROUND = qRgb(0x20, 0x22, 0x26);
/// Thumbnails are small; a larger level 0 would cost memory traffic at every change and show nothing more.
constexpr int THUMBNAIL_LIMIT = 1024;

struct Slot
{
    CILImage *image = nullptr;
    ImagePyramid pyramid;
};

/// The image's size on the sensor, in unbinned pixels; empty for an empty place.
QSizeF physicalSize(const CILImage *image)
{
    if (!image || image->isEmpty())
        return QSizeF(0.0, 0.0);
    const double binning = image->binningFactor() > 0.0f ? double(image->binningFactor()) : 1.0;
    return QSizeF(image->getWidth() * binning, image->getHeight() * binning);
}

} // namespace

class CVXSMultiImageView::Private : public ViewPictureSource
{
public:
    explicit Private(CVXSMultiImageView *view) : q(view) {}

    QSizeF viewSize() const;
    QSize deviceSize() const { return viewSize().toSize() * q->devicePixelRatioF(); }
    QVector<QRectF> imageRects() const;
    CILPalette barPalette(const SColorbar &bar) const;
    void repaint() const;

    SPictureContent picture() override;
    QImage overlay() override;
    QImage rasterPicture() override;

    CVXSMultiImageView *q;
    LayoutGeometry geometry;
    std::deque<Slot> cells; // a deque: the pyramids stay where they are
    QVector<SColorbar *> bars;
    QVector<CVXSTextTag *> tags;
    bool showTags = true;
    bool laidOut = false; ///< the widget was given a size
    int uploads = 0;
    GlViewCanvas *glCanvas = nullptr;
    QWidget *canvas = nullptr;
};

QSizeF CVXSMultiImageView::Private::viewSize() const
{
    // Before it is laid out, a widget's size says nothing: what it wishes for is the better guess.
    return laidOut || q->testAttribute(Qt::WA_Resized) ? q->size() : q->sizeHint();
}

QVector<QRectF> CVXSMultiImageView::Private::imageRects() const
{
    QVector<QSizeF> physical;
    for (int i = 0; i < geometry.cellCount(); ++i)
        physical.append(physicalSize(i < int(cells.size()) ? cells[std::size_t(i)].image : nullptr));
    return geometry.imageRects(physical);
}

/// A bar explains the picture beside it: with limits, direction or scale of its own it would tell the wrong
/// numbers.
CILPalette CVXSMultiImageView::Private::barPalette(const SColorbar &bar) const
{
    const QVector<QRectF> places = imageRects();
    for (int i = 0; i < places.size(); ++i) {
        const double middle = places[i].center().y();
        if (places[i].isEmpty() || middle < double(bar.rect.top) || middle > double(bar.rect.bottom))
            continue;
        return cells[std::size_t(i)].image->getPalette();
    }
    return bar.palette;
}

void CVXSMultiImageView::Private::repaint() const
{
    if (canvas)
        canvas->update();
}

SPictureContent CVXSMultiImageView::Private::picture()
{
    SPictureContent content;
    content.size = deviceSize();
    content.background = BACKGROUND;
    const int limit = geometry.layout == ELAYOUT_THREE_ROWS ? THUMBNAIL_LIMIT : GlPicture::TEXTURE_LIMIT;
    const QVector<QRectF> places = imageRects();
    for (int i = 0; i < std::min(places.size(), int(cells.size())); ++i) {
        Slot &slot = cells[std::size_t(i)];
        if (slot.pyramid.load(slot.image, limit))
            ++uploads;
        if (slot.pyramid.isEmpty())
            continue;
        content.items.append(
            {i, &slot.pyramid, slot.image->getPalette(), geometry.toDevicePixels(places[i], content.size)});
    }
    return content;
}

QImage CVXSMultiImageView::Private::overlay()
{
    SOverlayContent content;
    const QSizeF size = viewSize();
    content.size = deviceSize();
    content.pixelRatio = q->devicePixelRatioF();
    content.scale = geometry.scaleFor(size);
    const QVector<QRectF> places = imageRects();
    for (int i = 0; i < places.size(); ++i) {
        if (!places[i].isEmpty())
            content.images.append(geometry.toDevicePixels(places[i], content.size));
        else if (i < int(cells.size()))
            content.emptyPlaces.append(geometry.toDevicePixels(geometry.thumbnailRect(i), content.size));
    }
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

CVXSMultiImageView::CVXSMultiImageView(QWidget *parent, const char *name)
    : QWidget(parent), d(std::make_unique<Private>(this))
{
    setObjectName(QString::fromUtf8(name));
    if (GlPicture::isAvailable())
        d->canvas = d->glCanvas = new GlViewCanvas(*d, this);
    else
        d->canvas = new RasterViewCanvas(*d, this);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

CVXSMultiImageView::~CVXSMultiImageView()
{
    for (CVXSTextTag *tag : d->tags)
        tag->m_view = nullptr;
    // While its source is still there.
    delete d->canvas;
}

void CVXSMultiImageView::setImagesSameSize(bool on)
{
    d->geometry.sameSize = on;
    d->repaint();
}

void CVXSMultiImageView::setImageBorder(int border)
{
    d->geometry.border = std::max(0, border);
    d->repaint();
}

int CVXSMultiImageView::getImageBorder() const
{
    return d->geometry.border;
}

void CVXSMultiImageView::setLayout(EIMAGELAYOUT layout)
{
    d->geometry.layout = layout;
    updateGeometry();
    d->repaint();
}

EIMAGELAYOUT CVXSMultiImageView::imageLayout() const
{
    return d->geometry.layout;
}

bool CVXSMultiImageView::addImage(CILImage *image, bool, const QString &, int)
{
    d->cells.emplace_back().image = image;
    d->repaint();
    return true;
}

bool CVXSMultiImageView::setImageAt(CILImage *image, bool, int slot, const QString &, int)
{
    if (slot < 0 || slot >= slotCount())
        return false;
    d->cells[std::size_t(slot)].image = image;
    d->repaint();
    return true;
}

CILImage *CVXSMultiImageView::imageAt(int slot) const
{
    return slot >= 0 && slot < slotCount() ? d->cells[std::size_t(slot)].image : nullptr;
}

int CVXSMultiImageView::slotCount() const
{
    return int(d->cells.size());
}

VXSRECT CVXSMultiImageView::getImageLayoutRect() const
{
    return d->geometry.imageRect();
}

VXSRECT CVXSMultiImageView::getColorBarRect() const
{
    return d->geometry.colorBarRect();
}

float CVXSMultiImageView::getThumbnailImageWidth() const
{
    return d->geometry.thumbnailWidth();
}

float CVXSMultiImageView::getThumbnailImageHeight() const
{
    return d->geometry.thumbnailHeight();
}

void CVXSMultiImageView::convertWindowToObjectSize(int width, int height, double &objectWidth,
                                                   double &objectHeight) const
{
    const double scale = d->geometry.scaleFor(d->viewSize());
    objectWidth = width / scale;
    objectHeight = height / scale;
}

void CVXSMultiImageView::addColorbar(SColorbar *bar)
{
    if (!bar || d->bars.contains(bar))
        return;
    d->bars.append(bar);
    d->repaint();
}

void CVXSMultiImageView::removeColorbar(SColorbar *bar)
{
    d->bars.removeAll(bar);
    d->repaint();
}

void CVXSMultiImageView::addTextTag(CVXSTextTag *tag)
{
    if (!tag || tag->m_view == this)
        return;
    if (tag->m_view)
        tag->m_view->removeTextTag(tag);
    // The corner that was set before means object units of this view.
    const QPointF corner = tag->position();
    tag->m_view = this;
    d->tags.append(tag);
    tag->setPosition(corner.x(), corner.y());
    d->repaint();
}

void CVXSMultiImageView::removeTextTag(CVXSTextTag *tag)
{
    if (!d->tags.removeAll(tag))
        return;
    tag->m_view = nullptr;
    d->repaint();
}

void CVXSMultiImageView::setShowTextTag(bool on)
{
    d->showTags = on;
    d->repaint();
}

void CVXSMultiImageView::getImage(QImage &image) const
{
    image = QImage();
    if (isOpenGL() && isVisible()) {
        image = d->glCanvas->grabFramebuffer();
        image.setDevicePixelRatio(devicePixelRatioF());
    }
    if (image.isNull())
        image = rasterImage();
}

QImage CVXSMultiImageView::rasterImage() const
{
    return d->rasterPicture();
}

bool CVXSMultiImageView::isOpenGL() const
{
    return d->glCanvas && d->glCanvas->isWorking();
}

int CVXSMultiImageView::uploadCount() const
{
    return d->uploads;
}

bool CVXSMultiImageView::pixelAt(const QPoint &place, int *slot, QPoint *pixel) const
{
    const QVector<QRectF> places = d->imageRects();
    for (int i = 0; i < places.size(); ++i) {
        const QRectF rect = d->geometry.toDevice(places[i], d->viewSize());
        const QPointF at = QPointF(place) + QPointF(0.5, 0.5) - rect.topLeft();
        if (places[i].isEmpty() || at.x() < 0.0 || at.y() < 0.0 || at.x() >= rect.width() ||
            at.y() >= rect.height())
            continue;
        const CILImage *image = imageAt(i);
        *slot = i;
        *pixel = QPoint(int(at.x() * image->getWidth() / rect.width()),
                        int(at.y() * image->getHeight() / rect.height()));
        return true;
    }
    return false;
}

QSize CVXSMultiImageView::sizeHint() const
{
    return d->geometry.layout == ELAYOUT_THREE_ROWS ? QSize(260, 480) : QSize(620, 520);
}

QSize CVXSMultiImageView::minimumSizeHint() const
{
    return d->geometry.layout == ELAYOUT_THREE_ROWS ? QSize(230, 420) : QSize(300, 250);
}

void CVXSMultiImageView::resizeEvent(QResizeEvent *event)
{
    d->laidOut = true;
    d->canvas->setGeometry(rect());
    QWidget::resizeEvent(event);
}

void CVXSMultiImageView::paintEvent(QPaintEvent *event)
{
    // Who repaints the view means its canvas. That of the raster engine, which is not opaque, is painted
    // along.
    if (d->glCanvas)
        d->repaint();
    QWidget::paintEvent(event);
}

bool CVXSMultiImageView::event(QEvent *event)
{
    if (event->type() == QEvent::ApplicationFontChange || event->type() == QEvent::FontChange)
        d->repaint();
    return QWidget::event(event);
}
