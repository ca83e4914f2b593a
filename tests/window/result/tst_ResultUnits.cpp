// SPDX-License-Identifier: MIT
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxparser/CPLClickInfo.h"
#include "tests/support/LogCatcher.h"
#include "tests/support/Rows.h"
#include "tests/window/result/ResultBench.h"

#include <QtTest>

/// The result's "Graph Controls": unit, colours and limits, for an image in each unit.
class tst_ResultUnits : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_bench.reset(); }

    void unitAndLimits_data();
    void unitAndLimits();
    void limitsAreThoseOfThePalette_data();
    void limitsAreThoseOfThePalette();
    void theAutomaticRangeIsAskedForWithTheFullRangeOnly_data();
    void theAutomaticRangeIsAskedForWithTheFullRangeOnly();
    void coloursOfTheSequenceAndOfA_data();
    void coloursOfTheSequenceAndOfA();
    void withoutADatasetItsPairsAreLeftOut();

private:
    QString file() const { return m_bench->resultFile("ClickInfo.txt"); }
    QString value(const char *key) const
    {
        return recordtext::value(file(), QStringLiteral("Graph Controls"), QString::fromLatin1(key));
    }
    static QString fixed(double number) { return QString::number(number, 'f', 6); }
    void setResultPalette(double low, double high);

    std::unique_ptr<ResultBench> m_bench;
};

void tst_ResultUnits::init()
{
    m_bench = std::make_unique<ResultBench>();
    QVERIFY(m_bench->make());
    for (CVXSDataset *dataset : {m_bench->datasetA(), m_bench->datasetB()})
        dataset->setCoreImage(EIMAGE_EXCITATION, TestStudy::image(32, 32, [](int, int) { return 1000.0f; }));
    m_bench->choosePhotograph(QString());
}

void tst_ResultUnits::setResultPalette(double low, double high)
{
    CILPalette palette = m_bench->window()->m_resultImage.getPalette();
    palette.SetImageMinMax(low, high);
    m_bench->window()->m_resultImage.setPalette(palette);
}

void tst_ResultUnits::unitAndLimits_data()
{
    QTest::addColumn<int>("unit");
    QTest::addColumn<bool>("fullRange");
    QTest::addColumn<QString>("name");
    const char *const names[] = {"counts", "Radiance (Photons)", "Radiant Efficiency", "efficiency"};
    for (int unit = 0; unit < 4; ++unit)
        for (const bool fullRange : {true, false})
            QTest::addRow("%s, %s range", names[unit], fullRange ? "full" : "automatic")
                << unit << fullRange << QString::fromLatin1(names[unit]);
}

void tst_ResultUnits::unitAndLimits()
{
    QFETCH(int, unit);
    QFETCH(bool, fullRange);
    QFETCH(QString, name);
    WindowProbe *window = m_bench->window();
    (fullRange ? window->m_pFullResultRadioBtn : window->m_pAutoResultRadioBtn)->click();
    m_bench->bound().sequence()->setActiveUnit(tag_edisplayunit(unit));
    window->calculateResultImage();
    QVERIFY(!window->m_resultImage.isEmpty());
    const CILPalette result = window->m_resultImage.getPalette();
    const CILPalette a = window->viewImage(0)->getPalette();
    const CILPalette b = window->viewImage(1)->getPalette();
    LogCatcher log;
    QCOMPARE(m_bench->writeRecord(), ESTATUS_SUCCESS);
    QCOMPARE(value("Intensity Calibration"), name);
    QCOMPARE(value("Color Table Min"), fixed(result.getImageMin()));
    QCOMPARE(value("Color Table Max"), fixed(result.getImageMax()));
    QCOMPARE(value("Raw Color Table Min"), fixed(double(window->m_resultImage.getMin())));
    QCOMPARE(value("Raw Color Table Max"), fixed(double(window->m_resultImage.getMax())));
    QVERIFY(window->m_resultImage.getMin() < window->m_resultImage.getMax());
    QCOMPARE(recordtext::section(file(), "Graph Controls").last(), QString("Color Table = BlueHot"));
    // Writing changes no colours.
    QVERIFY(window->m_resultImage.getPalette() == result);
    QVERIFY(window->viewImage(0)->getPalette() == a);
    QVERIFY(window->viewImage(1)->getPalette() == b);
    QCOMPARE(log.entries().size(), 0);
}

void tst_ResultUnits::limitsAreThoseOfThePalette_data()
{
    QTest::addColumn<double>("low");
    QTest::addColumn<double>("high");
    QTest::addColumn<QString>("lowText");
    QTest::addColumn<QString>("highText");
    row("limits that no range call gives", 12.5, 150.25, "12.500000", "150.250000");
    row("large ones in full", 1.0e12, 2.5e15, "1000000000000.000000", "2500000000000000.000000");
    row("small ones are cut after six decimals", 1.0e-9, 4.6e-6, "0.000000", "0.000005");
    row("negative ones", -3.25, -1.0, "-3.250000", "-1.000000");
    row("equal ones", 0.0, 0.0, "0.000000", "0.000000");
}

