// SPDX-License-Identifier: MIT
// The window's computation when something is not there, damaged or refused.
#include "math/Formula.h"
#include "tests/support/LogCatcher.h"
#include "tests/window/calculation/CalculationStudy.h"

#include <QComboBox>
#include <QPushButton>
#include <QtTest>

using namespace calculation;

class tst_CalculationFailures : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        fill(m_study);
        QVERIFY(m_study.save());
    }
    void theInvalidExit_data();
    void theInvalidExit();
    void theInvalidExitKeepsTheFlag_data();
    void theInvalidExitKeepsTheFlag();
    void aSuccessfulRunClearsWhatAFailedOneLeft();
    void logLineOfTheInvalidExit();
    void aSlotThatTakesNoImage_data();
    void aSlotThatTakesNoImage();
    void logLinesOfRefusedSlots();
    void aVanishedSequenceIsAnInvalidSelection();
    void aVanishedDatasetIsAnInvalidSelection();
    void damagedImages_data();
    void damagedImages();

private:
    TestStudy m_study;
};

void tst_CalculationFailures::theInvalidExit_data()
{
    QTest::addColumn<QString>("clickA");
    QTest::addColumn<QString>("clickB");
    QTest::newRow("click A is not of the sequence") << UNKNOWN << B;
    QTest::newRow("click B is not of the sequence") << A << UNKNOWN;
    QTest::newRow("neither is") << UNKNOWN << UNKNOWN;
    QTest::newRow("list A has no current row") << QString() << B;
    QTest::newRow("list B has no current row") << A << QString();
    QTest::newRow("neither list has a current row") << QString() << QString();
    QTest::newRow("an empty text in list A") << QString("") << B;
}

void tst_CalculationFailures::theInvalidExit()
{
    QFETCH(QString, clickA);
    QFETCH(QString, clickB);
    for (bool bound : {true, false}) {
        WindowProbe window;
        if (bound)
            QVERIFY(window.bind(m_study));
        window.select(m_study.sequence(), A, B);
        window.calculateResultImage();
        window.select(m_study.sequence(), clickA, clickB);
        const Earlier earlier(window);
        window.m_pDisplayBtn->setEnabled(true);
        LogCatcher log;
        QCOMPARE(window.computed(), (QStringList{"settings", "refresh"}));
        QVERIFY(!window.m_pDisplayBtn->isEnabled());
        QCOMPARE(log.toolMessages(), QStringList(INVALID));
        QCOMPARE(window.m_pResultTag->getStringList(), QStringList(NEED_TWO));
        QCOMPARE(window.m_messages, QStringList(NEED_TWO));
        QCOMPARE(window.filledSlots(), QStringList());
        QVERIFY(earlier.isStill(window));
        QCOMPARE(window.m_pColorbarResult->palette.getImageMin(), 5.0);
        QCOMPARE(window.m_pColorbarResult->palette.getImageMax(), 9.0);
        QCOMPARE(window.m_pResultTag->isShown(), bound);
        if (bound) {
            for (int slot = 0; slot < 3; ++slot)
                QVERIFY(!window.m_pView->imageAt(slot));
        }
    }
}

void tst_CalculationFailures::theInvalidExitKeepsTheFlag_data()
{
    QTest::addColumn<bool>("flag");
    QTest::newRow("set") << true;
    QTest::newRow("clear") << false;
}

void tst_CalculationFailures::theInvalidExitKeepsTheFlag()
{
    QFETCH(bool, flag);
    WindowProbe window;
    QVERIFY(window.bind(m_study));
    window.select(m_study.sequence(), A, UNKNOWN);
    window.m_bCannotCombine = flag;
    window.calculateResultImage();
    QCOMPARE(window.m_bCannotCombine, flag);
    QVERIFY(window.m_pResultTag->isShown());
    QCOMPARE(window.m_pResultTag->getStringList(), QStringList(NEED_TWO));
}

