// SPDX-License-Identifier: MIT
#include "host/vxutils/CVXUtilityFns.h"
#include "tests/support/DialogAnswerer.h"
#include "tests/support/WindowProbe.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

namespace {

/// What lies on disk: "no file", "damaged", "no section", or the pairs of the section "luminescent image".
const QByteArray NO_FILE("no file");
const QByteArray DAMAGED("damaged");
const QByteArray NO_SECTION("no section");
const QByteArray NO_KEY("Exposure Time = 60");

QByteArray angle(const char *text)
{
    return QByteArray("Exposure Time = 60\nImaging Angle = ") + text;
}

} // namespace

/// Whether two clicks of different imaging angles may be combined: files on disk, and the user who answers.
class tst_ImagingAngles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nothingIsAsked_data();
    void nothingIsAsked();
    void theUserIsAsked_data();
    void theUserIsAsked();
    void answers_data();
    void answers();
    void everyAnswerButNoGoesOn();
    void theQuestion();
    void theSameFileTwice();
    void filesStayAsTheyAre();

private:
    QString write(const QString &name, const QByteArray &record);

    QTemporaryDir m_folder;
    WindowProbe m_window;
};

QString tst_ImagingAngles::write(const QString &name, const QByteArray &record)
{
    const QString path = m_folder.filePath(name);
    QFile::remove(path);
    if (record == NO_FILE)
        return path;
    QByteArray text = "[ClickNumber]: X\n\n[luminescent image]: luminescent.tif\n" + record + "\n";
    if (record == DAMAGED)
        text = "[luminescent image]\nImaging Angle = 0\nthis line is no pair\n";
    else if (record == NO_SECTION)
        text = "[ClickNumber]: X\nImaging Angle = 0\n";
    else if (record.startsWith('['))
        text = record;
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("the record could not be written");
    return path;
}

void tst_ImagingAngles::nothingIsAsked_data()
{
    QTest::addColumn<QByteArray>("a");
    QTest::addColumn<QByteArray>("b");
    QTest::addColumn<int>("status");
    QTest::newRow("equal angles") << angle("0") << angle("0") << 0;
    QTest::newRow("equal but for the letters' case") << angle("Left") << angle("left") << 0;
    QTest::newRow("the other way round") << angle("RIGHT") << angle("Right") << 0;
    QTest::newRow("letters of other scripts in another case")
        << angle("Außen Ä Ж") << angle("aUßEN ä ж") << 0;
    QTest::newRow("neither has the key") << NO_KEY << NO_KEY << 0;
    QTest::newRow("empty sections") << QByteArray() << QByteArray() << 0;
    QTest::newRow("both angles are empty") << angle("") << angle("") << 0;
    QTest::newRow("A's is empty, B has none") << angle("") << NO_KEY << 0;
    QTest::newRow("B's is empty, A has none") << NO_KEY << angle("") << 0;
    QTest::newRow("the last of two pairs counts") << angle("0\nImaging Angle = 90") << angle("90") << 0;
    QTest::newRow("a key in other letters' case is no angle")
        << QByteArray("imaging angle = 0") << QByteArray("imaging angle = 90") << 0;
    QTest::newRow("A without the section") << NO_SECTION << angle("0") << 46;
    QTest::newRow("B without the section") << angle("0") << NO_SECTION << 46;
    QTest::newRow("both without the section") << NO_SECTION << NO_SECTION << 46;
    QTest::newRow("A without a file") << NO_FILE << angle("0") << 46;
    QTest::newRow("B without a file") << angle("0") << NO_FILE << 46;
    QTest::newRow("both without a file") << NO_FILE << NO_FILE << 46;
    QTest::newRow("A damaged") << DAMAGED << angle("0") << 46;
    QTest::newRow("B damaged") << angle("0") << DAMAGED << 46;
    QTest::newRow("a section key in other letters' case is another section")
        << QByteArray("[Luminescent Image]\nImaging Angle = 0\n") << angle("0") << 46;
    QTest::newRow("a record without any section") << QByteArray("[x]\n") << angle("0") << 46;
}

void tst_ImagingAngles::nothingIsAsked()
{
    QFETCH(QByteArray, a);
    QFETCH(QByteArray, b);
    QFETCH(int, status);
    DialogAnswerer answerer({QMessageBox::Yes});
    QCOMPARE(int(m_window.checkImagingAngles(write("a.txt", a), write("b.txt", b))), status);
    QCOMPARE(answerer.count(), 0);
}