void tst_ResultUnits::limitsAreThoseOfThePalette()
{
    QFETCH(double, low);
    QFETCH(double, high);
    setResultPalette(low, high);
    QVERIFY(m_bench->window()->m_pFullResultRadioBtn->isChecked());
    QCOMPARE(m_bench->writeRecord(), ESTATUS_SUCCESS);
    QTEST(value("Color Table Min"), "lowText");
    QTEST(value("Color Table Max"), "highText");
    QCOMPARE(value("Raw Color Table Min"), QString("75.000000"));
    QCOMPARE(value("Raw Color Table Max"), QString("168.000000"));
    QCOMPARE(m_bench->window()->m_resultImage.getPalette().getImageMin(), low);
    QCOMPARE(m_bench->window()->m_resultImage.getPalette().getImageMax(), high);
}

void tst_ResultUnits::theAutomaticRangeIsAskedForWithTheFullRangeOnly_data()
{
    QTest::addColumn<bool>("fullRange");
    QTest::addColumn<int>("unit");
    QTest::addColumn<bool>("asked");
    QTest::newRow("full range in radiance needs the calibration") << true << 1 << true;
    QTest::newRow("full range in counts does not") << true << 0 << false;
    QTest::newRow("full range in radiant efficiency does not") << true << 2 << false;
    QTest::newRow("automatic range in radiance does not") << false << 1 << false;
}

void tst_ResultUnits::theAutomaticRangeIsAskedForWithTheFullRangeOnly()
{
    QFETCH(bool, fullRange);
    QFETCH(int, unit);
    WindowProbe *window = m_bench->window();
    (fullRange ? window->m_pFullResultRadioBtn : window->m_pAutoResultRadioBtn)->click();
    m_bench->bound().sequence()->setActiveUnit(tag_edisplayunit(unit));
    window->calculateResultImage();
    setResultPalette(12.5, 150.25);
    // A constant that cannot be used is told each time the factor is asked for.
    (*m_bench->datasetA()->getClickInfo())[QStringLiteral("luminescent image")]->setValue("Exposure Time",
                                                                                          QString("none"));
    LogCatcher log;
    QCOMPARE(m_bench->writeRecord(), ESTATUS_SUCCESS);
    int told = 0;
    for (const LogEntry &line : log.entries())
        told += (line.message + line.detail).contains("Exposure Time");
    QTEST(told > 0, "asked");
    QCOMPARE(value("Color Table Min"), QString("12.500000"));
    QCOMPARE(value("Color Table Max"), QString("150.250000"));
}

void tst_ResultUnits::coloursOfTheSequenceAndOfA_data()
{
    QTest::addColumn<int>("table");
    QTest::addColumn<QString>("name");
    const char *const names[] = {"Grays",   "Rainbow",  "YellowHot", "BlueHot", "BlueRedGreen", "PlanetEarth",
                                 "Terrain", "Rainbow2", "Red",       "Green",   "Blue"};
    for (int table = 0; table < 11; ++table)
        QTest::newRow(names[table]) << table << QString::fromLatin1(names[table]);
}

void tst_ResultUnits::coloursOfTheSequenceAndOfA()
{
    QFETCH(int, table);
    QFETCH(QString, name);
    tag_simageadjust adjust;
    adjust.colorTable = VXS_COLORTABLE_TYPES(table);
    adjust.reverse = true; // these two are read from A
    adjust.logScale = true;
    m_bench->bound().sequence()->setImageAdjust(adjust);
    m_bench->datasetA()->setColorTable(VXS_COLORTABLE_TYPES((table + 1) % 11));
    CVXSToolInfo info;
    info.reversed = table % 2 == 1;
    info.logarithmic = table % 3 == 1;
    m_bench->datasetA()->setToolInfo(info);
    info.reversed = !info.reversed;
    info.logarithmic = !info.logarithmic;
    m_bench->datasetB()->setToolInfo(info);
    QCOMPARE(m_bench->writeRecord(), ESTATUS_SUCCESS);
    const QStringList lines = recordtext::section(file(), "Graph Controls");
    QCOMPARE(lines.mid(4, 4),
             QStringList({"Intensity Calibration = counts", table % 2 == 1 ? "Reversed = 1" : "Reversed = 0",
                          "Color Table = " + name,
                          table % 3 == 1 ? "ColorTableIsLog = 1" : "ColorTableIsLog = 0"}));
    QCOMPARE(lines.last(), "Color Table = " + name);
}

void tst_ResultUnits::withoutADatasetItsPairsAreLeftOut()
{
    m_bench->window()->m_pDatasetA = nullptr;
    setResultPalette(12.5, 150.25);
    QCOMPARE(m_bench->writeRecord(), ESTATUS_SUCCESS);
    QCOMPARE(recordtext::section(file(), "Graph Controls"),
             QStringList({"[Graph Controls]", "Color Table = Grays", "Intensity Calibration = counts",
                          "Window = 3", "Intensity Calibration = counts", "Color Table Min = 12.500000",
                          "Color Table Max = 150.250000", "Raw Color Table Min = 75.000000",
                          "Raw Color Table Max = 168.000000", "Color Table = BlueHot"}));
}

QTEST_MAIN(tst_ResultUnits)
#include "tst_ResultUnits.moc"
