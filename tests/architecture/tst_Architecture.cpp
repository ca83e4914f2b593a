// SPDX-License-Identifier: MIT
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QLibraryInfo>
#include <QMap>
#include <QRegularExpression>
#include <QSet>
#include <QtTest>

namespace {

const QString ROOT = QStringLiteral(VEXA_SOURCE_DIR);

struct Include
{
    QString name;
    bool quoted = false;
};

QString textOf(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.readAll());
}

QVector<Include> includesOf(const QString &path)
{
    static const QRegularExpression line(
        QStringLiteral("^[ \\t]*#[ \\t]*include[ \\t]*([\"<])([^\">]+)[\">]"),
        QRegularExpression::MultilineOption);
    QVector<Include> found;
    auto it = line.globalMatch(textOf(path));
    while (it.hasNext()) {
        const auto match = it.next();
        found.append({match.captured(2), match.captured(1) == QLatin1String("\"")});
    }
    return found;
}

// Files under a folder of the source tree, relative to the root; build folders and hidden ones are not ours.
QStringList filesUnder(const QString &folder, const QStringList &patterns)
{
    QStringList files;
    QDirIterator it(ROOT + QLatin1Char('/') + folder, patterns, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext())
        files << QDir(ROOT).relativeFilePath(it.next());
    files.sort();
    return files;
}

const QStringList SOURCES{"*.h", "*.cpp", "*.inl"};
const QStringList OUR_FOLDERS{"host", "math",    "display", "result", "check", "window", "plugin",
                              "app",  "samples", "tour",    "tests",  "bench", "fuzz",   "cmake"};

// The room in which a file stands, as the arrows name it.
QString roomOf(const QString &path)
{
    const QStringList parts = path.split(QLatin1Char('/'));
    if (parts.value(0) == QLatin1String("host"))
        return parts.value(0) + QLatin1Char('/') + parts.value(1);
    return parts.value(0);
}

const QStringList HOST{"host/vxutils", "host/vxparser", "host/vximage", "host/vxapi"};

// Whom a room may include, besides itself.
QMap<QString, QStringList> arrows()
{
    return {
        {"host/vxutils", {}},
        {"host/vxparser", {"host/vxutils"}},
        {"host/vximage", {"host/vxutils"}},
        {"host/vxapi", {"host/vximage", "host/vxparser", "host/vxutils"}},
        {"math", HOST},
        {"display", HOST},
        {"result", HOST},
        {"window", QStringList{"math", "display", "result"} + HOST},
        {"plugin", QStringList{"window"} + HOST},
        {"check", QStringList{"math"} + HOST},
        {"app", QStringList{"check", "math"} + HOST},
        {"samples", HOST},
        {"tour", QStringList{"app", "check", "math", "samples"} + HOST},
        {"bench", QStringList{"display", "math", "tests", "window"} + HOST},
    };
}

bool isGenerated(const QString &name)
{
    return !name.contains(QLatin1Char('/')) &&
           (name.startsWith(QLatin1String("ui_")) || name.startsWith(QLatin1String("moc_")) ||
            name.endsWith(QLatin1String(".moc")));
}

// Every file of ours that a file includes, directly or not, itself included.
QSet<QString> reachedFrom(const QString &path)
{
    QSet<QString> reached;
    QStringList open{path};
    while (!open.isEmpty()) {
        const QString next = open.takeLast();
        if (reached.contains(next))
            continue;
        reached.insert(next);
        for (const Include &include : includesOf(ROOT + QLatin1Char('/') + next)) {
            if (include.quoted && QFileInfo::exists(ROOT + QLatin1Char('/') + include.name))
                open << include.name;
        }
    }
    return reached;
}

} // namespace

class tst_Architecture : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void arrowsBetweenRooms_data();
    void arrowsBetweenRooms();
    void partsOfTheApplicationLibrary_data();
    void partsOfTheApplicationLibrary();
    void includesAreWrittenFromTheRoot_data();
    void includesAreWrittenFromTheRoot();
    void theEngineHoldsNoWidget_data();
    void theEngineHoldsNoWidget();
    void noTwoFoldersOfTestsIncludeEachOther();
    void licenceLine_data();
    void licenceLine();
};

void tst_Architecture::initTestCase()
{
    QVERIFY(QFileInfo::exists(ROOT + QStringLiteral("/CMakeLists.txt")));
}

void tst_Architecture::arrowsBetweenRooms_data()
{
    QTest::addColumn<QString>("room");
    const QStringList rooms = arrows().keys();
    for (const QString &room : rooms)
        QTest::newRow(qPrintable(room + QStringLiteral(" includes only what it builds on"))) << room;
}

void tst_Architecture::arrowsBetweenRooms()
{
    QFETCH(QString, room);
    const QStringList allowed = arrows().value(room);
    QStringList wrong;
    int looked = 0;
    for (const QString &folder : OUR_FOLDERS) {
        for (const QString &file : filesUnder(folder, SOURCES)) {
            if (roomOf(file) != room)
                continue;
            ++looked;
            for (const Include &include : includesOf(ROOT + QLatin1Char('/') + file)) {
                if (!include.quoted || isGenerated(include.name))
                    continue;
                const QString target = roomOf(include.name);
                if (target != room && !allowed.contains(target))
                    wrong << file + QStringLiteral(" includes ") + include.name;
            }
        }
    }
    QVERIFY2(looked > 0, "the room has no sources");
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join(QLatin1Char('\n'))));
}

