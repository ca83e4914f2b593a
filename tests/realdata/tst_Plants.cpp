// SPDX-License-Identifier: MIT
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

namespace {

const QString ROOT = QStringLiteral(VEXA_SOURCE_DIR);

QString imagesFolder()
{
    const QString shared = qEnvironmentVariable("VEXA_SHARED_DATA", ROOT + QStringLiteral("/../shared/data"));
    return QDir(shared + QStringLiteral("/plants")).absolutePath();
}

struct Outcome
{
    int code = -1;
    QString text;
};

Outcome run(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    if (!process.waitForFinished(300000))
        return {-1, program + QStringLiteral(": ") + process.errorString()};
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            QString::fromUtf8(process.readAll())};
}

} // namespace

/// Real camera images from import to result dataset, through the workspace's own windows, against numpy.
class tst_Plants : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void differenceAndTotalsAgreeWithNumpy();
    void aWrongPixelIsFound();
    void aWrongTotalIsFound();

private:
    Outcome check() const { return run(PYTHON, {CHECK, m_out.path()}); }

    const QString PYTHON = QStringLiteral("/usr/bin/python3");
    const QString CHECK = ROOT + QStringLiteral("/tests/realdata/check_plants.py");
    QTemporaryDir m_out;
    QString m_missing; ///< what there is to skip for; so that a skipped run counts as many tests as another
};

void tst_Plants::initTestCase()
{
    if (!QFile::exists(imagesFolder() + QStringLiteral("/day14_luminescence.tif")))
        m_missing =
            QStringLiteral("the real images of plants, which are not part of this package, are not in %1; "
                           "VEXA_SHARED_DATA can name another folder")
                .arg(imagesFolder());
    else if (run(PYTHON, {QStringLiteral("-c"), QStringLiteral("import numpy, tifffile")}).code != 0)
        m_missing = QStringLiteral("python3-numpy or python3-tifffile is not installed");
    if (!m_missing.isEmpty())
        return;
    const Outcome tour = run(QStringLiteral(VEXA_BINARY_DIR "/bin/vexa-tour"),
                             {QStringLiteral("--plants"), imagesFolder(), m_out.path()});
    QVERIFY2(tour.code == 0, qPrintable(tour.text));
}

void tst_Plants::init()
{
    if (!m_missing.isEmpty())
        QSKIP(qPrintable(m_missing));
}

void tst_Plants::differenceAndTotalsAgreeWithNumpy()
{
    const Outcome outcome = check();
    QVERIFY2(outcome.code == 0, qPrintable(outcome.text));
    QVERIFY2(outcome.text.contains(QStringLiteral("all 4194304 pixels in counts, to the last bit")),
             qPrintable(outcome.text));
    QVERIFY2(outcome.text.contains(QStringLiteral("34 totals were compared")), qPrintable(outcome.text));
}

// The comparison itself: it must see one pixel of four million that is off by one bit ...
void tst_Plants::aWrongPixelIsFound()
{
    QFile json(m_out.path() + QStringLiteral("/plants.json"));
    QVERIFY(json.open(QIODevice::ReadOnly));
    const QJsonObject made = QJsonDocument::fromJson(json.readAll()).object();
    const QString folder = made[QStringLiteral("counts")].toObject()[QStringLiteral("folder")].toString();
    const QString path = folder + QStringLiteral("luminescent.tif");
    const Outcome spoilt =
        run(PYTHON, {QStringLiteral("-c"),
                     QStringLiteral("import sys, numpy, tifffile\n"
                                    "a = tifffile.imread(sys.argv[1])\n"
                                    "a[1000, 900] = numpy.nextafter(a[1000, 900], numpy.float32(9))\n"
                                    "tifffile.imwrite(sys.argv[1], a)\n"),
                     path});
    QVERIFY2(spoilt.code == 0, qPrintable(spoilt.text));
    const Outcome outcome = check();
    QCOMPARE(outcome.code, 1);
    QVERIFY2(outcome.text.contains(QStringLiteral("DISAGREES: all 4194304 pixels in counts")),
             qPrintable(outcome.text));
}

// ... and one total that is off by one count.
void tst_Plants::aWrongTotalIsFound()
{
    QFile table(m_out.path() + QStringLiteral("/plants-counts.csv"));
    QVERIFY(table.open(QIODevice::ReadOnly));
    QString text = QString::fromUtf8(table.readAll());
    table.close();
    const QRegularExpressionMatch cell =
        QRegularExpression(QStringLiteral("\\[2, 3\\]\",Measurement,\\d+,NaN,[\\d.]+,(\\d+)")).match(text);
    QVERIFY(cell.hasMatch());
    text.replace(cell.capturedStart(1), cell.capturedLength(1),
                 QString::number(cell.captured(1).toLongLong() + 1));
    QVERIFY(table.open(QIODevice::WriteOnly));
    table.write(text.toUtf8());
    table.close();
    const Outcome outcome = check();
    QCOMPARE(outcome.code, 1);
    QVERIFY2(outcome.text.contains(QStringLiteral("DISAGREES: counts, Grid 1 [2, 3]")),
             qPrintable(outcome.text));
}

QTEST_GUILESS_MAIN(tst_Plants)
#include "tst_Plants.moc"
