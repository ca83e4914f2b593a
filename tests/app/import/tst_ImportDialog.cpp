// SPDX-License-Identifier: MIT
#include "app/datasets/SequenceManager.h"
#include "app/import/ImageImporter.h"
#include "app/import/ImportDialog.h"
#include "app/import/ImportTable.h"
#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/clickinfo/ClickInfoValues.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/view/windows/CVXSSequenceWindow.h"
#include "host/vxapi/view/windows/CVXSWorkspace.h"
#include "host/vxutils/CVXPreference.h"
#include "tests/support/DialogAnswerer.h"
#include "tests/support/Files.h"
#include "tests/support/GuiDriver.h"
#include "tests/support/LogCatcher.h"
#include "tests/support/Rows.h"
#include "tests/support/TiffPages.h"
#include "tests/support/WorkspaceFixture.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QSettings>

namespace {

const QDateTime NOW(QDate(2026, 11, 21), QTime(15, 30));

QString writeImage(const QString &path, float base)
{
    const CILImage image = TestStudy::image(16, 16, [base](int x, int y) { return base + float(x + y); });
    return image.saveTIFF(QFile::encodeName(path).constData()) == EIL_SUCCESS ? path : QString();
}

ImportRequest requestOf(const QString &image)
{
    ImportRequest request;
    request.images = {{{image}}};
    request.initials = "ZB";
    request.settings.fieldOfView = 10.0;
    return request;
}

/// The dialog by itself, shown, with a profile and two good files.
class DialogFixture
{
public:
    DialogFixture()
    {
        qputenv("VEXA_PROFILE_DIR", QFile::encodeName(profile.path()));
        one = writeImage(files.filePath("one.tif"), 100);
        two = writeImage(files.filePath("two.tif"), 200);
        photograph = writeImage(files.filePath("photo.tif"), 0);
        open();
    }
    void open()
    {
        dialog = std::make_unique<ImportDialog>();
        dialog->show();
        table = dialog->findChild<ImportTable *>("importTable");
    }
    void press(const char *button) const
    {
        GuiDriver user(dialog.get());
        QVERIFY2(user.press(button), qPrintable(user.why()));
    }
    QLineEdit *field(const char *name) const { return dialog->findChild<QLineEdit *>(name); }
    void type(const char *name, const QString &text) const
    {
        GuiDriver user(dialog.get());
        QVERIFY2(user.type(name, text), qPrintable(user.why()));
    }
    /// Adds files as the user does.
    bool add(const QStringList &paths) const
    {
        const DialogAnswerer user({DialogAnswer::choose("\"" + paths.join("\" \"") + "\"")});
        press("addImages");
        return user.shown(0).closed;
    }
    /// What is needed.
    void fillIn() const
    {
        type("initials", "ZB");
        type("fieldOfView", "12.5");
        type("binning", "1");
    }
    void fillInConstants() const
    {
        for (const char *name : {"exposure", "fNumber", "pixelPitch", "electronsPerCount"})
            type(name, "2");
        for (const char *name : {"quantumEfficiency", "transmission"})
            type(name, "0.5");
    }
    void click(int row, int column) const
    {
        QTest::mouseClick(table->viewport(), Qt::LeftButton, Qt::NoModifier,
                          table->visualRect(table->model()->index(row, column)).center());
    }
    QString cell(int row, int column) const { return table->item(row, column)->text(); }
    /// What the empty fields cost.
    QString cost() const { return dialog->findChild<QLabel *>("importCost")->text(); }
    /// Chooses files for the selected rows as the user does; false when the file dialog did not close.
    bool choose(const char *button, const QStringList &paths, const QString &answer = QString()) const
    {
        QList<DialogAnswer> answers = {DialogAnswer::choose("\"" + paths.join("\" \"") + "\"")};
        if (!answer.isEmpty())
            answers += DialogAnswer::press(answer);
        const DialogAnswerer user(answers);
        press(button);
        return user.shown(0).closed && user.count() == answers.size();
    }
    std::unique_ptr<CVXSSequenceDataset> imported() const
    {
        const DialogAnswerer user; // a refusal would wait for an answer
        press("import");
        return dialog->takeSequence();
    }
    void select(int row) const { QVERIFY(GuiDriver(dialog.get()).pickRow(table, row)); }

