// SPDX-License-Identifier: MIT
#include "app/datasets/RecentSequences.h"
#include "app/datasets/SequenceManager.h"
#include "host/vxapi/view/windows/CVXSWorkspace.h"
#include "host/vxutils/CVXPreference.h"
#include "tests/support/DialogAnswerer.h"
#include "tests/support/Files.h"
#include "tests/support/WorkspaceFixture.h"

#include <QAction>
#include <QCommandLinkButton>
#include <QLabel>

namespace {

const QString ID = QStringLiteral("AB20260102030405_SEQ");

} // namespace

/// The empty workspace says what can be done.
class tst_Welcome : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void theEmptyWorkspaceOffersWhatCanBeDone();
    void itGoesWithTheFirstWindowAndComesBackAfterTheLast();
    void itCoversTheAreaAtEverySize();
    void aSequenceIsOpened();
    void imagesAreImported();
    void theGuideIsShown();
    void theSampleStudyIsMadeOnceAndOpened();
    void aSampleStudyThatCannotBeMadeIsTold();
    void recentSequencesAreOffered();

private:
    QWidget *page() const { return m_fixture->window->findChild<QWidget *>("welcome"); }
    void press(const char *action) const
    {
        QTest::mouseClick(m_fixture->window->findChild<QAbstractButton *>(QString("welcome_") + action),
                          Qt::LeftButton);
    }
    SequenceManager *sequences() const { return m_fixture->window->parts().sequences; }

    std::unique_ptr<QTemporaryDir> m_data;
    std::unique_ptr<WorkspaceFixture> m_fixture;
};

void tst_Welcome::init()
{
    m_data = std::make_unique<QTemporaryDir>();
    m_fixture.reset();
    m_fixture = std::make_unique<WorkspaceFixture>();
    QVERIFY(QTest::qWaitForWindowExposed(m_fixture->window.get()));
}

void tst_Welcome::theEmptyWorkspaceOffersWhatCanBeDone()
{
    QVERIFY(page() && page()->isVisible());
    QStringList titles;
    for (const QCommandLinkButton *button : page()->findChildren<QCommandLinkButton *>()) {
        QVERIFY(button->isVisible() && button->isEnabled());
        QVERIFY(!button->description().isEmpty());
        titles += button->text();
    }
    QCOMPARE(titles,
             (QStringList{"Open a sequence", "Import images", "Open the sample study", "Read the guide"}));
    QVERIFY2(!m_fixture->window->findChild<QLabel *>("welcomeRecent"), "nothing was open before");
}

void tst_Welcome::itGoesWithTheFirstWindowAndComesBackAfterTheLast()
{
    CVXSSequenceDataset *sequence = m_fixture->window->openSequence(writeSequence(m_data->path(), ID, "AB"));
    QTRY_VERIFY(!page()->isVisible());
    m_fixture->window->parts().workspace->showDataset((*sequence)[0]);
    QVERIFY(!page()->isVisible());
    QVERIFY(sequences()->closeAll());
    QTRY_VERIFY(page()->isVisible());
}

void tst_Welcome::itCoversTheAreaAtEverySize()
{
    for (const QSize size : {QSize(1280, 800), QSize(700, 500)}) {
        m_fixture->window->resize(size);
        QTRY_COMPARE(page()->size(), m_fixture->window->parts().workspace->size());
    }
    for (const QCommandLinkButton *button : page()->findChildren<QCommandLinkButton *>())
        QVERIFY2(page()->rect().contains(QRect(button->mapTo(page(), QPoint()), button->size())),
                 qPrintable(button->text()));
}

void tst_Welcome::aSequenceIsOpened()
{
    const QString folder = writeSequence(m_data->path(), ID, "AB");
    const DialogAnswerer user({DialogAnswer::choose(QDir::cleanPath(folder))});
    press("actionOpenSequence");
    QCOMPARE(sequences()->sequences().size(), 1);
}

void tst_Welcome::imagesAreImported()
{
    const DialogAnswerer user({DialogAnswer::ESCAPE_KEY});
    press("actionImportImages");
    QCOMPARE(user.shown(0).className, QString("ImportDialog"));
}

void tst_Welcome::theGuideIsShown()
{
    press("actionGuide");
    const auto *guide = m_fixture->window->findChild<QWidget *>("guideWindow");
    QVERIFY(guide && guide->isVisible());
}

void tst_Welcome::theSampleStudyIsMadeOnceAndOpened()
{
    auto *action = m_fixture->window->findChild<QAction *>("actionSampleStudy");
    press("actionSampleStudy");
    QVERIFY2(!action->isEnabled(), "it is being made");
    QVERIFY(!m_fixture->window->findChild<QAbstractButton *>("welcome_actionSampleStudy")->isEnabled());
    QTRY_COMPARE_WITH_TIMEOUT(sequences()->sequences().size(), 1, 120000);
    QVERIFY(action->isEnabled());
    CVXSSequenceDataset *sequence = sequences()->sequences().first();
    QTRY_VERIFY(!sequence->isLoading());
    QVERIFY(sequence->getDatasets().size() > 2);
    const QString study = CVXPreference::getProgramDataPath() + "/sample-study";
    QVERIFY(sequence->getSequenceInfoPath().startsWith(study + "/"));
    QVERIFY(!QFile::exists(study + ".part"));
    // The second time it is there at once.
    QVERIFY(sequences()->close(sequence));
    action->trigger();
    QCOMPARE(sequences()->sequences().size(), 1);
}

void tst_Welcome::aSampleStudyThatCannotBeMadeIsTold()
{
    // What the user keeps there is not touched.
    const QString inTheWay = CVXPreference::getProgramDataPath() + "/sample-study";
    QVERIFY(QDir().mkpath(inTheWay) && writeFile(inTheWay + "/thesis.txt", "the only copy"));
    press("actionSampleStudy");
    QTRY_VERIFY_WITH_TIMEOUT(m_fixture->window->findChild<QAction *>("actionSampleStudy")->isEnabled(),
                             120000);
    QVERIFY(sequences()->sequences().isEmpty());
    QVERIFY2(m_fixture->log.hasFailure({"The sample study could not be made.", inTheWay}),
             qPrintable(m_fixture->log.failuresInFull().join("\n")));
    QCOMPARE(filesOf(inTheWay), QStringList{"thesis.txt"});
    QVERIFY(!QFile::exists(inTheWay + ".part"));
}

void tst_Welcome::recentSequencesAreOffered()
{
    const QString folder = QDir::cleanPath(writeSequence(m_data->path(), ID, "AB"));
    QVERIFY(m_fixture->window->openSequence(folder));
    QVERIFY(sequences()->closeAll());
    QTRY_VERIFY(page()->isVisible());
    auto *link = page()->findChild<QLabel *>("welcomeRecent");
    QVERIFY(link && link->isVisible());
    QVERIFY(link->text().contains(ID) && !link->text().contains(m_data->path()));
    QVERIFY(link->toolTip().contains(folder));
    QTest::mouseClick(link, Qt::LeftButton, Qt::NoModifier, QPoint(8, link->height() / 2));
    QCOMPARE(sequences()->sequences().size(), 1);
}

QTEST_MAIN(tst_Welcome)
#include "tst_Welcome.moc"
