// SPDX-License-Identifier: MIT
#include "host/vxapi/view/canvas/GlPicture.h"

#include "host/vxapi/view/canvas/PaletteUniforms.h"

#include <QColor>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLShaderProgram>

namespace {

constexpr char VERTEX_SHADER[] = R"(#version 330
void main()
{
    vec2 corner = vec2(gl_VertexID & 1, gl_VertexID >> 1);
    gl_Position = vec4(corner * 2.0 - 1.0, 0.0, 1.0);
}
)";

// A NaN is told by its bits: compilers may take isnan() for false.
constexpr char FRAGMENT_SHADER[] = R"(#version 330
uniform sampler2D pixels;
uniform sampler2D table;
uniform int level;
uniform ivec2 levelSize;
uniform ivec2 targetOrigin;
uniform ivec2 targetSize;
uniform int mode;
uniform float unit;
uniform float low;
uniform float span;
uniform float high;
uniform float middle;
uniform vec4 notFinite;
uniform float opacity;
uniform bool lowIsTransparent;
out vec4 color;

float position(float value)
{
    if (mode == 2)
        return value < low ? 0.0 : value > high ? 1.0 : middle;
    if (mode == 1)
        return value > 0.0 ? clamp((log2(value) - low) / span, 0.0, 1.0) : 0.0;
    return clamp((value * unit - low) / span, 0.0, 1.0);
}

void main()
{
    ivec2 at = ivec2(gl_FragCoord.xy) - targetOrigin;
    at.y = targetSize.y - 1 - at.y;
    float value = texelFetch(pixels, ((2 * at + 1) * levelSize) / (2 * targetSize), level).r;
    if ((floatBitsToUint(value) & 0x7f800000u) == 0x7f800000u) {
        color = notFinite;
        return;
    }
    float at01 = position(value);
    float alpha = lowIsTransparent && at01 <= 0.0 ? 0.0 : opacity;
    color = vec4(texelFetch(table, ivec2(int(at01 * 255.0 + 0.5), 0), 0).rgb * alpha, alpha);
}
)";

constexpr char OVERLAY_SHADER[] = R"(#version 330
uniform sampler2D overlay;
uniform int height;
out vec4 color;
void main()
{
    ivec2 at = ivec2(gl_FragCoord.xy);
    color = texelFetch(overlay, ivec2(at.x, height - 1 - at.y), 0);
}
)";

std::unique_ptr<QOpenGLShaderProgram> makeProgram(const char *fragmentShader)
{
    auto program = std::make_unique<QOpenGLShaderProgram>();
    if (!program->addShaderFromSourceCode(QOpenGLShader::Vertex, VERTEX_SHADER) ||
        !program->addShaderFromSourceCode(QOpenGLShader::Fragment, fragmentShader) || !program->link())
        return nullptr;
    return program;
}

bool tryOpenGL()
{
    if (qgetenv("VEXA_OPENGL") == "0")
        return false;
    QOffscreenSurface surface;
    surface.create();
    QOpenGLContext context;
    if (!surface.isValid() || !context.create() || !context.makeCurrent(&surface))
        return false;
    bool usable = false;
    if (!context.isOpenGLES() && context.format().version() >= qMakePair(3, 3)) {
        GLint largest = 0;
        context.functions()->glGetIntegerv(GL_MAX_TEXTURE_SIZE, &largest);
        usable = largest >= GlPicture::TEXTURE_LIMIT && makeProgram(FRAGMENT_SHADER) &&
                 makeProgram(OVERLAY_SHADER);
    }
    context.doneCurrent();
    return usable;
}

} // namespace

GlPicture::GlPicture() = default;
GlPicture::~GlPicture() = default;

bool GlPicture::isAvailable()
{
    static const bool available = tryOpenGL();
    return available;
}

bool GlPicture::initialize()
{
    initializeOpenGLFunctions();
    m_program = makeProgram(FRAGMENT_SHADER);
    m_overlayProgram = makeProgram(OVERLAY_SHADER);
    if (!m_program || !m_overlayProgram) {
        m_program.reset();
        return false;
    }
    glGenVertexArrays(1, &m_vertexArray);
    glGenTextures(1, &m_table);
    glBindTexture(GL_TEXTURE_2D, m_table);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, 256, 1, 0, GL_RGBA, GL_UNSIGNED_BYTE, nullptr);
    glGenTextures(1, &m_overlay);
    glBindTexture(GL_TEXTURE_2D, m_overlay);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glBindTexture(GL_TEXTURE_2D, 0);
    return true;
}