    QTemporaryDir profile;
    QTemporaryDir files;
    QString one, two, photograph;
    std::unique_ptr<ImportDialog> dialog;
    ImportTable *table = nullptr;
};

} // namespace

class tst_ImportDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void importsWhatTheTableSays();
    void theMenuShowsTheNewSequence();
    void theSequenceIsNotSavedUntilTheUserSaysWhere();
    void cancelImportsNothing();
    void rowsAreAddedOnceAndRemoved();
    void buttonsForARowNeedOne();
    void badEntriesAreToldAndNothingIsMade_data();
    void badEntriesAreToldAndNothingIsMade();
    void aBadFileLeavesNoDatasetBehind();
    void settingsAreRememberedForTheNextTime();
    void numbersHaveAPoint();
    void nothingIsKnownBeforeItIsEntered();
    void withEveryConstantNothingIsSaid();
    void numbersThatVersion1BroughtAlongAreNotRemembered();
    void whatIsEmptyTellsWhatItCosts();
    void aCommaBecomesAPoint();
    void oneDarkImageForAllOrOneForEach();
    void filesThatAreNotAsManyAsTheRows();
    void offsetsOfAllAndOfOne();
    void flatFieldAndExcitationGoAlong();
    void anOffsetBesideADarkImageIsRefused();
    void theTableTellsWhatIsLeftOut();
    void imagesCanBeDroppedOnTheDialog();
    void anotherFormatIsCalledByItsName();
    void labelsBelongToTheirFields();
    void namesAreUnique();
    void namesOfEarlierSequencesAreLeftAlone();
};

void tst_ImportDialog::importsWhatTheTableSays()
{
    DialogFixture f;
    QVERIFY(f.add({f.one, f.two}));
    QCOMPARE(f.table->rowCount(), 2);
    f.select(1);
    {
        const DialogAnswerer user({DialogAnswer::choose(f.photograph)});
        f.press("choosePhotograph");
        QVERIFY(user.shown(0).closed);
    }
    f.table->item(1, ImportTable::EXPOSURE)->setText("0.25");
    f.fillIn();
    f.type("binning", "4");
    f.fillInConstants();
    f.type("exposure", "60");
    f.type("imagingAngle", "Left");
    QTest::keyClick(f.dialog.get(), Qt::Key_Return);
    QCOMPARE(f.dialog->result(), int(QDialog::Accepted));
    const auto sequence = f.dialog->takeSequence();
    QVERIFY(sequence);
    QCOMPARE(sequence->getDatasets().size(), 2);
    const CVXSDataset *first = (*sequence)[0];
    const CVXSDataset *second = (*sequence)[1];
    QCOMPARE(first->getCoreImage(EIMAGE_LUMINESCENT)->pixelAt(0, 0), 100.0);
    QCOMPARE(second->getCoreImage(EIMAGE_LUMINESCENT)->pixelAt(0, 0), 200.0);
    QVERIFY(!first->getImageList()->isPresent(EIMAGE_PHOTOGRAPH));
    QVERIFY(second->getImageList()->isPresent(EIMAGE_PHOTOGRAPH));
    QCOMPARE(first->getFOVForImage(EIMAGE_LUMINESCENT), 12.5);
    QVERIFY(first->isLuminescentDataset());
    // Radiance of a count goes with 1 / exposure.
    CILImage one;
    CILImage two;
    QCOMPARE(first->getCalibratedLuminImage(EUNIT_RADIANCE, &one, "test"), ESTATUS_SUCCESS);
    QCOMPARE(second->getCalibratedLuminImage(EUNIT_RADIANCE, &two, "test"), ESTATUS_SUCCESS);
    const double ratio = (two.pixelAt(0, 0) / 200.0) / (one.pixelAt(0, 0) / 100.0);
    QVERIFY2(qAbs(ratio - 240.0) < 1e-3, qPrintable(QString::number(ratio)));
}

