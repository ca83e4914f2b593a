// SPDX-License-Identifier: MIT
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxutils/CVXPreference.h"
#include "samples/SampleStudy.h"
#include "tests/support/Rows.h"
#include "window/CVXSImageMathWnd.h"

#include <QDir>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

using namespace samplestudy;

namespace {

/// The files of a folder and their bytes; the moment of the computation, which the result's TIFF tells, is
/// blotted out.
QMap<QString, QByteArray> contentsOf(const QString &folder)
{
    static const QRegularExpression computed(QStringLiteral("\"computed\": \"[^\"]*\""));
    QMap<QString, QByteArray> contents;
    const QStringList names = QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    for (const QString &name : names) {
        QFile file(folder + QLatin1Char('/') + name);
        if (file.open(QIODevice::ReadOnly))
            contents.insert(name,
                            QString::fromLatin1(file.readAll()).replace(computed, "computed").toLatin1());
    }
    return contents;
}

} // namespace

/// The same result, once written by the window and once by a program that links no widget.
class tst_ResultWithoutWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void theFilesAreThoseOfTheWindow_data();
    void theFilesAreThoseOfTheWindow();

private:
    void writeWithTheWindow(const QString &dataFolder);
    void writeWithoutAWindow(const QString &profile);

    QTemporaryDir m_study;
    QString m_sequence;
};

void tst_ResultWithoutWindow::initTestCase()
{
    QString error;
    QCOMPARE(make(m_study.path(), 1, &error), ESTATUS_SUCCESS);
    m_sequence = m_study.filePath(SEQUENCE_ID);
}

void tst_ResultWithoutWindow::theFilesAreThoseOfTheWindow_data()
{
    QTest::addColumn<QString>("a");
    QTest::addColumn<QString>("b");
    QTest::addColumn<int>("formula");
    QTest::addColumn<QString>("k");
    QTest::addColumn<int>("unit");
    QTest::addColumn<QString>("photograph");
    const QString a = FLUORESCENCE_A;
    const QString b = FLUORESCENCE_B;
    const int counts = EUNIT_COUNTS;
    const int radiance = EUNIT_RADIANCE;
    const int radiantEfficiency = EUNIT_RADIANT_EFFICIENCY;
    const QString ratioA = RATIO_A;
    const QString ratioB = RATIO_B_HIGH;
    const QString bin4 = LUMINESCENCE_BIN4;
    const QString bin8 = LUMINESCENCE_BIN8;
    row("a sum in counts, with A's photograph", a, b, 0, "2.50", counts, "A");
    row("a difference in radiance, with B's photograph", a, b, 1, "1.25", radiance, "B");
    row("a product in counts, without photograph", a, b, 2, "1.50e-3", counts, "none");
    row("a quotient in radiant efficiency", a, b, 3, "1.00", radiantEfficiency, "A");
    row("a ratio of level High, masked by B's photograph", ratioA, ratioB, 4, "1.50e2", counts, "A");
    row("images of binning 4 and 8", bin4, bin8, 1, "1.00", radiance, "B");
}

void tst_ResultWithoutWindow::writeWithTheWindow(const QString &dataFolder)
{
    QFETCH(QString, a);
    QFETCH(QString, b);
    QFETCH(int, formula);
    QFETCH(QString, k);
    QFETCH(int, unit);
    QFETCH(QString, photograph);
    QVERIFY(CVXPreference::setProgramDataPath(dataFolder, nullptr));
    CVXSDataset::registerStoredDatasets(dataFolder);
    const std::unique_ptr<CVXSSequenceDataset> sequence(
        CVXSSequenceDataset::open(m_sequence, nullptr, nullptr));
    QVERIFY(sequence);
    sequence->setActiveUnit(tag_edisplayunit(unit));
    CVXSImageMathWnd window;
    QVERIFY(window.bindToSequence(SEQUENCE_ID));
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    window.m_pListBoxA->setCurrentItem(window.m_pListBoxA->findItems(a, Qt::MatchExactly).value(0));
    window.m_pListBoxB->setCurrentItem(window.m_pListBoxB->findItems(b, Qt::MatchExactly).value(0));
    window.m_pKLineEdit->setFocus();
    window.m_pKLineEdit->selectAll();
    QTest::keyClicks(window.m_pKLineEdit, k);
    QTest::keyClick(window.m_pKLineEdit, Qt::Key_Return);
    QCOMPARE(window.m_pKLineEdit->text(), k);
    window.m_pOperationCB->setCurrentIndex(formula);
    window.onChangeMathOperation(formula);
    window.m_pWithPhotoChkBox->setChecked(photograph != QLatin1String("none"));
    window.m_pPhotoFromCB->setCurrentText(photograph);
    QTest::mouseClick(window.m_pDisplayBtn, Qt::LeftButton);
}

void tst_ResultWithoutWindow::writeWithoutAWindow(const QString &profile)
{
    QFETCH(QString, a);
    QFETCH(QString, b);
    QFETCH(int, formula);
    QFETCH(QString, k);
    QFETCH(int, unit);
    QFETCH(QString, photograph);
    const QStringList texts{"A + B * k", "A - B * k", "A * B * k", "(A / B) * k", "A/B if Counts(B)>k"};
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("VEXA_PROFILE_DIR"), profile);
    environment.remove(QStringLiteral("DISPLAY"));
    program.setProcessEnvironment(environment);
    program.start(QStringLiteral(VEXA_BINARY_DIR "/tests/write-result"),
                  {m_sequence, a, b, texts.at(formula), k, unitKey(tag_edisplayunit(unit)), photograph});
    QVERIFY2(program.waitForFinished(60000), "write-result hangs");
    const QByteArray said = program.readAllStandardOutput().trimmed();
    QVERIFY2(program.exitStatus() == QProcess::NormalExit && program.exitCode() == 0, said.constData());
    // It says the folder, and before that which libraries of a user interface it had to load: none.
    QVERIFY2(said.startsWith(profile.toUtf8()) && !said.contains('\n'), said.constData());
}

void tst_ResultWithoutWindow::theFilesAreThoseOfTheWindow()
{
    QFETCH(QString, a);
    QFETCH(QString, photograph);
    const QTemporaryDir byWindow;
    const QTemporaryDir profile;
    writeWithTheWindow(byWindow.path());
    writeWithoutAWindow(profile.path());
    if (QTest::currentTestFailed())
        return;
    const QString name = a.left(2) + QLatin1String("_M") + a.mid(2);
    const auto expected = contentsOf(byWindow.filePath(name));
    const auto made = contentsOf(profile.filePath(QLatin1String("data/") + name));
    QCOMPARE(expected.keys(), made.keys());
    QCOMPARE(expected.size(), photograph == QLatin1String("none") ? 5 : 6);
    for (auto it = expected.begin(); it != expected.end(); ++it) {
        QVERIFY2(!it.value().isEmpty(), qPrintable(it.key()));
        QVERIFY2(it.value() == made.value(it.key()), qPrintable(it.key() + " differs"));
    }
}

QTEST_MAIN(tst_ResultWithoutWindow)
#include "tst_ResultWithoutWindow.moc"
