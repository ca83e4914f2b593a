// SPDX-License-Identifier: MIT
#include "host/vxapi/view/canvas/ViewCanvas.h"

#include "host/vxutils/CVXSLog.h"

#include <QOpenGLContext>
#include <QPainter>

GlViewCanvas::GlViewCanvas(ViewPictureSource &source, QWidget *parent)
    : QOpenGLWidget(parent), m_source(source)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    QSurfaceFormat wanted = QSurfaceFormat::defaultFormat();
    wanted.setVersion(3, 3);
    wanted.setProfile(QSurfaceFormat::CompatibilityProfile);
    setFormat(wanted);
}

GlViewCanvas::~GlViewCanvas()
{
    releaseGl();
    // The base class ends the context later, when there is nothing left to release here.
    if (context())
        disconnect(context(), nullptr, this, nullptr);
}

void GlViewCanvas::initializeGL()
{
    // Comes again with a new context when the view moves to another top-level window.
    connect(context(), &QOpenGLContext::aboutToBeDestroyed, this, [this] { releaseGl(); });
    m_failed = !m_picture.initialize();
    if (m_failed)
        vxLog(ELOG_WARNING,
              QStringLiteral("OpenGL is there but cannot draw images; they are drawn without it."));
}

void GlViewCanvas::releaseGl()
{
    if (!context())
        return;
    makeCurrent();
    m_picture.release();
    doneCurrent();
}

void GlViewCanvas::paintGL()
{
    if (m_failed) {
        QPainter painter(this);
        painter.drawImage(0, 0, m_source.rasterPicture());
        return;
    }
    m_picture.paint(m_source.picture(), m_source.overlay());
}

RasterViewCanvas::RasterViewCanvas(ViewPictureSource &source, QWidget *parent)
    : QWidget(parent), m_source(source)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void RasterViewCanvas::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.drawImage(0, 0, m_source.rasterPicture());
}
