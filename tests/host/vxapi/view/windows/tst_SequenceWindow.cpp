// SPDX-License-Identifier: MIT
#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/clickinfo/ClickInfoValues.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxapi/view/windows/CVXSSequenceWindow.h"
#include "host/vxapi/view/windows/DatasetThumbnail.h"
#include "host/vxparser/CPLClickInfo.h"
#include "host/vxutils/CVXSLog.h"
#include "tests/support/LogCatcher.h"
#include "tests/support/ViewFixture.h"

#include <QListWidget>
#include <QtTest>

namespace {

void add(CVXSSequenceDataset &sequence, const QString &clickNumber, bool luminescent, bool photograph)
{
    auto *dataset = new CVXSDataset(clickNumber);
    if (luminescent)
        dataset->setCoreImage(EIMAGE_LUMINESCENT, spots(32, 32));
    if (photograph)
        dataset->setCoreImage(EIMAGE_PHOTOGRAPH, imageOf(64, 64, [](int x, int y) { return x + y; }));
    QVERIFY(sequence.addDataset(dataset));
}

/// How many pixels of a thumbnail are coloured (not grey).
int colouredPixels(const QImage &image)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb p = image.pixel(x, y);
            if (std::abs(qRed(p) - qGreen(p)) > 24 || std::abs(qGreen(p) - qBlue(p)) > 24)
                ++count;
        }
    }
    return count;
}

QListWidget *listOf(CVXSSequenceWindow &window)
{
    return window.findChild<QListWidget *>(QStringLiteral("SequenceThumbnails"));
}

} // namespace