void tst_ImportDialog::theMenuShowsTheNewSequence()
{
    QTemporaryDir files;
    const QString file = writeImage(files.filePath("one.tif"), 100);
    WorkspaceFixture fixture;
    const DialogAnswerer user({DialogAnswer::call([file](QDialog *dialog) {
        dialog->findChild<ImportTable *>()->addImages({file});
        GuiDriver hand(dialog);
        QVERIFY(hand.type("initials", "ZB") && hand.type("fieldOfView", "12.5") &&
                hand.type("binning", "1") && hand.press("import"));
    })});
    fixture.window->findChild<QAction *>("actionImportImages")->trigger();
    QCOMPARE(user.shown(0).className, QString("ImportDialog"));
    QVERIFY(user.shown(0).closed);
    QCOMPARE(fixture.window->parts().sequences->sequences().size(), 1);
    CVXSSequenceDataset *sequence = fixture.window->parts().sequences->sequences().first();
    QVERIFY(CVXSSequenceWindow::getSequenceWindow(sequence)->isVisible());
    QVERIFY(fixture.window->windowTitle().startsWith(sequence->getSequenceID()));
    QVERIFY(sequence->getSequenceID().startsWith("ZB") && sequence->getSequenceID().endsWith("_SEQ"));
    QVERIFY(sequence->getSequenceInfoPath().isEmpty());
    QCOMPARE((*sequence)[0]->getDatasetType(), int(EDATASET_IN_MEMORY));
    QCOMPARE(sequence->getClickNumbers().first() + "_SEQ", sequence->getSequenceID());
}

void tst_ImportDialog::theSequenceIsNotSavedUntilTheUserSaysWhere()
{
    QTemporaryDir place;
    QTemporaryDir files;
    WorkspaceFixture fixture;
    const ImportRequest request = requestOf(writeImage(files.filePath("one.tif"), 1));
    ESTATUS status;
    QString error;
    CVXSSequenceDataset *sequence = importSequence(request, NOW, &status, &error).release();
    QVERIFY2(sequence, qPrintable(error));
    fixture.window->parts().sequences->add(sequence);
    const DialogAnswerer user({DialogAnswer::choose(place.path())});
    fixture.window->findChild<QAction *>("actionSaveSequence")->trigger();
    QVERIFY(user.shown(0).closed);
    QCOMPARE(sequence->getSequenceInfoPath(), place.filePath("ZB20261121153000_SEQ") + "/");
    QVERIFY(QFile::exists(place.filePath("ZB20261121153000_SEQ/ZB20261121153000/luminescent.tif")));
    QVERIFY(!sequence->isModified());
    QVERIFY(fixture.window->parts().sequences->close(sequence)); // without a question
}

void tst_ImportDialog::cancelImportsNothing()
{
    DialogFixture f;
    QVERIFY(f.add({f.one}));
    f.fillIn();
    QTest::keyClick(f.dialog.get(), Qt::Key_Escape);
    QCOMPARE(f.dialog->result(), int(QDialog::Rejected));
    QVERIFY(!f.dialog->takeSequence());
    QVERIFY(CVXSSequenceDataset::openSequences().isEmpty());
}

void tst_ImportDialog::rowsAreAddedOnceAndRemoved()
{
    DialogFixture f;
    QVERIFY(f.add({f.one, f.two}));
    QVERIFY(f.add({f.two}));
    QCOMPARE(f.table->rowCount(), 2);
    f.select(0);
    f.press("removeImages");
    QCOMPARE(f.table->rowCount(), 1);
    QCOMPARE(f.table->item(0, ImportTable::LUMINESCENT)->text(), QString("two.tif"));
    QCOMPARE(f.table->item(0, ImportTable::LUMINESCENT)->toolTip(), f.two);
    f.table->setFile(0, ImportTable::PHOTOGRAPH, f.photograph);
    f.click(0, ImportTable::PHOTOGRAPH);
    f.press("clearFile");
    QVERIFY(f.table->item(0, ImportTable::PHOTOGRAPH)->text().isEmpty());
}

