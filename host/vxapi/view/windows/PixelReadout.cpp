// SPDX-License-Identifier: MIT
#include "host/vxapi/view/windows/PixelReadout.h"

#include "host/vxapi/view/canvas/CVXSMultiImageView.h"
#include "host/vximage/CILImage.h"

#include <QEvent>
#include <QMouseEvent>

PixelReadout::PixelReadout(CVXSMultiImageView *view) : QObject(view), m_view(view)
{
    view->setMouseTracking(true);
    view->installEventFilter(this);
}

bool PixelReadout::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Leave)
        Q_EMIT textChanged(QString());
    if (event->type() == QEvent::MouseMove) {
        int slot = 0;
        QPoint pixel;
        QString text;
        if (m_view->pixelAt(static_cast<QMouseEvent *>(event)->pos(), &slot, &pixel)) {
            const double value =
                m_view->imageAt(slot)->pixelAt(std::uint32_t(pixel.x()), std::uint32_t(pixel.y()));
            text = QStringLiteral("x %1, y %2: %3")
                       .arg(pixel.x())
                       .arg(pixel.y())
                       .arg(QString::number(value, 'g', 6));
        }
        Q_EMIT textChanged(text);
    }
    return QObject::eventFilter(watched, event);
}
