// SPDX-License-Identifier: MIT
#include "tests/window/result/RecordText.h"
#include "tests/support/Files.h"

#include <QDate>
#include <QFile>
#include <QLocale>
#include <QRegularExpression>
#include <QTest>

namespace {

/// "Vexa Version = 1.1.0(Aug 12 2026)": the workspace's version and a date that is one.
bool isVersionOfThisBuild(const QString &line)
{
    static const QRegularExpression pattern(
        QStringLiteral("^Vexa Version = 1\\.1\\.0\\(([A-Z][a-z]{2}) +([0-9]{1,2}) ([0-9]{4})\\)$"));
    const QRegularExpressionMatch match = pattern.match(line);
    if (!match.hasMatch())
        return false;
    const QDate day = QLocale::c().toDate(match.captured(1) + QLatin1Char(' ') + match.captured(2) +
                                              QLatin1Char(' ') + match.captured(3),
                                          QStringLiteral("MMM d yyyy"));
    return day.isValid() && day <= QDate::currentDate().addDays(1);
}

} // namespace

QByteArray recordtext::clickInfoA()
{
    return R"([ClickNumber]: AB20260102030406
Sequence ID = AB20260102030405_SEQ
Group = 7
ClickNumber Index = 0
Vexa Version = 0.9.0

[User Input]: input of A
Experiment = mouse 12
Comment =

[Analysis User Input]
Comment = analysed twice

[luminescent image]: luminescent.tif
Acquisition Kind = luminescent
Field of View = 12.5
Exposure Time = 60
f Number = 1
Lens and Filter Transmission = 0.5
Excitation Irradiance = 20
Imaging Angle = 0
Acquisition Date = 2026-01-02T03:04:06
Saturated = 1
Binning Factor = 9
Igor Wave Note = A=1;Sequence ID=X;Binning Factor=9;ClickNumber Index=0;Z=26;

[spectral series]: what a result has no use for
Bands = 12

[photographic image]: photograph.tif
Field of View = 12.5
Acquisition Date = 2026-01-02T03:05:00
Igor Wave Note = P=1;Sequence ID=X;ClickNumber Index=0;Q=2;

[Camera System Info]: camera of A
Electrons Per Count = 2
Quantum Efficiency = 0.8
Pixel Pitch = 13.5
Magnification = 0.2

[User Label Name Set]: labels of A
Label 1 = Animal

[Graph Controls]
Color Table = Grays
Intensity Calibration = counts
Window = 3
)";
}

QByteArray recordtext::clickInfoB()
{
    return R"([ClickNumber]: AB20260102030507
Sequence ID = AB20260102030405_SEQ
ClickNumber Index = 1

[User Input]: input of B
Experiment = mouse 13

[luminescent image]: luminescent.tif
Acquisition Kind = luminescent
Field of View = 12.5
Imaging Angle = 0
Acquisition Date = 2026-01-02T03:05:07
Binning Factor = 4
Of B = yes
Igor Wave Note = B=1;

[photographic image]: photograph.tif
Acquisition Date = 2026-01-02T03:06:00
Field of View = 12.5
Of B = yes
Igor Wave Note = PB=1;ClickNumber Index=1;

[Camera System Info]: camera of B
Electrons Per Count = 4

[Graph Controls]: graph of B
Window = 4
)";
}

QByteArray recordtext::analyzedA()
{
    return R"([ClickNumber]: AB20260102030406
Sequence ID = AB20260102030405_SEQ
ClickNumber Index = 0

[User Input]: analysed input
Experiment = mouse 12, analysed

[Analysis User Input]: analysis
Reader = second

[photographic image]: old photograph.tif
Old = photograph

[User Label Name Set]: analysed labels
Label 1 = Animal, analysed

[luminescent image]: old luminescent.tif
Old = luminescent

[luminescent A image]: old A
Old = operand A

[luminescent B image]: old B
Old = operand B

[Graph Controls]: old graph
Old = graph

[ROIs]: regions of A
ROI 1 = what belongs to A alone
)";
}

QByteArray recordtext::analyzedB()
{
    return R"([ClickNumber]: AB20260102030507

[User Input]: analysed input of B
Experiment = mouse 13, analysed
)";
}

bool recordtext::removeSection(const QString &path, const QByteArray &key)
{
    const QByteArray text = readFile(path);
    const int begin = text.indexOf("[" + key + "]");
    if (begin < 0)
        return false;
    const int next = text.indexOf("\n[", begin);
    return writeFile(path, text.left(begin) + (next < 0 ? QByteArray() : text.mid(next + 1)));
}

QStringList recordtext::lines(const QString &path)
{
    QStringList all = QString::fromUtf8(readFile(path)).split(QLatin1Char('\n'));
    for (QString &line : all) {
        if (isVersionOfThisBuild(line))
            line = QStringLiteral("Vexa Version = (this build)");
    }
    return all;
}

QStringList recordtext::section(const QString &path, const QString &key)
{
    const QString heading = QLatin1Char('[') + key + QLatin1Char(']');
    QStringList found;
    const QStringList all = lines(path);
    for (const QString &line : all) {
        if (found.isEmpty() ? line.startsWith(heading) : !line.isEmpty())
            found << line;
        else if (!found.isEmpty())
            break;
    }
    return found;
}

QStringList recordtext::headings(const QString &path)
{
    QStringList found;
    const QStringList all = lines(path);
    for (const QString &line : all) {
        if (line.startsWith(QLatin1Char('[')))
            found << line.mid(1, line.indexOf(QLatin1Char(']')) - 1);
    }
    return found;
}

QString recordtext::value(const QString &path, const QString &sectionKey, const QString &key)
{
    QString found;
    const QStringList all = section(path, sectionKey);
    for (const QString &line : all) {
        if (line.startsWith(key + QLatin1String(" =")))
            found = line.mid(key.size() + 3);
    }
    return found;
}

void recordtext::compare(const QStringList &found, const QStringList &expected)
{
    for (int i = 0; i < qMax(found.size(), expected.size()); ++i) {
        const QString is = i < found.size() ? found.at(i) : QStringLiteral("(the end)");
        const QString should = i < expected.size() ? expected.at(i) : QStringLiteral("(the end)");
        QVERIFY2(
            is == should,
            qPrintable(QStringLiteral("line %1 is\n  %2\nand should be\n  %3").arg(i + 1).arg(is, should)));
    }
}

QMap<QString, QByteArray> recordtext::hashes(const QString &folder)
{
    QMap<QString, QByteArray> found = hashesBelow(folder);
    for (const QString &name : found.keys(QByteArray()))
        found.remove(name);
    return found;
}