void tst_Architecture::partsOfTheApplicationLibrary_data()
{
    QTest::addColumn<QString>("part");
    QTest::addColumn<QStringList>("allowed");
    QTest::newRow("the model knows neither view nor plug-in") << "model" << QStringList{"model"};
    QTest::newRow("the view knows the model, not the plug-in") << "view" << QStringList{"view", "model"};
    QTest::newRow("the plug-in base knows both") << "plugin" << QStringList{"plugin", "view", "model"};
}

void tst_Architecture::partsOfTheApplicationLibrary()
{
    QFETCH(QString, part);
    QFETCH(QStringList, allowed);
    const QStringList files = filesUnder(QStringLiteral("host/vxapi/") + part, SOURCES);
    QVERIFY(!files.isEmpty());
    QStringList wrong;
    for (const QString &file : files) {
        for (const Include &include : includesOf(ROOT + QLatin1Char('/') + file)) {
            const QStringList way = include.name.split(QLatin1Char('/'));
            if (include.quoted && include.name.startsWith(QLatin1String("host/vxapi/")) && way.size() > 3 &&
                !allowed.contains(way.at(2)))
                wrong << file + QStringLiteral(" includes ") + include.name;
        }
    }
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join(QLatin1Char('\n'))));
}

void tst_Architecture::includesAreWrittenFromTheRoot_data()
{
    QTest::addColumn<QString>("folder");
    for (const QString &folder : OUR_FOLDERS) {
        if (!filesUnder(folder, SOURCES).isEmpty())
            QTest::newRow(qPrintable(folder)) << folder;
    }
}

void tst_Architecture::includesAreWrittenFromTheRoot()
{
    QFETCH(QString, folder);
    QStringList wrong;
    for (const QString &file : filesUnder(folder, SOURCES)) {
        for (const Include &include : includesOf(ROOT + QLatin1Char('/') + file)) {
            if (include.quoted && !isGenerated(include.name) &&
                !QFileInfo::exists(ROOT + QLatin1Char('/') + include.name))
                wrong << file + QStringLiteral(" includes ") + include.name;
        }
    }
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join(QLatin1Char('\n'))));
}

void tst_Architecture::theEngineHoldsNoWidget_data()
{
    QTest::addColumn<QString>("file");
    for (const QString &room :
         {QStringLiteral("math"), QStringLiteral("display"), QStringLiteral("result")}) {
        for (const QString &file : filesUnder(room, SOURCES))
            QTest::newRow(qPrintable(file)) << file;
    }
}

void tst_Architecture::theEngineHoldsNoWidget()
{
    QFETCH(QString, file);
    const QDir widgets(QLibraryInfo::location(QLibraryInfo::HeadersPath) + QStringLiteral("/QtWidgets"));
    QVERIFY2(widgets.exists(QStringLiteral("QWidget")), qPrintable(widgets.path()));
    QStringList wrong;
    for (const QString &reached : reachedFrom(file)) {
        for (const Include &include : includesOf(ROOT + QLatin1Char('/') + reached)) {
            if (include.name.startsWith(QLatin1String("QtWidgets")) ||
                (include.name.startsWith(QLatin1Char('Q')) && widgets.exists(include.name)) ||
                (include.name.startsWith(QLatin1String("qt")) && widgets.exists(include.name)) ||
                include.name.startsWith(QLatin1String("ui_")))
                wrong << reached + QStringLiteral(" includes ") + include.name;
        }
    }
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join(QLatin1Char('\n'))));
}

void tst_Architecture::noTwoFoldersOfTestsIncludeEachOther()
{
    const QString tests = QStringLiteral("tests/");
    QMap<QString, QSet<QString>> included; // by the folder that includes
    for (const QString &file : filesUnder(QStringLiteral("tests"), SOURCES)) {
        const QString from = QFileInfo(file).path();
        for (const Include &include : includesOf(ROOT + QLatin1Char('/') + file)) {
            const QString to = QFileInfo(include.name).path();
            if (include.quoted && include.name.startsWith(tests) && to != from)
                included[from].insert(to);
        }
    }
    QVERIFY(!included.isEmpty());
    QVERIFY2(!included.contains(QStringLiteral("tests/support")), "what all share builds on none of them");
    for (auto it = included.cbegin(); it != included.cend(); ++it) {
        for (const QString &to : it.value())
            QVERIFY2(!included.value(to).contains(it.key()),
                     qPrintable(it.key() + QStringLiteral(" and ") + to));
    }
}

void tst_Architecture::licenceLine_data()
{
    QTest::addColumn<QStringList>("files");
    const QStringList patterns = SOURCES + QStringList{"CMakeLists.txt", "*.cmake", "*.sh", "*.py", "*.map"};
    for (const QString &folder : OUR_FOLDERS) {
        const QStringList files = filesUnder(folder, patterns);
        if (!files.isEmpty())
            QTest::newRow(qPrintable(folder + QStringLiteral(": every source names the licence first")))
                << files;
    }
    QTest::newRow("the build file of the root") << QStringList{"CMakeLists.txt"};
}

void tst_Architecture::licenceLine()
{
    QFETCH(QStringList, files);
    QStringList wrong;
    for (const QString &file : files) {
        const QStringList lines = textOf(ROOT + QLatin1Char('/') + file).split(QLatin1Char('\n'));
        // A script's first line names its interpreter.
        const QString line = lines.value(lines.value(0).startsWith(QLatin1String("#!")) ? 1 : 0);
        if (!line.contains(QLatin1String("SPDX-License-Identifier: MIT")))
            wrong << file;
    }
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join(QLatin1Char('\n'))));
}

QTEST_APPLESS_MAIN(tst_Architecture)
#include "tst_Architecture.moc"