void tst_ImagingAngles::theUserIsAsked_data()
{
    QTest::addColumn<QByteArray>("a");
    QTest::addColumn<QByteArray>("b");
    QTest::newRow("different angles") << angle("0") << angle("90");
    QTest::newRow("different names") << angle("Left") << angle("Right");
    QTest::newRow("A alone has one") << angle("0") << NO_KEY;
    QTest::newRow("B alone has one") << NO_KEY << angle("0");
    QTest::newRow("A's is empty, B's is not") << angle("") << angle("0");
    QTest::newRow("a section without pairs on B's side") << angle("0") << QByteArray();
    QTest::newRow("equal numbers are compared as texts") << angle("0") << angle("0.0");
    QTest::newRow("the last of two pairs counts") << angle("90\nImaging Angle = 0") << angle("90");
    QTest::newRow("a blank that was meant counts") << angle("Left") << angle("Left\\s");
    QTest::newRow("a key in other letters' case is no angle")
        << angle("0") << QByteArray("imaging angle = 0");
}

void tst_ImagingAngles::theUserIsAsked()
{
    QFETCH(QByteArray, a);
    QFETCH(QByteArray, b);
    const QString pathA = write("a.txt", a);
    const QString pathB = write("b.txt", b);
    DialogAnswerer answerer({QMessageBox::Yes, QMessageBox::No});
    QCOMPARE(int(m_window.checkImagingAngles(pathA, pathB)), 0);
    QCOMPARE(answerer.count(), 1);
    QCOMPARE(int(m_window.checkImagingAngles(pathA, pathB)), 46);
    QCOMPARE(answerer.count(), 2);
}

void tst_ImagingAngles::answers_data()
{
    QTest::addColumn<int>("answer");
    QTest::addColumn<int>("status");
    QTest::newRow("Yes goes on") << int(QMessageBox::Yes) << 0;
    QTest::newRow("No stops") << int(QMessageBox::No) << 46;
    QTest::newRow("Escape is No") << int(DialogAnswer::ESCAPE_KEY) << 46;
    QTest::newRow("the first button is Yes") << int(DialogAnswer::FIRST_BUTTON) << 0;
}

void tst_ImagingAngles::answers()
{
    QFETCH(int, answer);
    QFETCH(int, status);
    DialogAnswerer answerer({answer});
    QCOMPARE(int(m_window.checkImagingAngles(write("a.txt", angle("0")), write("b.txt", angle("90")))),
             status);
    QCOMPARE(answerer.count(), 1);
}

// Closed by a program, the box has no answer.
void tst_ImagingAngles::everyAnswerButNoGoesOn()
{
    const DialogAnswerer user({DialogAnswer::call([](QDialog *dialog) { dialog->done(0); })});
    QCOMPARE(int(m_window.checkImagingAngles(write("a.txt", angle("0")), write("b.txt", angle("90")))), 0);
    QCOMPARE(user.count(), 1);
    QVERIFY(user.shown(0).closed);
}

void tst_ImagingAngles::theQuestion()
{
    DialogAnswerer answerer({QMessageBox::No});
    m_window.checkImagingAngles(write("a.txt", angle("0")), write("b.txt", angle("90")));
    QCOMPARE(answerer.count(), 1);
    const DialogAnswerer::Shown box = answerer.shown().first();
    QCOMPARE(box.title, CVXUtilityFns::getAppName());
    QCOMPARE(box.text, QString("The two datasets have different imaging angles. Do you want to continue?"));
    QCOMPARE(box.standardButtons, QList<int>({0x4000, 0x10000}));
    QCOMPARE(box.icon, QMessageBox::Question);
    QVERIFY(box.hasParent);
}

void tst_ImagingAngles::theSameFileTwice()
{
    const QString path = write("a.txt", angle("0"));
    DialogAnswerer answerer;
    QCOMPARE(int(m_window.checkImagingAngles(path, path)), 0);
    QCOMPARE(answerer.count(), 0);
}

void tst_ImagingAngles::filesStayAsTheyAre()
{
    const QString path = write("a.txt", angle("0"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray before = file.readAll();
    DialogAnswerer answerer({QMessageBox::Yes});
    m_window.checkImagingAngles(path, write("b.txt", angle("90")));
    QVERIFY(file.seek(0));
    QCOMPARE(file.readAll(), before);
    QCOMPARE(QDir(m_folder.path()).entryList(QDir::Files, QDir::Name), QStringList({"a.txt", "b.txt"}));
}

QTEST_MAIN(tst_ImagingAngles)
#include "tst_ImagingAngles.moc"
