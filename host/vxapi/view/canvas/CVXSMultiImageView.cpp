// SPDX-License-Identifier: MIT
#include "host/vxapi/view/canvas/CVXSMultiImageView_p.h"
#include "host/vxapi/view/canvas/CVXSTextTag.h"

#include <algorithm>
#include <cmath>
#include <QHelpEvent>
#include <QToolTip>

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

bool CVXSMultiImageView::setUnderlay(int slot, const ImageUnderlay &underlay)
{
    if (slot < 0 || slot >= slotCount())
        return false;
    d->cells[std::size_t(slot)].underlay = underlay;
    d->repaint();
    return true;
}

bool CVXSMultiImageView::setImageTone(int slot, const PictureTone &tone)
{
    if (slot < 0 || slot >= slotCount())
        return false;
    d->cells[std::size_t(slot)].tone = tone;
    d->repaint();
    return true;
}

bool CVXSMultiImageView::setEmptyText(int slot, const QString &text)
{
    if (slot < 0 || slot >= slotCount())
        return false;
    d->cells[std::size_t(slot)].emptyText = text;
    d->repaint();
    return true;
}

QString CVXSMultiImageView::emptyText(int slot) const
{
    return slot >= 0 && slot < slotCount() ? d->cells[std::size_t(slot)].emptyText : QString();
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

void CVXSMultiImageView::setNotes(const QStringList &notes)
{
    if (notes == d->notes)
        return;
    d->notes = notes;
    setAccessibleDescription(notes.join(QLatin1Char('\n')));
    d->repaint();
}

QStringList CVXSMultiImageView::notes() const
{
    return d->notes;
}

QRectF CVXSMultiImageView::notesPlace() const
{
    return d->noteStrip().rect;
}

void CVXSMultiImageView::addDecoration(ViewDecoration *decoration)
{
    if (!decoration || d->decorations.contains(decoration))
        return;
    d->decorations.append(decoration);
    d->repaint();
}

void CVXSMultiImageView::removeDecoration(ViewDecoration *decoration)
{
    d->decorations.removeAll(decoration);
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

QRectF CVXSMultiImageView::imagePlace(int slot) const
{
    const QVector<SlotPlaces> places = d->places();
    if (slot < 0 || slot >= places.size() || places[slot].image.isEmpty())
        return QRectF();
    const QRect device = d->geometry.toDevicePixels(places[slot].image, d->deviceSize());
    const double ratio = devicePixelRatioF();
    return {QPointF(device.topLeft()) / ratio, QSizeF(device.size()) / ratio};
}

bool CVXSMultiImageView::pixelAt(const QPoint &place, int *slot, QPoint *pixel) const
{
    for (int i = 0; i < d->geometry.cellCount(); ++i) {
        const QRectF rect = imagePlace(i);
        const QPointF at = QPointF(place) + QPointF(0.5, 0.5) - rect.topLeft();
        if (rect.isEmpty() || at.x() < 0.0 || at.y() < 0.0 || at.x() >= rect.width() ||
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
    if (event->type() == QEvent::ToolTip && !d->notes.isEmpty()) {
        const auto *help = static_cast<QHelpEvent *>(event);
        if (notesPlace().contains(help->pos())) {
            // What a file says is no markup.
            const QString text = d->notes.join(QLatin1Char('\n')).toHtmlEscaped();
            QToolTip::showText(help->globalPos(),
                               QStringLiteral("<qt>%1</qt>").arg(QString(text).replace('\n', "<br>")), this);
            return true;
        }
    }
    return QWidget::event(event);
}
