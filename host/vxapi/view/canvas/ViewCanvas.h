// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/view/canvas/GlPicture.h"

#include <QOpenGLWidget>

/// What a canvas asks its view for when it paints.
class ViewPictureSource
{
public:
    virtual ~ViewPictureSource() = default;
    virtual PictureContent picture() = 0;
    virtual QImage overlay() = 0;
    /// Both together by the raster engine, with the pixel ratio set.
    virtual QImage rasterPicture() = 0;
};

/// The widget that paints a multi-image view with OpenGL. When the context turns out to be of no use, it
/// shows the raster picture.
class GlViewCanvas : public QOpenGLWidget
{
public:
    GlViewCanvas(ViewPictureSource &source, QWidget *parent);
    ~GlViewCanvas() override;
    bool isWorking() const { return !m_failed; }

protected:
    void initializeGL() override;
    void paintGL() override;

private:
    void releaseGl();
    ViewPictureSource &m_source;
    GlPicture m_picture;
    bool m_failed = false;
};

/// The widget that paints it without OpenGL.
class RasterViewCanvas : public QWidget
{
public:
    RasterViewCanvas(ViewPictureSource &source, QWidget *parent);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    ViewPictureSource &m_source;
};
