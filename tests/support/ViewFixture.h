// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/view/canvas/CVXSMultiImageView.h"
#include "host/vxapi/view/canvas/CVXSTextTag.h"
#include "host/vximage/CILImage.h"

#include <QApplication>
#include <QTest>

#include <cmath>
#include <limits>
#include <memory>
#include <vector>

/// A float image of that size whose pixels the function f(x, y) gives. Read back through a copy, so that its
/// content has a name.
template <typename F>
CILImage imageOf(int width, int height, F f)
{
    CILImage image;
    image.InitWithType(VXS_FLOAT, std::uint32_t(width), std::uint32_t(height));
    auto *pixels = static_cast<float *>(image.get_data());
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            pixels[y * width + x] = float(f(x, y));
    }
    return CILImage(image);
}

/// Whether the view draws as the build of the test says: with OpenGL or without.
inline bool drawsWithExpectedEngine()
{
    const CVXSMultiImageView view;
#ifdef EXPECT_OPENGL
    return view.isOpenGL();
#else
    return !view.isOpenGL();
#endif
}

/// What main() of a view's test does: runs it at the pixel ratio of the build.
template <typename Test>
int runScaled(int argc, char *argv[])
{
#ifdef SCALE_FACTOR
    qputenv("QT_SCALE_FACTOR", SCALE_FACTOR);
#endif
    QApplication application(argc, argv);
    Test test;
    return QTest::qExec(&test, argc, argv);
}

/// Two bright spots on a slope.
inline CILImage spots(int width, int height, double amplitude = 1000.0)
{
    return imageOf(width, height, [=](int x, int y) {
        const double u = (x + 0.5) / width;
        const double v = (y + 0.5) / height;
        const double a = std::exp(-((u - 0.35) * (u - 0.35) + (v - 0.4) * (v - 0.4)) * 60.0);
        const double b = std::exp(-((u - 0.7) * (u - 0.7) + (v - 0.65) * (v - 0.65)) * 200.0);
        return amplitude * (0.05 + 0.1 * u + a + 0.6 * b);
    });
}

inline void colour(CILImage &image, VXS_COLORTABLE_TYPES table, double low, double high,
                   bool reversed = false, bool logarithmic = false)
{
    CILPalette palette;
    palette.SetColorTable(table, low, high, reversed ? 1 : 0, 0);
    palette.setLogScale(logarithmic ? 1 : 0);
    image.setPalette(palette);
}

/// A view as the image-math window makes it: three images, two bars, three tags.
class ThreeImageView
{
public:
    ThreeImageView() : a(spots(256, 256)), b(spots(128, 128, 700.0)), result(spots(256, 256, 4.0e7))
    {
        b.setBinningFactor(2.0f);
        colour(a, VXS_CT_RAINBOW, 0.0, 1100.0);
        colour(b, VXS_CT_RAINBOW, 0.0, 1100.0);
        colour(result, VXS_CT_YELLOWHOT, 1.0e6, 4.5e7);
        view = std::make_unique<CVXSMultiImageView>(nullptr, "Image Math View");
        view->setImagesSameSize(false);
        view->setImageBorder(10);
        for (int i = 0; i < 3; ++i)
            view->addImage(nullptr, false, QString(), 0);
        view->setLayout(ELAYOUT_THREE_ROWS);
        placeBars();
        for (CVXSTextTag *tag : {&tagResult, &tagA, &tagB}) {
            tag->show(false);
            view->addTextTag(tag);
        }
    }

    void placeBars()
    {
        const VXSRECT r = view->getColorBarRect();
        const float topAB = r.top + 0.05f * r.height();
        barAB.rect = {r.left, topAB, r.right, topAB + 0.567f * r.height()};
        barAB.palette = a.getPalette();
        view->addColorbar(&barAB);
        const float topResult = r.top + 0.717f * r.height();
        barResult.rect = {r.left, topResult, r.right, topResult + 0.233f * r.height()};
        barResult.palette = result.getPalette();
        view->addColorbar(&barResult);
    }

    /// Places the tags and hands the images over.
    void place()
    {
        view->setShowTextTag(true);
        const VXSRECT column = view->getImageLayoutRect();
        const float w = view->getThumbnailImageWidth();
        const float h = view->getThumbnailImageHeight();
        view->setImageBorder(int(h * 0.1f));
        const float d = float(view->getImageBorder());
        const auto at = [&](CVXSTextTag &tag, double y, bool centred) {
            double tw = 0.0;
            double th = 0.0;
            view->convertWindowToObjectSize(tag.getSize().width(), tag.getSize().height(), tw, th);
            tag.setPosition(double(column.left) + (double(w + 2.0f * d) - tw) / 2.0,
                            centred ? y + (double(h) - th) / 2.0 : y);
            tag.show(true);
        };
        tagA.setStringList({QStringLiteral("Radiance (Photons)")});
        tagA.showBorder(false);
        at(tagA, double(column.top + h + d + 1.0f), false);
        tagB.setStringList({QStringLiteral("Radiance (Photons)")});
        tagB.showBorder(false);
        at(tagB, double(column.top + 2.0f * h + 3.0f * d + 1.0f), false);
        if (!messages.isEmpty()) {
            tagResult.setStringList(messages);
            at(tagResult, double(column.top + 2.0f * h + 5.0f * d), true);
        }
        view->setImageAt(&a, false, 0, QString(), 0);
        view->setImageAt(&b, false, 1, QString(), 0);
        view->setImageAt(messages.isEmpty() ? &result : nullptr, false, 2, QString(), 0);
    }

    CILImage a, b, result;
    SColorbar barAB, barResult;
    QStringList messages;
    std::unique_ptr<CVXSMultiImageView> view;
    CVXSTextTag tagResult, tagA, tagB;
};

inline void show(CVXSMultiImageView &view, const QSize &size)
{
    view.resize(size);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    QCoreApplication::processEvents();
}
