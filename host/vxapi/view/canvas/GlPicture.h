// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/view/canvas/PictureContent.h"

#include <map>
#include <memory>
#include <QImage>
#include <QOpenGLExtraFunctions>

class QOpenGLShaderProgram;

/// The picture with OpenGL 3.3: an image's pixels are a float texture that changes only with the pixels;
/// limits, log scale, direction and colour table are looked up by the shader. All operations need the current
/// context.
class GlPicture : protected QOpenGLExtraFunctions
{
public:
    GlPicture();
    ~GlPicture();

    /// Whether this machine can do it: a context of its version, the shaders, textures large enough. Asked
    /// once. The environment variable VEXA_OPENGL=0 says no.
    static bool isAvailable();
    /// The largest texture side that is asked for.
    static constexpr int TEXTURE_LIMIT = 2048;

    /// False when shaders or textures cannot be made.
    bool initialize();
    void release();
    /// The picture, and the overlay (premultiplied, of the same size in device pixels) over it. The overlay
    /// goes through a texture: a QPainter on an OpenGL widget would paint beside it while the widget is being
    /// grabbed.
    void paint(const PictureContent &content, const QImage &overlay);

private:
    struct Texture
    {
        GLuint id = 0;
        quint64 serial = 0;
    };
    void upload(Texture &texture, const ImagePyramid &pyramid);
    void paintItem(const PictureItem &item, int pictureHeight);
    void paintOverlay(const QImage &overlay);

    std::unique_ptr<QOpenGLShaderProgram> m_program;
    std::unique_ptr<QOpenGLShaderProgram> m_overlayProgram;
    std::map<int, Texture> m_textures; ///< by slot
    GLuint m_table = 0;
    GLuint m_overlay = 0;
    GLuint m_vertexArray = 0;
};