class tst_SequenceWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aThumbnailAClick()
    {
        CVXSSequenceDataset sequence(QStringLiteral("SW1_SEQ"));
        add(sequence, QStringLiteral("SW1a"), true, false);
        add(sequence, QStringLiteral("SW1b"), false, true);
        add(sequence, QStringLiteral("SW1c"), true, true);
        CVXSSequenceWindow window(&sequence);
        QListWidget *list = listOf(window);
        QCOMPARE(list->count(), 3);
        QVERIFY(list->item(0)->text().startsWith(QStringLiteral("SW1a")));
        QVERIFY(list->item(1)->text().contains(QStringLiteral("Photograph")));
        QVERIFY(window.isSequenceWindow());
        QCOMPARE(window.getSequenceDataset(), &sequence);
        QCOMPARE(window.getDataset(), nullptr);
        const auto picture = [&](int row) { return list->item(row)->icon().pixmap(132, 132).toImage(); };
        // Nothing is read while the window is being made; the pictures come one by one.
        QCOMPARE(colouredPixels(picture(0)), 0);
        QTRY_VERIFY(colouredPixels(picture(0)) > 1000);
        QTRY_VERIFY(colouredPixels(picture(2)) > 100);
        QCOMPARE(colouredPixels(picture(1)), 0);
    }

    void theTooltipOfAnImportedClickNamesItsFiles()
    {
        CVXSSequenceDataset sequence(QStringLiteral("SW8_SEQ"));
        add(sequence, QStringLiteral("SW8a"), true, true);
        add(sequence, QStringLiteral("SW8b"), true, false);
        CPLClickInfo *info = sequence.getDataset(QStringLiteral("SW8a"))->getClickInfo();
        const QString key = clickinfo::KEY_IMPORTED_FROM;
        clickinfo::ensureSection(info, clickinfo::SECTION_LUMINESCENT)->setValue(key, "day 7.tif");
        clickinfo::ensureSection(info, clickinfo::SECTION_PHOTOGRAPH)->setValue(key, "tray.tif");
        CVXSSequenceWindow window(&sequence);
        QCOMPARE(listOf(window)->item(0)->toolTip(),
                 QString("<qt>SW8a<br>Luminescence<br>From day 7.tif, tray.tif</qt>"));
        QCOMPARE(listOf(window)->item(1)->toolTip(), QString("<qt>SW8b<br>Luminescence</qt>"));
    }

    void theFileOfAnImportedClickStandsBelowIt()
    {
        CVXSSequenceDataset sequence(QStringLiteral("SW9_SEQ"));
        add(sequence, QStringLiteral("SW9a"), true, true);
        add(sequence, QStringLiteral("SW9b"), true, false);
        add(sequence, QStringLiteral("SW9c"), false, true);
        add(sequence, QStringLiteral("SW9d"), true, false);
        const auto nameSource = [&sequence](const char *click, QLatin1String section, const QString &file) {
            CPLClickInfo *info = sequence.getDataset(QString::fromLatin1(click))->getClickInfo();
            clickinfo::ensureSection(info, section)->setValue(clickinfo::KEY_IMPORTED_FROM, file);
        };
        const QString longName = QString("a").repeated(200) + ".tif";
        nameSource("SW9a", clickinfo::SECTION_LUMINESCENT, "<b>day 7</b>.tif");
        nameSource("SW9c", clickinfo::SECTION_PHOTOGRAPH, "tray.tif");
        nameSource("SW9d", clickinfo::SECTION_LUMINESCENT, longName);
        CVXSSequenceWindow window(&sequence);
        const QListWidget *list = listOf(window);
        QCOMPARE(list->item(0)->text(), QString("SW9a\nLuminescence\n<b>day 7</b>.tif"));
        QCOMPARE(list->item(1)->text(), QString("SW9b\nLuminescence"));
        QCOMPARE(list->item(2)->text(), QString("SW9c\nPhotograph\ntray.tif"));
        // A name that has no room is cut in its middle; the tooltip has all of it, and no file is markup.
        const QString cut = list->item(3)->text().section('\n', 2);
        QVERIFY(cut.startsWith("a") && cut.endsWith(".tif") && cut.size() < 60);
        QVERIFY(list->item(3)->sizeHint().width() >=
                list->fontMetrics().size(Qt::TextSingleLine, cut).width());
        QVERIFY(list->item(3)->toolTip().contains(longName));
        QVERIFY(list->item(0)->toolTip().contains("&lt;b&gt;day 7&lt;/b&gt;.tif"));
        // Three lines have room below the picture.
        QVERIFY(list->gridSize().height() >=
                list->iconSize().height() + 3 * list->fontMetrics().lineSpacing());
    }

    void changesOfTheSequenceAreShownAndTold()
    {
        CVXSSequenceDataset sequence(QStringLiteral("SW2_SEQ"));
        add(sequence, QStringLiteral("SW2a"), true, false);
        CVXSSequenceWindow window(&sequence);
        QSignalSpy spy(&window, &CVXSSequenceWindow::signalUpdateMeasurmentsCombobox);
        add(sequence, QStringLiteral("SW2b"), true, false);
        QCOMPARE(listOf(window)->count(), 2);
        sequence.removeDataset(QStringLiteral("SW2a"));
        QCOMPARE(listOf(window)->count(), 1);
        // The sequence itself announces that; who hears both would compute twice.
        QCOMPARE(spy.count(), 0);
        window.refreshAfterDatasetAdded();
        QCOMPARE(spy.count(), 1);
    }

    void activatingAThumbnailAsksForItsImageWindow()
    {
        CVXSSequenceDataset sequence(QStringLiteral("SW3_SEQ"));
        add(sequence, QStringLiteral("SW3a"), true, false);
        add(sequence, QStringLiteral("SW3b"), true, false);
        CVXSSequenceWindow window(&sequence);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QSignalSpy spy(&window, &CVXSSequenceWindow::datasetActivated);
        QListWidget *list = listOf(window);
        list->setCurrentRow(1);
        QTest::keyClick(list, Qt::Key_Return);
        QCOMPARE(spy.count(), 1);
        QCOMPARE(spy.last().at(0).toString(), QStringLiteral("SW3b"));
        const QPoint place = list->visualItemRect(list->item(0)).center();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, place);
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, place);
        QCOMPARE(spy.count(), 2);
        QCOMPARE(spy.last().at(0).toString(), QStringLiteral("SW3a"));
    }

    void theWindowOfASequenceIsFound()
    {
        CVXSSequenceDataset sequence(QStringLiteral("SW4_SEQ"));
        QCOMPARE(CVXSSequenceWindow::getSequenceWindow(&sequence), nullptr);
        {
            CVXSSequenceWindow window(&sequence);
            QCOMPARE(CVXSSequenceWindow::getSequenceWindow(&sequence), &window);
            QCOMPARE(CVXSSequenceWindow::getSequenceWindow(nullptr), nullptr);
            QVERIFY(!window.is3DSceneOnlySequence());
            sequence.set3DSceneOnly(true);
            QVERIFY(window.is3DSceneOnlySequence());
        }
        QCOMPARE(CVXSSequenceWindow::getSequenceWindow(&sequence), nullptr);
    }

    void savingWritesTheSequenceWithoutAsking()
    {
        CVXSSequenceDataset sequence(QStringLiteral("SW5_SEQ"));
        add(sequence, QStringLiteral("SW5a"), true, false);
        CVXSSequenceWindow window(&sequence);
        QVERIFY(sequence.getSequenceInfoPath().isEmpty());
        const LogCatcher log;
        QCOMPARE(window.saveSequence(), ESTATUS_SUCCESS);
        QVERIFY(QFile::exists(sequence.getSequenceInfoPath() + QStringLiteral("SequenceInfo.txt")));
        // Nobody was asked for the folder, so the log tells it.
        const LogEntry told = log.entries().last();
        QCOMPARE(told.message, QStringLiteral("Sequence saved: SW5_SEQ"));
        QCOMPARE(told.detail, sequence.getSequenceInfoPath());
    }

    void aThumbnailKeepsProportions()
    {
        CVXSDataset dataset(QStringLiteral("SW6a"));
        dataset.setCoreImage(EIMAGE_LUMINESCENT, spots(64, 32));
        const QImage image = datasetThumbnail(dataset, 100);
        QCOMPARE(image.size(), QSize(100, 100));
        QCOMPARE(image.pixel(50, 10), image.pixel(50, 90)); // the background above and below
        QVERIFY(image.pixel(35, 45) != image.pixel(50, 10));
    }

    void anXRayImageIsSeenInTheThumbnail()
    {
        const auto stripes = [](int x, int) { return x % 20 < 10 ? 0 : 100; };
        CVXSDataset dataset(QStringLiteral("SW8a"));
        const QImage plain = datasetThumbnail(dataset, 100);
        dataset.setCoreImage(EIMAGE_XRAY, imageOf(100, 100, stripes));
        const QImage alone = datasetThumbnail(dataset, 100);
        QVERIFY(alone != plain);
        QCOMPARE(colouredPixels(alone), 0);
        QVERIFY(qGray(alone.pixel(15, 50)) > qGray(alone.pixel(5, 50)) + 100);
        // It lies below the luminescent image, where that is dark.
        dataset.setCoreImage(EIMAGE_LUMINESCENT,
                             imageOf(100, 100, [](int, int y) { return y < 50 ? 0 : 1000 + y; }));
        const QImage below = datasetThumbnail(dataset, 100);
        QVERIFY(colouredPixels(below) > 1000);
        QVERIFY(qGray(below.pixel(15, 20)) > qGray(below.pixel(5, 20)) + 50);
        // A photograph is what one wants to see there, when there is one.
        dataset.setCoreImage(EIMAGE_PHOTOGRAPH, imageOf(100, 100, [](int, int y) { return y; }));
        const QImage photograph = datasetThumbnail(dataset, 100);
        QCOMPARE(photograph.pixel(15, 20), photograph.pixel(5, 20));
    }

    void aThumbnailWithoutAnImageIsPlain()
    {
        CVXSDataset dataset(QStringLiteral("SW7a"));
        QCOMPARE(colouredPixels(datasetThumbnail(dataset, 50)), 0);
        dataset.setCoreImage(EIMAGE_LUMINESCENT, CILImage());
        QCOMPARE(colouredPixels(datasetThumbnail(dataset, 50)), 0);
    }
};

QTEST_MAIN(tst_SequenceWindow)
#include "tst_SequenceWindow.moc"