void tst_ImportDialog::buttonsForARowNeedOne()
{
    DialogFixture f;
    const auto areEnabled = [&f] {
        QList<bool> all;
        for (const char *name :
             {"choosePhotograph", "chooseDark", "chooseFlatField", "chooseExcitation", "removeImages"})
            all += f.dialog->findChild<QPushButton *>(name)->isEnabled();
        return all;
    };
    const auto *clear = f.dialog->findChild<QPushButton *>("clearFile");
    QCOMPARE(areEnabled(), (QList<bool>{false, false, false, false, false}));
    QVERIFY(!clear->isEnabled());
    QVERIFY(f.add({f.one}));
    QCOMPARE(areEnabled(), (QList<bool>{true, true, true, true, true}));
    // A column from which no file can be taken away.
    f.click(0, ImportTable::LUMINESCENT);
    QVERIFY(!clear->isEnabled());
    f.click(0, ImportTable::EXPOSURE);
    QVERIFY(!clear->isEnabled());
    f.click(0, ImportTable::DARK);
    QVERIFY(clear->isEnabled());
    f.press("removeImages");
    QCOMPARE(areEnabled(), (QList<bool>{false, false, false, false, false}));
    QVERIFY(!clear->isEnabled());
}

void tst_ImportDialog::badEntriesAreToldAndNothingIsMade_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("words");
    row("no field of view", "fieldOfView", "", "Field of view: a number is needed");
    row("a field of view with a comma for thousands", "fieldOfView", "1,234.5", "\"1.234.5\" is no number");
    row("no binning", "binning", "", "Binning: a number is needed");
    row("an exposure time that says it is none", "exposure", "nan", "\"nan\" is no number");
    row("an offset below 0", "offset", "-5", "Camera Offset: ");
    row("an f-number of 0", "fNumber", "0", "f Number: ");
    row("a field of view of 0", "fieldOfView", "0", "Field of View: ");
    row("a word for a number", "fNumber", "wide", "\"wide\" is no number");
    row("binning of a half", "binning", "0.5", "Binning Factor: ");
    row("a quantum efficiency in percent", "quantumEfficiency", "80", "at most 1");
    row("infinite exposure", "exposure", "inf", "Exposure Time: ");
    row("no initials", "initials", "", "User initials: ");
    row("initials with a digit", "initials", "Z8", "User initials: ");
    row("initials that leave the folder", "initials", "../Z", "User initials: ");
    row("an exposure of its own that is no number", "", "long", "\"long\" is no number");
    row("an exposure of its own of 0", "", "0", "\"0\" is no number above 0");
}

void tst_ImportDialog::badEntriesAreToldAndNothingIsMade()
{
    QFETCH(QString, field);
    QFETCH(QString, text);
    QFETCH(QString, words);
    DialogFixture f;
    QVERIFY(f.add({f.one, f.two}));
    f.fillIn();
    if (field.isEmpty())
        f.table->item(1, ImportTable::EXPOSURE)->setText(text);
    else
        f.type(qPrintable(field), text);
    {
        const DialogAnswerer user({DialogAnswer::press("OK")});
        f.press("import");
        QVERIFY(user.shown(0).closed);
        QVERIFY2(user.shown(0).text.contains(words), qPrintable(user.shown(0).text));
    }
    QVERIFY(f.dialog->isVisible());
    QVERIFY(!f.dialog->takeSequence());
    QVERIFY(CVXSSequenceDataset::openSequences().isEmpty());
    // Put right, it imports.
    if (field.isEmpty())
        f.table->item(1, ImportTable::EXPOSURE)->setText(QString());
    else
        f.type(qPrintable(field), field == "initials" ? "ZB" : "1");
    f.press("import");
    QVERIFY(!f.dialog->isVisible());
    QVERIFY(f.dialog->takeSequence());
}

void tst_ImportDialog::aBadFileLeavesNoDatasetBehind()
{
    DialogFixture f;
    const QString bad = f.files.filePath("bad.tif");
    QVERIFY(writeFile(bad, "no pixels"));
    QVERIFY(f.add({f.one, bad}));
    f.fillIn();
    const DialogAnswerer user({DialogAnswer::press("OK")});
    f.press("import");
    QVERIFY(user.shown(0).closed);
    QVERIFY2(user.shown(0).text.contains(bad + ": "), qPrintable(user.shown(0).text));
    QVERIFY(f.dialog->isVisible());
    QVERIFY(CVXSSequenceDataset::openSequences().isEmpty());
    f.dialog->reject();

    // No file at all is told as well.
    f.open();
    f.fillIn();
    const DialogAnswerer other({DialogAnswer::press("OK")});
    f.press("import");
    QVERIFY2(other.shown(0).text.contains("Luminescent images: none was added"),
             qPrintable(other.shown(0).text));
}

