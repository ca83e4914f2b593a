// SPDX-License-Identifier: MIT
#include "host/vxapi/view/canvas/ImagePyramid.h"
#include "tests/support/ViewFixture.h"

#include <QtTest>

class tst_ImagePyramid : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aSmallImageIsItsOwnLevel0()
    {
        const CILImage image = imageOf(3, 2, [](int x, int y) { return 10 * y + x; });
        ImagePyramid pyramid;
        QVERIFY(pyramid.load(&image, 1024));
        QCOMPARE(pyramid.levels().size(), std::size_t(1));
        QCOMPARE(pyramid.levels()[0].pixels, std::vector<float>({0, 1, 2, 10, 11, 12}));
    }

    void theSameImageIsReadOnce()
    {
        CILImage image = spots(100, 100);
        ImagePyramid pyramid;
        QVERIFY(pyramid.load(&image, 1024));
        const quint64 serial = pyramid.serial();
        const CILImage copy = image;
        QVERIFY(!pyramid.load(&image, 1024));
        QVERIFY(!pyramid.load(&copy, 1024));
        QCOMPARE(pyramid.serial(), serial);
        image *= 2.0;
        QVERIFY(pyramid.load(&image, 1024));
        QVERIFY(pyramid.serial() != serial);
        QVERIFY(pyramid.load(&image, 64));
    }

    void pixelsThatSomeoneMayBeWritingAreReadEveryTime()
    {
        CILImage image = spots(10, 10);
        auto *pixels = static_cast<float *>(image.get_data());
        ImagePyramid pyramid;
        QVERIFY(pyramid.load(&image, 1024));
        pixels[0] = 77.0f;
        QVERIFY(pyramid.load(&image, 1024));
        QCOMPARE(pyramid.levels()[0].pixels[0], 77.0f);
    }

    void meansSkipPixelsThatAreNotFinite()
    {
        const float nan = std::numeric_limits<float>::quiet_NaN();
        const float inf = std::numeric_limits<float>::infinity();
        const CILImage image = imageOf(4, 2, [=](int x, int y) {
            return x >= 2 ? nan : x == 0 && y == 0 ? inf : float(2 + x + y);
        });
        ImagePyramid pyramid;
        pyramid.load(&image, 2);
        QCOMPARE(pyramid.levels()[0].width, 2);
        QCOMPARE(pyramid.levels()[0].height, 1);
        QCOMPARE(pyramid.levels()[0].pixels[0], 10.0f / 3.0f);
        QVERIFY(std::isnan(pyramid.levels()[0].pixels[1]));
    }

    void aBlockOfWhichHalfIsNotFiniteIsShownSo()
    {
        const float nan = std::numeric_limits<float>::quiet_NaN();
        const CILImage image = imageOf(2, 2, [=](int x, int) { return x == 0 ? nan : 5.0f; });
        ImagePyramid pyramid;
        pyramid.load(&image, 1);
        QVERIFY(std::isnan(pyramid.levels()[0].pixels[0]));
    }

    void sizes_data()
    {
        QTest::addColumn<int>("width");
        QTest::addColumn<int>("height");
        QTest::newRow("odd") << 1023 << 517;
        QTest::newRow("one row") << 5000 << 1;
        QTest::newRow("one column") << 1 << 5000;
        QTest::newRow("one pixel") << 1 << 1;
        QTest::newRow("just above the limit") << 1025 << 1025;
    }
    void sizes()
    {
        QFETCH(int, width);
        QFETCH(int, height);
        const CILImage image = imageOf(width, height, [](int, int) { return 3.0; });
        ImagePyramid pyramid;
        pyramid.load(&image, 1024);
        int expectedWidth = pyramid.levels()[0].width;
        int expectedHeight = pyramid.levels()[0].height;
        QVERIFY(expectedWidth <= 1024 && expectedHeight <= 1024);
        for (const ImagePyramid::Level &level : pyramid.levels()) {
            // Halved and rounded down: what a mip-mapped texture must have.
            QCOMPARE(level.width, expectedWidth);
            QCOMPARE(level.height, expectedHeight);
            QCOMPARE(level.pixels.size(), std::size_t(level.width) * level.height);
            for (const float pixel : level.pixels)
                QCOMPARE(pixel, 3.0f);
            expectedWidth = std::max(1, expectedWidth / 2);
            expectedHeight = std::max(1, expectedHeight / 2);
        }
    }

    void pixelTypes_data()
    {
        QTest::addColumn<int>("type");
        QTest::newRow("8-bit") << int(VXS_UINT8);
        QTest::newRow("mask") << int(VXS_MASK);
        QTest::newRow("16-bit") << int(VXS_UINT16);
        QTest::newRow("32-bit") << int(VXS_UINT32);
        QTest::newRow("float") << int(VXS_FLOAT);
        QTest::newRow("double") << int(VXS_DOUBLE);
    }
    void pixelTypes()
    {
        QFETCH(int, type);
        CILImage image = imageOf(5, 3, [](int x, int y) { return (x + y) % 2; });
        QVERIFY(image.ChangeType(VXSDataTypes(type)));
        ImagePyramid pyramid;
        QVERIFY(pyramid.load(&image, 1024));
        for (int i = 0; i < 15; ++i)
            QCOMPARE(pyramid.levels()[0].pixels[std::size_t(i)], float((i % 5 + i / 5) % 2));
    }

    void anEmptyImageHasNoLevels()
    {
        const CILImage empty;
        ImagePyramid pyramid;
        QVERIFY(!pyramid.load(&empty, 1024));
        QVERIFY(pyramid.isEmpty());
        QVERIFY(!pyramid.load(nullptr, 1024));
        QVERIFY(pyramid.isEmpty());
    }
};

QTEST_APPLESS_MAIN(tst_ImagePyramid)
#include "tst_ImagePyramid.moc"
