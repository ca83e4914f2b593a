// SPDX-License-Identifier: MIT
#include "tests/support/Files.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace {

const QString CHECK = QStringLiteral(VEXA_SOURCE_DIR "/cmake/check-qt-api.sh");

/// What the check says, and with which exit status it ends.
QPair<int, QString> checked(const QStringList &arguments, const QString &symbolLists = QString())
{
    QProcess check;
    check.setProcessChannelMode(QProcess::MergedChannels);
    if (!symbolLists.isEmpty()) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("VEXA_QT_SYMBOLS", symbolLists);
        check.setProcessEnvironment(environment);
    }
    check.start(CHECK, arguments);
    check.waitForFinished(-1);
    return {check.exitCode(), QString::fromLocal8Bit(check.readAll())};
}

} // namespace

/// The build stops at what came to Qt after 5.10: the check that does so, tried on such things.
class tst_QtApi : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void newerSourceIsFound_data();
    void newerSourceIsFound();
    void olderSourceIsFine_data();
    void olderSourceIsFine();
    void newerLinkingIsFound();
    void withoutListsItSaysSo();
};

void tst_QtApi::newerSourceIsFound_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("version");
    QTest::newRow("a set of a range") << QByteArray("QSet<QString> s(list.begin(), list.end());") << "5.14";
    QTest::newRow("a list of a range") << QByteArray("QStringList s(v.cbegin(), v.cend());") << "5.14";
    QTest::newRow("a vector of a range")
        << QByteArray("auto v = QVector<int>(a.begin(), a.end());") << "5.14";
    QTest::newRow("Qt::SkipEmptyParts") << QByteArray("text.split(',', Qt::SkipEmptyParts);") << "5.14";
    QTest::newRow("Qt::endl") << QByteArray("out << Qt::endl;") << "5.14";
    QTest::newRow("QTimer::callOnTimeout") << QByteArray("timer.callOnTimeout(this, f);") << "5.12";
    QTest::newRow("qScopeGuard") << QByteArray("const auto guard = qScopeGuard([] {});") << "5.12";
    QTest::newRow("QRecursiveMutex") << QByteArray("QRecursiveMutex mutex;") << "5.14";
    QTest::newRow("Q_DISABLE_COPY_MOVE") << QByteArray("Q_DISABLE_COPY_MOVE(Thing)") << "5.13";
}

void tst_QtApi::newerSourceIsFound()
{
    QFETCH(QByteArray, line);
    QFETCH(QString, version);
    QTemporaryDir sources;
    QVERIFY(writeFile(sources.filePath("Thing.cpp"), "#include <QtCore>\n" + line + "\n"));
    const auto outcome = checked({sources.path()});
    QCOMPARE(outcome.first, 1);
    QVERIFY2(outcome.second.contains("Thing.cpp:2: came with Qt " + version), qPrintable(outcome.second));
}

void tst_QtApi::olderSourceIsFine_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("a set of the standard library") << QByteArray("std::set<int> s(a.begin(), a.end());");
    QTest::newRow("QString::SkipEmptyParts") << QByteArray("text.split(',', QString::SkipEmptyParts);");
    QTest::newRow("a comment") << QByteArray("// not Qt::endl");
    QTest::newRow("a longer name") << QByteArray("qScopeGuardian();");
    QTest::newRow("the screen of a window handle") << QByteArray("handle->screen();");
}

void tst_QtApi::olderSourceIsFine()
{
    QFETCH(QByteArray, line);
    QTemporaryDir sources;
    QVERIFY(writeFile(sources.filePath("Thing.h"), line + "\n"));
    const auto outcome = checked({sources.path()});
    QVERIFY2(outcome.first == 0 && outcome.second.isEmpty(), qPrintable(outcome.second));
}

void tst_QtApi::newerLinkingIsFound()
{
    QTemporaryDir nothing;
    const QString library = QStringLiteral(VEXA_BINARY_DIR "/tests/plugins/newer/libnewer_api.so");
    if (!QFile::exists(library))
        QSKIP("The Qt that this is built with has nothing newer to link.");
    const auto outcome = checked({nothing.path(), library});
    if (outcome.second.contains("there are no lists of Qt's symbols here"))
        QSKIP("This system keeps no lists of the versions in which Qt's symbols appeared (Debian does).");
    QCOMPARE(outcome.first, 1);
    QVERIFY2(outcome.second.contains("libnewer_api.so: links what came with Qt 5.14"),
             qPrintable(outcome.second));
    QVERIFY2(outcome.second.contains("QWidget6screen"), qPrintable(outcome.second));
}

void tst_QtApi::withoutListsItSaysSo()
{
    QTemporaryDir nothing;
    const auto outcome =
        checked({nothing.path(), QStringLiteral(VEXA_BINARY_DIR "/tests/plugins/newer/libnewer_api.so")},
                nothing.path());
    QCOMPARE(outcome.first, 0);
    QVERIFY2(outcome.second.contains("only the sources were checked"), qPrintable(outcome.second));
}

QTEST_GUILESS_MAIN(tst_QtApi)
#include "tst_QtApi.moc"