void tst_ImportDialog::settingsAreRememberedForTheNextTime()
{
    DialogFixture f;
    QVERIFY(f.add({f.one}));
    f.fillIn();
    f.type("pixelPitch", "6.5");
    f.dialog->findChild<QComboBox *>("kind")->setCurrentIndex(1);
    f.press("import");
    QVERIFY(f.dialog->takeSequence());
    f.open();
    QCOMPARE(f.field("initials")->text(), QString("ZB"));
    QCOMPARE(f.field("fieldOfView")->text(), QString("12.5"));
    QCOMPARE(f.field("pixelPitch")->text(), QString("6.5"));
    QCOMPARE(f.dialog->findChild<QComboBox *>("kind")->currentIndex(), 1);
    QCOMPARE(f.table->rowCount(), 0);
}

void tst_ImportDialog::numbersHaveAPoint()
{
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::German));
    DialogFixture f;
    QVERIFY(f.add({f.one}));
    f.fillIn();
    f.press("import");
    QLocale::setDefault(before);
    const auto sequence = f.dialog->takeSequence();
    QVERIFY(sequence);
    QCOMPARE((*sequence)[0]->getFOVForImage(EIMAGE_LUMINESCENT), 12.5);
    QVERIFY2(QRegExp("ZB\\d{14}").exactMatch((*sequence)[0]->getClickNumber()),
             qPrintable((*sequence)[0]->getClickNumber()));
}

void tst_ImportDialog::nothingIsKnownBeforeItIsEntered()
{
    DialogFixture f;
    for (const QLineEdit *edit : f.dialog->findChildren<QLineEdit *>())
        QVERIFY2(edit->text().isEmpty(), qPrintable(edit->objectName()));
    QVERIFY(f.add({f.one}));
    f.fillIn();
    const LogCatcher log;
    const auto sequence = f.imported();
    QVERIFY(sequence);
    const CVXSDataset *dataset = (*sequence)[0];
    QVERIFY(dataset->obstacleToUnit(EUNIT_COUNTS).isEmpty());
    QVERIFY(!dataset->obstacleToUnit(EUNIT_RADIANCE).isEmpty());
    const QStringList warnings = log.ofLevel(ELOG_WARNING);
    QCOMPARE(warnings.size(), 1);
    for (const char *word :
         {"in counts only", "\"Exposure Time\"", "\"Electrons Per Count\"", "ClickInfo.txt"})
        QVERIFY2(warnings.first().contains(word), qPrintable(warnings.first()));
}

void tst_ImportDialog::withEveryConstantNothingIsSaid()
{
    DialogFixture f;
    QVERIFY(f.add({f.one}));
    f.fillIn();
    f.fillInConstants();
    const LogCatcher log;
    const auto sequence = f.imported();
    QVERIFY(sequence);
    QVERIFY((*sequence)[0]->obstacleToUnit(EUNIT_RADIANCE).isEmpty());
    QVERIFY(log.ofLevel(ELOG_WARNING).isEmpty());
}

void tst_ImportDialog::numbersThatVersion1BroughtAlongAreNotRemembered()
{
    DialogFixture f;
    CVXPreference::settings()->setValue("ImportImages/quantumEfficiency", "1");
    f.open();
    QVERIFY(f.field("quantumEfficiency")->text().isEmpty());
}

