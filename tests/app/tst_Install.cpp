// SPDX-License-Identifier: MIT
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

/// The installed tree runs from where it was put.
class tst_Install : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void holdsWhatTheUserNeeds_data();
    void holdsWhatTheUserNeeds();
    void findsItsOwnLibraries_data();
    void findsItsOwnLibraries();
    void theProgramStarts();

private:
    QString output(const QString &program, const QStringList &arguments) const;

    QTemporaryDir m_folder;
    QString m_tree;
};

QString tst_Install::output(const QString &program, const QStringList &arguments) const
{
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished(60000);
    return process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0
               ? QString::fromLocal8Bit(process.readAllStandardOutput())
               : QString();
}

// Installed in one place and moved to another, so that a path of the first is found out.
void tst_Install::initTestCase()
{
    const QString first = m_folder.filePath(QStringLiteral("first"));
    QVERIFY(!output(QStringLiteral("cmake"), {"--install", VEXA_BINARY_DIR, "--prefix", first}).isEmpty());
    m_tree = m_folder.filePath(QStringLiteral("moved"));
    QVERIFY(QDir().rename(first, m_tree));
}

void tst_Install::holdsWhatTheUserNeeds_data()
{
    QTest::addColumn<QString>("file");
    for (const char *file :
         {"bin/vexa", "bin/vexa-make-sample", "lib/vexa/plugins/libvximagemath.so",
          "share/applications/vexa.desktop", "share/doc/vexa/image-math.md", "share/doc/vexa/workspace.md",
          "share/doc/vexa/pictures/04-k-1.25.png", "share/icons/hicolor/128x128/apps/vexa.png"})
        QTest::newRow(file) << QString::fromLatin1(file);
}

void tst_Install::holdsWhatTheUserNeeds()
{
    QFETCH(QString, file);
    QVERIFY(QFileInfo(m_tree + QLatin1Char('/') + file).isFile());
}

void tst_Install::findsItsOwnLibraries_data()
{
    QTest::addColumn<QString>("file");
    for (const char *file : {"bin/vexa", "bin/vexa-make-sample", "lib/vexa/plugins/libvximagemath.so",
                             "lib/libvxapi.so.1", "lib/libvximage.so.1", "lib/libvxparser.so.1"})
        QTest::newRow(file) << QString::fromLatin1(file);
}

void tst_Install::findsItsOwnLibraries()
{
    QFETCH(QString, file);
    const QStringList lines =
        output(QStringLiteral("ldd"), {m_tree + QLatin1Char('/') + file}).split(QLatin1Char('\n'));
    int own = 0;
    for (const QString &line : lines) {
        QVERIFY2(!line.contains(QLatin1String("not found")), qPrintable(line));
        if (!line.trimmed().startsWith(QLatin1String("libvx")))
            continue;
        ++own;
        const QString found = line.section(QStringLiteral(" => "), 1).section(QStringLiteral(" ("), 0, 0);
        QVERIFY2(QFileInfo(found).canonicalFilePath().startsWith(QFileInfo(m_tree).canonicalFilePath()),
                 qPrintable(line));
    }
    QVERIFY(own > 0 || file == QLatin1String("lib/libvximage.so.1"));
}

void tst_Install::theProgramStarts()
{
    QVERIFY(output(m_tree + QStringLiteral("/bin/vexa"), {"--version"}).contains(QLatin1String("1.1.0")));
}

QTEST_GUILESS_MAIN(tst_Install)
#include "tst_Install.moc"
