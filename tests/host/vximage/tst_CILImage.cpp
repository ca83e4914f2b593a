// SPDX-License-Identifier: MIT
#include "tests/host/vximage/ImageMaker.h"

#include <cmath>
#include <QtTest>

namespace {

const float INF = std::numeric_limits<float>::infinity();
const float NOT_A_NUMBER = std::numeric_limits<float>::quiet_NaN();
const VXSDataTypes TYPES[] = {VXS_UINT8, VXS_MASK, VXS_UINT16, VXS_UINT32, VXS_FLOAT, VXS_DOUBLE};

} // namespace

class tst_CILImage : public QObject
{
    Q_OBJECT

private slots:
    void everyTypeAndSizeStartsAtZero_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<uint>("width");
        QTest::addColumn<uint>("height");
        for (const VXSDataTypes type : TYPES) {
            QTest::newRow(qPrintable(QString("type %1, odd").arg(type))) << int(type) << 7u << 5u;
            QTest::newRow(qPrintable(QString("type %1, one row").arg(type))) << int(type) << 13u << 1u;
            QTest::newRow(qPrintable(QString("type %1, one column").arg(type))) << int(type) << 1u << 13u;
            QTest::newRow(qPrintable(QString("type %1, large").arg(type))) << int(type) << 1031u << 517u;
        }
    }
    void everyTypeAndSizeStartsAtZero()
    {
        QFETCH(int, type);
        QFETCH(uint, width);
        QFETCH(uint, height);
        // Memory that was used before must not shine through.
        {
            CILImage used = maker::random(VXSDataTypes(type), width, height, 1, 3);
            QCOMPARE(used.getWidth(), width);
        }
        CILImage image;
        QCOMPARE(image.InitWithType(VXSDataTypes(type), width, height), EIL_SUCCESS);
        QCOMPARE(int(image.getType()), type);
        QCOMPARE(image.get_width(), width);
        QCOMPARE(image.getHeight(), height);
        const CILImage &read = image;
        QVERIFY(read.get_data());
        for (const double v : maker::values(image))
            QCOMPARE(v, 0.0);
        QCOMPARE(image.getMin(), 0.0f);
        QCOMPARE(image.getMax(), 0.0f);
    }

    void sizesOfZeroAndUnknownTypesLeaveItEmpty()
    {
        CILImage image = maker::floats(2, 1, {1, 2});
        QCOMPARE(image.InitWithType(VXS_FLOAT, 0, 4), EIL_BAD_SIZE);
        QVERIFY(image.isEmpty());
        image = maker::floats(2, 1, {1, 2});
        QCOMPARE(image.InitWithType(VXSDataTypes(6), 4, 4), EIL_BAD_TYPE);
        QVERIFY(image.isEmpty());
        QVERIFY(!image.get_data());
        QCOMPARE(image.contentId(), quint64(0));
        QCOMPARE(image.getMax(), 0.0f);
        QVERIFY(!image.hasFinitePixels());
    }

    void moreThanTheMachineHasIsAMessageAndAnEmptyImage()
    {
        int level = 0;
        CILImage::setMessageHandler([&](int l, const std::string &) { level = l; });
        CILImage image;
        QCOMPARE(image.InitWithType(VXS_DOUBLE, 0xffffffffu, 0xffffffffu), EIL_NO_MEMORY);
        CILImage::setMessageHandler(nullptr);
        QVERIFY(image.isEmpty());
        QCOMPARE(level, 3);
    }

    void aCopyCostsNoPixelsAndIsIndependent()
    {
        CILImage a = maker::floats(3, 1, {1, 2, 3});
        a.setBinningFactor(8);
        a.setDescription("made");
        CILPalette palette;
        palette.SetColorTable(VXS_CT_RED, 1, 2, 1, 0);
        a.setPalette(palette);
        const CILImage b = a;
        QCOMPARE(b.get_data(), static_cast<const CILImage &>(a).get_data());
        QCOMPARE(b.contentId(), a.contentId());
        QVERIFY(b.contentId() != 0);
        a *= 2.0;
        QVERIFY(b.contentId() != a.contentId());
        QCOMPARE(maker::values(b), (std::vector<double>{1, 2, 3}));
        QCOMPARE(maker::values(a), (std::vector<double>{2, 4, 6}));
        QCOMPARE(b.binningFactor(), 8.0f);
        QCOMPARE(b.description(), std::string("made"));
        QVERIFY(b.getPalette() == palette);
        a = *&a;
        QCOMPARE(maker::values(a), (std::vector<double>{2, 4, 6}));
    }

    void writingThroughAPointerDetachesAndEndsRemembering()
    {
        CILImage a = maker::floats(3, 1, {1, 2, 3});
        const CILImage before = a;
        QCOMPARE(a.getMax(), 3.0f);
        auto *p = static_cast<float *>(a.get_data());
        QCOMPARE(a.contentId(), quint64(0));
        p[0] = 10;
        QCOMPARE(a.getMax(), 10.0f);
        const CILImage copy = a; // deep
        p[0] = 20;
        QCOMPARE(a.getMax(), 20.0f);
        QCOMPARE(copy.getMax(), 10.0f);
        QVERIFY(copy.contentId() != 0);
        QCOMPARE(before.getMax(), 3.0f);
        a += copy; // the pointer still sees the pixels
        QCOMPARE(p[0], 30.0f);
    }

    void arithmeticDoesNotSeeLaterWritesThroughAPointer()
    {
        CILImage operand = maker::floats(2, 1, {5, 6});
        auto *p = static_cast<float *>(operand.get_data());
        CILImage result = maker::floats(2, 1, {1, 1});
        result += operand;
        CILImage mask;
        operand.Threshold(5.5f, mask);
        CILImage product = operand * result;
        p[0] = 100;
        p[1] = 100;
        QCOMPARE(maker::values(result), (std::vector<double>{6, 7}));
        QCOMPARE(maker::values(mask), (std::vector<double>{0, 1}));
        QCOMPARE(maker::values(product), (std::vector<double>{30, 42}));
    }

    void contentIdIsNewAfterEveryChange()
    {
        CILImage a = maker::floats(4, 4, std::vector<float>(16, 2));
        std::vector<std::uint64_t> seen{a.contentId()};
        const auto changed = [&] {
            QVERIFY(a.contentId() != 0);
            QVERIFY(std::find(seen.begin(), seen.end(), a.contentId()) == seen.end());
            seen.push_back(a.contentId());
        };
        a *= 3.0;
        changed();
        a -= 1.0;
        changed();
        a += CILImage(a);
        changed();
        a.downSample(2, 2, 1);
        changed();
        a.ChangeType(VXS_UINT8);
        changed();
        a.Dilate(3, 3);
        changed();
        a.InitWithType(VXS_FLOAT, 2, 2);
        changed();
        const std::uint64_t id = a.contentId();
        a.ChangeType(VXS_FLOAT);
        a.getMax();
        QCOMPARE(a.contentId(), id);
    }

    void statisticsSkipWhatIsNotFinite_data()
    {
        QTest::addColumn<QVector<float>>("pixels");
        QTest::addColumn<bool>("finite");
        QTest::addColumn<float>("min");
        QTest::addColumn<float>("max");
        QTest::newRow("a NaN first") << QVector<float>{NOT_A_NUMBER, 2, -3} << true << -3.0f << 2.0f;
        QTest::newRow("infinities of both signs") << QVector<float>{INF, 2, -INF} << true << 2.0f << 2.0f;
        QTest::newRow("only NaN and infinities give 0")
            << QVector<float>{NOT_A_NUMBER, INF, -INF} << false << 0.0f << 0.0f;
        QTest::newRow("all negative") << QVector<float>{-1, -2} << true << -2.0f << -1.0f;
        QVector<float> many(100, NOT_A_NUMBER);
        many[97] = 5;
        QTest::newRow("one finite among many NaN") << many << true << 5.0f << 5.0f;
        QVector<float> wide;
        for (int i = 0; i < 1000; ++i)
            wide << float((i * 37) % 1000) << INF;
        QTest::newRow("every second an infinity") << wide << true << 0.0f << 999.0f;
    }
    void statisticsSkipWhatIsNotFinite()
    {
        QFETCH(QVector<float>, pixels);
        QFETCH(bool, finite);
        QFETCH(float, min);
        QFETCH(float, max);
        CILImage image =
            maker::floats(uint(pixels.size()), 1, std::vector<float>(pixels.begin(), pixels.end()));
        CILImage computed =
            image; // statistics of arithmetic that waits come from the same pass as the pixels
        computed *= 1.0;
        CILImage asDouble = image;
        asDouble.ChangeType(VXS_DOUBLE);
        for (const CILImage *each : {&image, &computed, &asDouble}) {
            QCOMPARE(each->hasFinitePixels(), finite);
            QCOMPARE(each->getMin(), min);
            QCOMPARE(each->getMax(), max);
        }
    }

    void statisticsOfEveryType()
    {
        for (const VXSDataTypes type : TYPES) {
            const bool mask = type == VXS_MASK;
            const CILImage image = maker::random(type, 801, 307, mask ? 1 : 250, 9);
            const std::vector<double> all = maker::values(image);
            QCOMPARE(double(image.getMin()), *std::min_element(all.begin(), all.end()));
            QCOMPARE(double(image.getMax()), *std::max_element(all.begin(), all.end()));
        }
    }

    void conversionRoundsClampsAndKeeps_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QVector<double>>("expected");
        // of -3, 0, 0.4, 1.5, 2.5, 300.7, 70000, 1e12, NaN, inf
        const double inf = double(INF);
        QTest::newRow("to 8 bits") << 0 << QVector<double>{0, 0, 0, 2, 2, 255, 255, 255, 0, 255};
        QTest::newRow("to a mask: 1 where not 0") << 1 << QVector<double>{1, 0, 1, 1, 1, 1, 1, 1, 1, 1};
        QTest::newRow("to 16 bits") << 2 << QVector<double>{0, 0, 0, 2, 2, 301, 65535, 65535, 0, 65535};
        QTest::newRow("to 32 bits") << 3 << QVector<double>{0, 0,           0, 2, 2, 301, 70000, 4294967295.0,
                                                            0, 4294967295.0};
        QTest::newRow("to double") << 5 << QVector<double>{-3,           0,
                                                           double(0.4f), 1.5,
                                                           2.5,          double(300.7f),
                                                           70000,        double(1e12f),
                                                           qQNaN(),      inf};
    }
    void conversionRoundsClampsAndKeeps()
    {
        QFETCH(int, type);
        QFETCH(QVector<double>, expected);
        CILImage image =
            maker::floats(10, 1, {-3, 0, 0.4f, 1.5f, 2.5f, 300.7f, 70000, 1e12f, NOT_A_NUMBER, INF});
        QVERIFY(image.ChangeType(VXSDataTypes(type)));
        const std::vector<double> found = maker::values(image);
        for (int i = 0; i < expected.size(); ++i)
            QVERIFY2(found[size_t(i)] == expected[i] || (qIsNaN(expected[i]) && qIsNaN(found[size_t(i)])),
                     qPrintable(QString("pixel %1: %2").arg(i).arg(found[size_t(i)])));
        QVERIFY(!image.ChangeType(VXSDataTypes(7)));
        QCOMPARE(int(image.getType()), type);
    }

    void everyTypeBecomesFloatAndStaysEqual()
    {
        for (const VXSDataTypes type : TYPES) {
            CILImage image = maker::random(type, 501, 333, 200, 4);
            const std::vector<double> before = maker::values(image);
            image.ChangeType(VXS_FLOAT);
            QCOMPARE(image.getType(), VXS_FLOAT);
            QCOMPARE(maker::values(image), before);
        }
    }

    void aMovedFromImageIsEmpty()
    {
        CILImage a = maker::floats(2, 1, {1, 2});
        const CILImage b = std::move(a);
        QVERIFY(a.isEmpty());
        QCOMPARE(b.getMax(), 2.0f);
    }
};

QTEST_APPLESS_MAIN(tst_CILImage)
#include "tst_CILImage.moc"