void tst_ImportDialog::whatIsEmptyTellsWhatItCosts()
{
    DialogFixture f;
    const QString offset = "the camera's offset stays in the counts";
    const QString radiance = "Counts only, no radiance: ";
    QVERIFY2(f.cost().contains(offset) && f.cost().contains(radiance), qPrintable(f.cost()));
    QVERIFY2(
        f.cost().contains("Exposure time, f-number, Pixel pitch, Electrons per count, Quantum efficiency, "
                          "Transmission not entered"),
        qPrintable(f.cost()));
    f.type("offset", "500");
    QVERIFY2(!f.cost().contains(offset), qPrintable(f.cost()));
    f.fillInConstants();
    QCOMPARE(f.cost(), QString());
    // Fluorescence has one more.
    f.dialog->findChild<QComboBox *>("kind")->setCurrentIndex(1);
    QVERIFY2(f.cost().contains("No radiant efficiency"), qPrintable(f.cost()));
    f.type("excitationIrradiance", "20");
    QCOMPARE(f.cost(), QString());

    // What every row has of its own need not be said for all.
    f.type("offset", "");
    f.type("exposure", "");
    QVERIFY(f.add({f.one, f.two}));
    QVERIFY(f.cost().contains(offset) && f.cost().contains("Exposure time not entered"));
    f.table->item(0, ImportTable::OFFSET)->setText("500");
    f.table->setFile(1, ImportTable::DARK, f.photograph);
    QVERIFY2(!f.cost().contains(offset), qPrintable(f.cost()));
    f.table->item(0, ImportTable::EXPOSURE)->setText("1");
    f.table->item(1, ImportTable::EXPOSURE)->setText("2");
    QCOMPARE(f.cost(), QString());
    f.click(1, ImportTable::DARK);
    f.press("clearFile");
    QVERIFY2(f.cost().contains(offset), qPrintable(f.cost()));
    f.press("removeImages");
    QCOMPARE(f.cost(), QString());
}