void tst_CalculationFailures::aSuccessfulRunClearsWhatAFailedOneLeft()
{
    WindowProbe window;
    QVERIFY(window.bind(m_study));
    for (const QString &clickB : {OTHER_FIELD, OTHER_SIZE, PHOTO_ONLY, UNKNOWN}) {
        window.select(m_study.sequence(), A, clickB);
        window.calculateResultImage();
        QVERIFY(!window.m_pDisplayBtn->isEnabled());
        QVERIFY(window.m_pResultTag->isShown());
        window.select(m_study.sequence(), A, B);
        QCOMPARE(window.computed(), RUN);
        QVERIFY(!window.m_bCannotCombine);
        QVERIFY(window.m_messages.isEmpty());
        QVERIFY(window.m_pDisplayBtn->isEnabled());
        QVERIFY(!window.m_pResultTag->isShown());
    }
}

void tst_CalculationFailures::logLineOfTheInvalidExit()
{
    WindowProbe window;
    window.select(m_study.sequence(), A, UNKNOWN);
    LogCatcher log;
    window.calculateResultImage();
    QCOMPARE(log.entries().size(), 1);
    const LogEntry line = log.entries().first();
    QCOMPARE(line.message, INVALID);
    QCOMPARE(line.detail, QString());
    QCOMPARE(line.number, 0);
    QCOMPARE(line.stamp, QString("18:26:27"));
    QCOMPARE(line.level, long(ELOG_FAILURE));
}

void tst_CalculationFailures::aSlotThatTakesNoImage_data()
{
    QTest::addColumn<int>("slot");
    QTest::addColumn<bool>("misread");
    QTest::addColumn<QString>("message");
    for (bool misread : {false, true}) {
        const QString how = misread ? "holds another image" : "stays empty";
        QTest::newRow(qPrintable("slot A " + how)) << 0 << misread << "Image A could not be replaced.";
        QTest::newRow(qPrintable("slot B " + how)) << 1 << misread << "Image B could not be replaced.";
        QTest::newRow(qPrintable("the result's slot " + how))
            << 2 << misread << "Result Image could not be replaced";
    }
}

void tst_CalculationFailures::aSlotThatTakesNoImage()
{
    QFETCH(int, slot);
    QFETCH(bool, misread);
    QFETCH(QString, message);
    WindowProbe window;
    QVERIFY(window.bind(m_study));
    window.select(m_study.sequence(), A, B);
    const Earlier earlier(window);
    (misread ? window.misreadSlot : window.refusedSlot) = slot;
    LogCatcher log;
    QCOMPARE(window.computed(), RUN);
    QCOMPARE(log.toolMessages(), QStringList(message));
    // Without A or B in the view there is nothing to evaluate; what stands in the slot does not matter.
    const bool evaluated = slot == 2 || misread;
    QCOMPARE(window.m_resultImage.getWidth(), evaluated ? 48u : 3u);
    if (!evaluated)
        QCOMPARE(difference(window.m_resultImage, {1, 2, 3, 4, 5, 6}, 3, 2), QString());
    QVERIFY(!window.m_bCannotCombine);
    QVERIFY(window.m_pDisplayBtn->isEnabled());
}

void tst_CalculationFailures::logLinesOfRefusedSlots()
{
    for (int slot = 0; slot < 3; ++slot) {
        WindowProbe window;
        window.select(m_study.sequence(), A, B);
        window.refusedSlot = slot;
        LogCatcher log;
        window.calculateResultImage();
        QCOMPARE(log.entries().size(), 1);
        const LogEntry line = log.entries().first();
        QCOMPARE(line.detail, QString());
        QCOMPARE(line.number, 0);
        QCOMPARE(line.stamp, QString("18:26:27"));
        QCOMPARE(line.level, long(ELOG_FAILURE));
    }
}