void GlPicture::release()
{
    if (!m_program)
        return;
    for (const auto &[slot, texture] : m_textures)
        glDeleteTextures(1, &texture.id);
    m_textures.clear();
    glDeleteTextures(1, &m_table);
    glDeleteTextures(1, &m_overlay);
    glDeleteVertexArrays(1, &m_vertexArray);
    m_program.reset();
    m_overlayProgram.reset();
}

void GlPicture::upload(Texture &texture, const ImagePyramid &pyramid)
{
    if (texture.id != 0)
        glDeleteTextures(1, &texture.id);
    glGenTextures(1, &texture.id);
    glBindTexture(GL_TEXTURE_2D, texture.id);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST_MIPMAP_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAX_LEVEL, int(pyramid.levels().size()) - 1);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    GLint number = 0;
    for (const ImagePyramid::Level &level : pyramid.levels())
        glTexImage2D(GL_TEXTURE_2D, number++, GL_R32F, level.width, level.height, 0, GL_RED, GL_FLOAT,
                     level.pixels.data());
    texture.serial = pyramid.serial();
}

void GlPicture::paintItem(const PictureItem &item, int pictureHeight)
{
    Texture &texture = m_textures[item.slot];
    glActiveTexture(GL_TEXTURE0);
    if (texture.id == 0 || texture.serial != item.pyramid->serial())
        upload(texture, *item.pyramid);
    glBindTexture(GL_TEXTURE_2D, texture.id);

    uchar bytes[256 * 4];
    uchar *byte = bytes;
    for (const CILPalette::Rgb color : item.table) {
        *byte++ = uchar(qRed(color));
        *byte++ = uchar(qGreen(color));
        *byte++ = uchar(qBlue(color));
        *byte++ = 255;
    }
    glActiveTexture(GL_TEXTURE1);
    glBindTexture(GL_TEXTURE_2D, m_table);
    glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, 256, 1, GL_RGBA, GL_UNSIGNED_BYTE, bytes);

    const int number = item.pyramid->levelFor(item.target.size());
    const ImagePyramid::Level &level = item.pyramid->levels()[number];
    const QRect &target = item.target;
    const int bottom = pictureHeight - target.y() - target.height(); // OpenGL counts from below
    const auto set = [this](const char *name, auto... values) {
        const int at = m_program->uniformLocation(name);
        if constexpr (sizeof...(values) == 2)
            glUniform2i(at, values...);
        else
            m_program->setUniformValue(at, values...);
    };
    const PaletteUniforms scale(item.palette);
    set("pixels", 0);
    set("table", 1);
    set("level", number);
    set("levelSize", level.width, level.height);
    set("targetOrigin", target.x(), bottom);
    set("targetSize", target.width(), target.height());
    set("mode", int(scale.mode));
    set("unit", scale.unit);
    set("low", scale.low);
    set("span", scale.span);
    set("high", scale.high);
    set("middle", scale.middle);
    set("notFinite", QColor(QRgb(CILPalette::notFiniteColor())));
    set("opacity", float(item.alpha) / 255.0f);
    set("lowIsTransparent", item.isLowTransparent);
    glViewport(target.x(), bottom, target.width(), target.height());
    if (!item.isOpaque()) {
        glEnable(GL_BLEND);
        glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    }
    glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);
    glDisable(GL_BLEND);
}

void GlPicture::paintOverlay(const QImage &overlay)
{
    if (overlay.isNull())
        return;
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, m_overlay);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, overlay.width(), overlay.height(), 0, GL_BGRA,
                 GL_UNSIGNED_INT_8_8_8_8_REV, overlay.constBits());
    m_overlayProgram->bind();
    m_overlayProgram->setUniformValue("overlay", 0);
    m_overlayProgram->setUniformValue("height", overlay.height());
    glViewport(0, 0, overlay.width(), overlay.height());
    glEnable(GL_BLEND);
    glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);
    glDisable(GL_BLEND);
    m_overlayProgram->release();
}

void GlPicture::paint(const PictureContent &content, const QImage &overlay)
{
    const QColor background(content.background);
    glViewport(0, 0, content.size.width(), content.size.height());
    glClearColor(float(background.redF()), float(background.greenF()), float(background.blueF()), 1.0f);
    glClear(GL_COLOR_BUFFER_BIT);
    glDisable(GL_BLEND);
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_CULL_FACE);
    m_program->bind();
    glBindVertexArray(m_vertexArray);
    for (const PictureItem &item : content.items)
        paintItem(item, content.size.height());
    m_program->release();
    paintOverlay(overlay);
    glBindVertexArray(0);
    glActiveTexture(GL_TEXTURE1);
    glBindTexture(GL_TEXTURE_2D, 0);
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, 0);
    glViewport(0, 0, content.size.width(), content.size.height());
}