void tst_ImportDialog::aCommaBecomesAPoint()
{
    DialogFixture f;
    QVERIFY(f.add({f.one}));
    f.fillIn();
    f.type("fieldOfView", "12,5");
    QCOMPARE(f.field("fieldOfView")->text(), QString("12.5"));
    QApplication::clipboard()->setText("1,25");
    f.type("fNumber", "");
    QTest::keyClick(f.field("fNumber"), Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(f.field("fNumber")->text(), QString("1.25"));
    f.type("imagingAngle", "left, above"); // a text stays as it is
    QCOMPARE(f.field("imagingAngle")->text(), QString("left, above"));
    f.table->item(0, ImportTable::EXPOSURE)->setText("0,25");
    QCOMPARE(f.cell(0, ImportTable::EXPOSURE), QString("0.25"));
    const auto sequence = f.imported();
    QVERIFY(sequence);
    const CPLClickInfo &info = *(*sequence)[0]->getClickInfo();
    QCOMPARE((*sequence)[0]->getFOVForImage(EIMAGE_LUMINESCENT), 12.5);
    using namespace clickinfo;
    QCOMPARE(numberOf(info, SECTION_LUMINESCENT, KEY_FNUMBER), 1.25);
    QCOMPARE(numberOf(info, SECTION_LUMINESCENT, KEY_EXPOSURE), 0.25);
}

void tst_ImportDialog::oneDarkImageForAllOrOneForEach()
{
    DialogFixture f;
    const QString low = writeImage(f.files.filePath("dark1.tif"), 10);
    const QString high = writeImage(f.files.filePath("dark2.tif"), 20);
    const auto firstCounts = [](const std::unique_ptr<CVXSSequenceDataset> &sequence, unsigned index) {
        CILImage counts;
        (*sequence)[index]->getCalibratedLuminImage(EUNIT_COUNTS, &counts, "test");
        return counts.pixelAt(0, 0);
    };
    QVERIFY(f.add({f.one, f.two})); // both are selected
    f.fillIn();
    QVERIFY(f.choose("chooseDark", {low}));
    QCOMPARE(f.cell(0, ImportTable::DARK), QString("dark1.tif"));
    QCOMPARE(f.cell(1, ImportTable::DARK), QString("dark1.tif"));
    QVERIFY(f.choose("chooseDark", {high, low}));
    QCOMPARE(f.cell(0, ImportTable::DARK), QString("dark1.tif"));
    QCOMPARE(f.cell(1, ImportTable::DARK), QString("dark2.tif"));
    f.type("offset", "7"); // of those without a dark image: none
    const auto sequence = f.imported();
    QVERIFY(sequence);
    QCOMPARE(firstCounts(sequence, 0), 100.0 - 10.0);
    QCOMPARE(firstCounts(sequence, 1), 200.0 - 20.0);
}

void tst_ImportDialog::filesThatAreNotAsManyAsTheRows()
{
    DialogFixture f;
    QVERIFY(f.add({f.one}));
    QVERIFY(f.choose("chooseDark", {f.two, f.photograph}, "OK"));
    QVERIFY(f.cell(0, ImportTable::DARK).isEmpty());
}

void tst_ImportDialog::offsetsOfAllAndOfOne()
{
    DialogFixture f;
    QVERIFY(f.add({f.one, f.two}));
    f.fillIn();
    f.type("offset", "7");
    f.table->item(1, ImportTable::OFFSET)->setText("9");
    const auto sequence = f.imported();
    QVERIFY(sequence);
    CILImage counts;
    QCOMPARE((*sequence)[0]->getCalibratedLuminImage(EUNIT_COUNTS, &counts, "test"), ESTATUS_SUCCESS);
    QCOMPARE(counts.pixelAt(0, 0), 93.0);
    QCOMPARE((*sequence)[1]->getCalibratedLuminImage(EUNIT_COUNTS, &counts, "test"), ESTATUS_SUCCESS);
    QCOMPARE(counts.pixelAt(0, 0), 191.0);
}

void tst_ImportDialog::flatFieldAndExcitationGoAlong()
{
    DialogFixture f;
    QVERIFY(f.add({f.one}));
    f.fillIn();
    QVERIFY(f.choose("chooseFlatField", {f.two}));
    QVERIFY(f.choose("chooseExcitation", {f.photograph}));
    QVERIFY(f.choose("choosePhotograph", {f.photograph}));
    f.press("clearFile"); // what was chosen last
    QVERIFY(f.cell(0, ImportTable::PHOTOGRAPH).isEmpty());
    const auto sequence = f.imported();
    QVERIFY(sequence);
    const CVXSImageList *images = (*sequence)[0]->getImageList();
    QVERIFY(images->isPresent(EIMAGE_FLATFIELD) && images->isPresent(EIMAGE_EXCITATION));
    QVERIFY(!images->isPresent(EIMAGE_BACKGROUND) && !images->isPresent(EIMAGE_PHOTOGRAPH));
}

void tst_ImportDialog::anOffsetBesideADarkImageIsRefused()
{
    DialogFixture f;
    QVERIFY(f.add({f.one}));
    f.fillIn();
    f.table->setFile(0, ImportTable::DARK, f.two);
    f.table->item(0, ImportTable::OFFSET)->setText("5");
    const DialogAnswerer user({DialogAnswer::press("OK")});
    f.press("import");
    QVERIFY2(user.shown(0).text.contains("two.tif"), qPrintable(user.shown(0).text));
    QVERIFY(!f.dialog->takeSequence());
}

void tst_ImportDialog::theTableTellsWhatIsLeftOut()
{
    DialogFixture f;
    QVERIFY(writePages(f.files.filePath("stack.tif"), 3));
    QVERIFY(f.add({f.one, f.files.filePath("stack.tif")}));
    QCOMPARE(f.cell(0, ImportTable::LUMINESCENT), QString("one.tif"));
    QCOMPARE(f.cell(1, ImportTable::LUMINESCENT), QString("stack.tif\n3 pages, only the first is imported"));
    // Both lines have room.
    QVERIFY(f.table->rowHeight(1) >= 2 * f.table->fontMetrics().lineSpacing());
    QVERIFY(f.table->rowHeight(1) > f.table->rowHeight(0));
}

void tst_ImportDialog::imagesCanBeDroppedOnTheDialog()
{
    DialogFixture f;
    const auto drop = [&f](const QString &path) {
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(path)});
        QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        enter.ignore();
        QApplication::sendEvent(f.dialog.get(), &enter);
        if (!enter.isAccepted())
            return false;
        QDropEvent dropped(QPointF(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(f.dialog.get(), &dropped);
        return true;
    };
    QVERIFY(f.dialog->acceptDrops());
    QVERIFY(drop(f.one));
    QVERIFY(drop(f.two));
    QCOMPARE(f.table->rowCount(), 2);
    QCOMPARE(f.cell(1, ImportTable::LUMINESCENT), QString("two.tif"));
    QVERIFY(!drop(f.files.path()));
}

void tst_ImportDialog::anotherFormatIsCalledByItsName()
{
    DialogFixture f;
    const QString picture = f.files.filePath("picture.png");
    QVERIFY(QImage(8, 8, QImage::Format_Grayscale8).save(picture));
    QVERIFY(f.add({picture}));
    f.fillIn();
    const DialogAnswerer user({DialogAnswer::press("OK")});
    f.press("import");
    QVERIFY2(user.shown(0).text.contains(
                 picture + ": not a TIFF file but a PNG picture; only grey TIFF images can be read"),
             qPrintable(user.shown(0).text));
}

void tst_ImportDialog::labelsBelongToTheirFields()
{
    DialogFixture f;
    QStringList keys;
    for (const QLabel *label : f.dialog->findChildren<QLabel *>()) {
        if (!label->buddy())
            continue;
        const int mark = label->text().indexOf('&');
        QVERIFY2(mark >= 0, qPrintable(label->text()));
        keys += label->text().mid(mark + 1, 1).toUpper();
    }
    for (const QPushButton *button : f.dialog->findChildren<QPushButton *>()) {
        const int mark = button->text().indexOf('&');
        if (mark >= 0)
            keys += button->text().mid(mark + 1, 1).toUpper();
    }
    QVERIFY(keys.size() >= 12);
    QStringList unique = keys;
    unique.removeDuplicates();
    QVERIFY2(unique.size() == keys.size(), qPrintable("two fields share a key: " + keys.join(' ')));
}

void tst_ImportDialog::namesAreUnique()
{
    QTemporaryDir files;
    WorkspaceFixture fixture; // for its profile
    const QString file = writeImage(files.filePath("one.tif"), 1);
    ImportRequest request;
    request.images = {{{file}}, {{file}}};
    request.initials = "ZB";
    request.settings.fieldOfView = 10.0;
    // One that is open, in the middle of what would be taken.
    CVXSDataset taken("ZB20261121153001");
    QVERIFY(taken.registerDataset());
    ESTATUS status;
    QString error;
    const auto first = importSequence(request, NOW, &status, &error);
    QVERIFY2(first, qPrintable(error));
    QCOMPARE(first->getSequenceID(), QString("ZB20261121153000_SEQ"));
    QCOMPARE(first->getClickNumbers(), (QStringList{"ZB20261121153000", "ZB20261121153002"}));
    const auto second = importSequence(request, NOW, &status, &error);
    QVERIFY2(second, qPrintable(error));
    QCOMPARE(second->getSequenceID(), QString("ZB20261121153003_SEQ"));
    QCOMPARE(second->getClickNumbers(), (QStringList{"ZB20261121153003", "ZB20261121153004"}));
}

void tst_ImportDialog::namesOfEarlierSequencesAreLeftAlone()
{
    QTemporaryDir files;
    WorkspaceFixture fixture;
    const QString sequences = CVXPreference::getProgramDataPath() + "/sequences/";
    QVERIFY(QDir().mkpath(sequences + "ZB20261121153000_SEQ"));
    // The later ones of a batch reach into the time of the next.
    QVERIFY(QDir().mkpath(sequences + "ZB20261121152959_SEQ/ZB20261121153001"));
    const ImportRequest request = requestOf(writeImage(files.filePath("one.tif"), 1));
    ESTATUS status;
    QString error;
    const auto sequence = importSequence(request, NOW, &status, &error);
    QVERIFY2(sequence, qPrintable(error));
    QCOMPARE(sequence->getSequenceID(), QString("ZB20261121153002_SEQ"));
    QCOMPARE(sequence->getClickNumbers(), QStringList{"ZB20261121153002"});
}

QTEST_MAIN(tst_ImportDialog)
#include "tst_ImportDialog.moc"