void tst_CalculationFailures::aVanishedSequenceIsAnInvalidSelection()
{
    TestStudy study("CD20260102030405_SEQ");
    study.add(click("CD20260102030405"));
    study.add(click("CD20260102030406"));
    WindowProbe window;
    QVERIFY(window.bind(study));
    window.select(study.sequence(), "CD20260102030405", "CD20260102030406");
    window.calculateResultImage();
    study.close();
    LogCatcher log;
    QCOMPARE(window.computed(), (QStringList{"settings", "refresh"}));
    QCOMPARE(log.toolMessages(), QStringList(INVALID));
}

void tst_CalculationFailures::aVanishedDatasetIsAnInvalidSelection()
{
    TestStudy study("CD20260102030405_SEQ");
    study.add(click("CD20260102030405"));
    study.add(click("CD20260102030406"));
    WindowProbe window;
    window.select(study.sequence(), "CD20260102030405", "CD20260102030406");
    window.calculateResultImage();
    QVERIFY(study.sequence()->removeDataset("CD20260102030406"));
    LogCatcher log;
    QCOMPARE(window.computed(), (QStringList{"settings", "refresh"}));
    QCOMPARE(log.toolMessages(), QStringList(INVALID));
}

void tst_CalculationFailures::damagedImages_data()
{
    QTest::addColumn<bool>("damageA");
    QTest::addColumn<bool>("damageB");
    QTest::newRow("A's image file is damaged") << true << false;
    QTest::newRow("B's image file is damaged") << false << true;
    QTest::newRow("both image files are damaged") << true << true;
}

void tst_CalculationFailures::damagedImages()
{
    QFETCH(bool, damageA);
    QFETCH(bool, damageB);
    const QString id = "CD20260102030405_SEQ", first = "CD20260102030405", second = "CD20260102030406";
    TestStudy study(id);
    study.add(click(first));
    study.add(click(second));
    QVERIFY(study.save());
    const QString folder = study.sequence()->getSequenceInfoPath();
    study.close();
    const auto damage = [&folder](const QString &number) {
        QFile file(folder + number + "/luminescent.tif");
        QVERIFY(file.exists());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("II*\0 no picture at all, only a beginning of one", 46);
    };
    if (damageA)
        damage(first);
    if (damageB)
        damage(second);
    ESTATUS status = ESTATUS_FAILURE;
    QString error;
    std::unique_ptr<CVXSSequenceDataset> sequence(CVXSSequenceDataset::open(folder, &status, &error));
    QVERIFY2(sequence, qPrintable(error));
    WindowProbe window;
    window.select(sequence.get(), first, second);
    for (int index = 0; index < 5; ++index) {
        window.m_pOperationCB->setCurrentIndex(index);
        LogCatcher log;
        window.calculateResultImage();
        QVERIFY(!log.failures().isEmpty());
        int asked = 0; // of the dataset, by name: B's image is fetched in counts as well
        for (const LogEntry &entry : log.entries())
            asked += entry.detail == "asked for by Image Math";
        QCOMPARE(asked, int(damageA) + 2 * int(damageB));
        QCOMPARE(window.m_imageA.isEmpty(), damageA);
        QCOMPARE(window.m_imageB.isEmpty(), damageB);
        QCOMPARE(window.filledSlots().mid(0, 2), (QStringList{"A", "B"}));
        if (damageA && damageB) {
            QVERIFY(window.m_resultImage.isEmpty());
        } else {
            QCOMPARE(window.m_messages, (QStringList{CANNOT, SIZES}));
            QVERIFY(!window.m_pDisplayBtn->isEnabled());
        }
    }
    // What is left of the sequence goes on working.
    if (!damageA || !damageB) {
        const QString whole = damageA ? second : first;
        window.select(sequence.get(), whole, whole);
        window.calculateResultImage();
        QCOMPARE(window.m_messages, QStringList());
        QCOMPARE(window.m_resultImage.getWidth(), 48u);
    }
}

QTEST_MAIN(tst_CalculationFailures)
#include "tst_CalculationFailures.moc"
