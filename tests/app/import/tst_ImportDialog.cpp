// SPDX-License-Identifier: MIT
#include "app/datasets/SequenceManager.h"
#include "app/import/ImageImporter.h"
#include "app/import/ImportDialog.h"
#include "app/import/ImportTable.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/view/windows/CVXSSequenceWindow.h"
#include "host/vxapi/view/windows/CVXSWorkspace.h"
#include "host/vxutils/CVXPreference.h"
#include "tests/support/DialogAnswerer.h"
#include "tests/support/Files.h"
#include "tests/support/GuiDriver.h"
#include "tests/support/Rows.h"
#include "tests/support/WorkspaceFixture.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

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
    request.images = {{image, QString(), 0.0}};
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
    void fillIn() const
    {
        type("initials", "ZB");
        type("fieldOfView", "12.5");
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
    f.type("exposure", "60");
    f.type("quantumEfficiency", "0.8");
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
        QVERIFY(hand.type("initials", "ZB") && hand.type("fieldOfView", "12.5") && hand.press("import"));
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
    f.table->setPhotograph(0, f.photograph);
    f.select(0);
    f.press("clearPhotograph");
    QVERIFY(f.table->item(0, ImportTable::PHOTOGRAPH)->text().isEmpty());
}

void tst_ImportDialog::buttonsForARowNeedOne()
{
    DialogFixture f;
    const auto areEnabled = [&f] {
        QList<bool> all;
        for (const char *name : {"choosePhotograph", "clearPhotograph", "removeImages"})
            all += f.dialog->findChild<QPushButton *>(name)->isEnabled();
        return all;
    };
    QCOMPARE(areEnabled(), (QList<bool>{false, false, false}));
    QVERIFY(f.add({f.one}));
    f.select(0);
    QCOMPARE(areEnabled(), (QList<bool>{true, true, true}));
    f.press("removeImages");
    QCOMPARE(areEnabled(), (QList<bool>{false, false, false}));
}

void tst_ImportDialog::badEntriesAreToldAndNothingIsMade_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("words");
    row("no field of view", "fieldOfView", "", "Field of view: a number is needed");
    row("a field of view with a comma", "fieldOfView", "12,5", "\"12,5\" is no number");
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
    request.images = {{file, QString(), 0.0}, {file, QString(), 0.0}};
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
