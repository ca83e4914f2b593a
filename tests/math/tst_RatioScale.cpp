// SPDX-License-Identifier: MIT
#include "host/vxparser/CPLClickInfo.h"
#include "math/Formula.h"

#include <QtTest>

using namespace imagemath;

/// The factor that the thresholded ratio takes from a dataset's fluorescence level.
class tst_RatioScale : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fluorescenceLevel_data();
    void fluorescenceLevel();
    void noClickInfoHasNoLevel();
};

void tst_RatioScale::fluorescenceLevel_data()
{
    QTest::addColumn<QString>("section");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QStringList>("values");
    QTest::addColumn<double>("scale");
    const QString image = "luminescent image", level = "Fluorescence level string";
    for (const char *text : {"High", "high", "HIGH", "hIgH", "HigH"})
        QTest::newRow(text) << image << level << QStringList(text) << 100.0;
    for (const char *text :
         {"High ", " High", "High\t", "Low", "Medium", "Higher", "Hig", "100", "", "\"High\"", "H\xc4\xb1gh"})
        QTest::newRow(qPrintable(QString("'%1'").arg(QString::fromUtf8(text))))
            << image << level << QStringList(QString::fromUtf8(text)) << 10.0;
    QTest::newRow("no value is recorded") << image << level << QStringList() << 10.0;
    QTest::newRow("the key in other letters")
        << image << QString("Fluorescence Level String") << QStringList("High") << 10.0;
    QTest::newRow("the key in another section")
        << QString("photographic image") << level << QStringList("High") << 10.0;
    QTest::newRow("the section in other letters")
        << QString("Luminescent Image") << level << QStringList("High") << 10.0;
    QTest::newRow("the last of two values counts") << image << level << QStringList{"Low", "High"} << 100.0;
    QTest::newRow("the first of two values does not count")
        << image << level << QStringList{"High", "Low"} << 10.0;
}

void tst_RatioScale::fluorescenceLevel()
{
    QFETCH(QString, section);
    QFETCH(QString, key);
    QFETCH(QStringList, values);
    QFETCH(double, scale);
    CPLClickInfo info;
    auto *recorded = new CPLSection;
    recorded->setSectionKey(section);
    for (const QString &value : values)
        recorded->addKeyValue(key, value);
    info.addSection(recorded);
    QCOMPARE(ratioScaleOf(&info), scale);
}

void tst_RatioScale::noClickInfoHasNoLevel()
{
    CPLClickInfo empty;
    QCOMPARE(ratioScaleOf(&empty), 10.0);
    QCOMPARE(ratioScaleOf(nullptr), 10.0);
}

QTEST_GUILESS_MAIN(tst_RatioScale)
#include "tst_RatioScale.moc"
