// SPDX-License-Identifier: MIT
// Pairs whose computation gives no pixels, and what the user is told.
#include "host/vxutils/CVXPreference.h"
#include "tests/support/LogCatcher.h"
#include "tests/support/Rows.h"
#include "tests/window/calculation/CalculationStudy.h"

#include <QDir>
#include <QPushButton>
#include <QtTest>

using namespace calculation;

namespace {

const QString NO_EXPOSURE = "AB20260102030414", NO_EXPOSURE_2 = "AB20260102030415";
const QString GRIDS =
    QString::fromUtf8("One binning is no multiple of the other: A has 48 × 48 pixels, binned "
                      "by 4, and B has 32 × 32, binned by 6.");

QStringList storedResults()
{
    return QDir(CVXPreference::getProgramDataPath()).entryList({"AB_M*"}, QDir::Dirs);
}

} // namespace

class tst_EmptyResult : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        fill(m_study);
        for (const QString &number : {NO_EXPOSURE, NO_EXPOSURE_2}) {
            ClickSpec spec = click(number);
            spec.luminescentKeys.insert(clickinfo::KEY_EXPOSURE, QString());
            m_study.add(spec);
        }
        QVERIFY(m_study.save());
    }

    void theEmptyPlacesSayWhy_data()
    {
        QTest::addColumn<QString>("clickA");
        QTest::addColumn<QString>("clickB");
        QTest::addColumn<int>("unit");
        QTest::addColumn<bool>("aIsEmpty");
        QTest::addColumn<bool>("bIsEmpty");
        QTest::addColumn<QString>("result");
        QTest::addColumn<QStringList>("messages"); // of the tag
        row("a pair with pixels", A, COARSE, int(EUNIT_COUNTS), false, false, "", QStringList());
        row("binning 4 and 6", A, BINNING_6, int(EUNIT_COUNTS), false, false, GRIDS, QStringList());
        row("no exposure in both, in radiance", NO_EXPOSURE, NO_EXPOSURE_2, int(EUNIT_RADIANCE), true, true,
            "A and B have no pixels.", QStringList());
        row("no exposure in A alone", NO_EXPOSURE, B, int(EUNIT_RADIANCE), true, false, "A has no pixels.",
            QStringList({CANNOT, SIZES}));
        row("no exposure in B alone", A, NO_EXPOSURE, int(EUNIT_RADIANCE), false, true, "B has no pixels.",
            QStringList({CANNOT, SIZES}));
        row("no exposure, in counts", NO_EXPOSURE, NO_EXPOSURE_2, int(EUNIT_COUNTS), false, false, "",
            QStringList());
        row("a click without image says so in its tag", PHOTO_ONLY, B, int(EUNIT_COUNTS), false, false, "",
            QStringList(NEED_TWO));
    }
    void theEmptyPlacesSayWhy()
    {
        QFETCH(QString, clickA);
        QFETCH(QString, clickB);
        QFETCH(int, unit);
        QFETCH(bool, aIsEmpty);
        QFETCH(bool, bIsEmpty);
        QFETCH(QString, result);
        QFETCH(QStringList, messages);
        WindowProbe window;
        QVERIFY(window.bind(m_study));
        m_study.sequence()->setActiveUnit(tag_edisplayunit(unit));
        window.select(m_study.sequence(), clickA, clickB);
        LogCatcher log;
        window.calculateResultImage();
        const auto says = [&window](int slot, bool isEmpty, const QString &click) {
            const QString text = window.m_pView->emptyText(slot);
            return isEmpty ? text.contains(click) && text.contains(clickinfo::KEY_EXPOSURE) : text.isEmpty();
        };
        QVERIFY2(says(0, aIsEmpty, clickA), qPrintable(window.m_pView->emptyText(0)));
        QVERIFY2(says(1, bIsEmpty, clickB), qPrintable(window.m_pView->emptyText(1)));
        QCOMPARE(window.m_pView->emptyText(2), result);
        // Flag, tag and button are what they are without pixels too.
        QCOMPARE(window.m_messages, messages);
        QCOMPARE(window.m_bCannotCombine, !messages.isEmpty());
        QCOMPARE(window.m_pDisplayBtn->isEnabled(), messages.isEmpty());
        const bool isTold = !result.isEmpty() && messages.isEmpty();
        QCOMPARE(log.toolFailures().filter("The result has no pixels: " + result).size(), isTold ? 1 : 0);
        QCOMPARE(isTold && aIsEmpty, !log.toolFailures().filter(clickinfo::KEY_EXPOSURE).isEmpty());
    }

    void whatIsToldGoesWithItsReason()
    {
        WindowProbe window;
        QVERIFY(window.bind(m_study));
        m_study.sequence()->setActiveUnit(EUNIT_COUNTS);
        window.select(m_study.sequence(), A, BINNING_6);
        window.calculateResultImage();
        QCOMPARE(window.m_pView->emptyText(2), GRIDS);
        window.select(m_study.sequence(), A, UNKNOWN);
        window.calculateResultImage();
        QCOMPARE(window.m_pView->emptyText(2), QString());
        window.select(m_study.sequence(), A, BINNING_6);
        window.calculateResultImage();
        window.select(m_study.sequence(), A, B);
        window.calculateResultImage();
        QCOMPARE(window.m_pView->emptyText(2), QString());
        QVERIFY(!window.m_resultImage.isEmpty());
    }

    void theBarOfAPairThatCannotBeCombinedIsNotTurnedRound()
    {
        WindowProbe window;
        QVERIFY(window.bind(m_study));
        m_study.sequence()->setActiveUnit(EUNIT_COUNTS);
        window.select(m_study.sequence(), A, B);
        window.calculateResultImage();
        QVERIFY(!window.m_resultImage.getPalette().isReversed());
        window.select(m_study.sequence(), A, OTHER_FIELD);
        window.calculateResultImage();
        QVERIFY(window.m_bCannotCombine);
        QVERIFY(window.m_pColorbarResult->palette.isReversed()); // its own flag, which nobody sees
        const QImage picture = window.m_pView->rasterImage();
        window.m_pColorbarResult->palette.setReversed(0);
        QCOMPARE(window.m_pView->rasterImage(), picture);
    }

    void noDatasetIsMadeOfIt_data()
    {
        QTest::addColumn<QString>("clickA");
        QTest::addColumn<QString>("clickB");
        QTest::addColumn<int>("unit");
        QTest::addColumn<QString>("told");
        row("binning 4 and 6", A, BINNING_6, int(EUNIT_COUNTS), GRIDS);
        row("no exposure in both", NO_EXPOSURE, NO_EXPOSURE_2, int(EUNIT_RADIANCE),
            "A and B have no pixels.");
    }
    void noDatasetIsMadeOfIt()
    {
        QFETCH(QString, clickA);
        QFETCH(QString, clickB);
        QFETCH(int, unit);
        QFETCH(QString, told);
        WindowProbe window;
        QVERIFY(window.bind(m_study));
        m_study.sequence()->setActiveUnit(tag_edisplayunit(unit));
        window.select(m_study.sequence(), clickA, clickB);
        window.calculateResultImage();
        LogCatcher log;
        QVERIFY(window.m_pDisplayBtn->isEnabled());
        window.m_pDisplayBtn->click();
        QCOMPARE(log.toolFailures().size(), 1);
        QVERIFY(log.toolFailures().first().startsWith("The result has no pixels: " + told));
        QCOMPARE(storedResults(), QStringList());
    }

private:
    TestStudy m_study;
};

QTEST_MAIN(tst_EmptyResult)
#include "tst_EmptyResult.moc"
