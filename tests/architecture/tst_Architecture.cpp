// SPDX-License-Identifier: MIT
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QLibraryInfo>
#include <QMap>
#include <QPair>
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

// The folder in which a file of ours stands: each folder is a room.
QString roomOf(const QString &path)
{
    return path.section(QLatin1Char('/'), 0, -2);
}

const QStringList BASE{"host/vxutils", "host/vxparser", "host/vximage", "host/vximage/base", "host/vxapi"};
const QStringList MODEL = BASE + QStringList{"host/vxapi/model", "host/vxapi/model/clickinfo",
                                             "host/vxapi/model/roi", "host/vxapi/model/import"};
const QStringList VIEW{"host/vxapi/view/canvas", "host/vxapi/view/roi", "host/vxapi/view/measurement",
                       "host/vxapi/view/windows"};
const QStringList APP{"app", "app/datasets", "app/help", "app/import", "app/menus", "app/provenance"};

// Whom a room of the host may include, besides itself.
QMap<QString, QStringList> hostArrows()
{
    const QString model = QStringLiteral("host/vxapi/model");
    const QString canvas = QStringLiteral("host/vxapi/view/canvas");
    const QString windows = QStringLiteral("host/vxapi/view/windows");
    return {
        {"host/vxutils", {}},
        {"host/vxparser", {"host/vxutils"}},
        {"host/vximage/base", {}},
        {"host/vximage/kernels", {"host/vximage/base"}},
        {"host/vximage", {"host/vximage/base", "host/vximage/kernels"}},
        {"host/vxapi", {}},
        {model + "/clickinfo", BASE},
        {model + "/roi", BASE + QStringList{model + "/clickinfo"}},
        {model, BASE + QStringList{model + "/clickinfo", model + "/roi"}},
        {model + "/import", BASE + QStringList{model, model + "/clickinfo"}},
        {canvas, {"host/vximage", "host/vximage/base", "host/vxutils", "host/vxapi"}},
        {"host/vxapi/view/roi", MODEL + QStringList{canvas}},
        {"host/vxapi/view/measurement", MODEL},
        {windows, MODEL + QStringList{canvas, "host/vxapi/view/roi", "host/vxapi/view/measurement"}},
        {"host/vxapi/plugin", MODEL + QStringList{windows}},
    };
}

// Whom any room may include, besides itself.
QMap<QString, QStringList> arrows()
{
    const QString canvas = QStringLiteral("host/vxapi/view/canvas");
    const QString windows = QStringLiteral("host/vxapi/view/windows");
    QMap<QString, QStringList> all = hostArrows();
    all.insert("math", MODEL);
    all.insert("display", MODEL);
    all.insert("result", QStringList{"display", "math"} + MODEL);
    all.insert("check", QStringList{"math"} + MODEL);
    all.insert("window", QStringList{"math", "display", "result", "host/vxapi/view/canvas", windows} + MODEL);
    all.insert("plugin", QStringList{"window", "host/vxapi/plugin", windows} + MODEL);
    all.insert("app/datasets", QStringList{"check", windows} + MODEL);
    all.insert("app/import", MODEL);
    all.insert("app/help", QStringList{"app/datasets"} + MODEL);
    all.insert("app/provenance", QStringList{"app/datasets", "check", canvas, windows} + MODEL);
    all.insert("app/menus", QStringList{"app/datasets", "app/help", "app/import", windows} + MODEL);
    all.insert("app", APP + QStringList{"host/vxapi/plugin", canvas, windows} + MODEL);
    all.insert("samples", QStringList{"math", "result"} + MODEL);
    all.insert("tour", APP + VIEW + QStringList{"check", "math", "samples"} + MODEL);
    all.insert("bench", QStringList{"display", "math", "tests/support", "window"} + MODEL);
    return all;
}

// The folders that hold sources of what we ship.
QStringList productFolders()
{
    QSet<QString> folders;
    for (const QString &folder : OUR_FOLDERS) {
        if (folder == QLatin1String("tests"))
            continue;
        for (const QString &file : filesUnder(folder, SOURCES))
            folders.insert(roomOf(file));
    }
    QStringList sorted = folders.values();
    sorted.sort();
    return sorted;
}

QStringList sourcesIn(const QString &folder)
{
    QStringList files;
    for (const QString &name : QDir(ROOT + QLatin1Char('/') + folder).entryList(SOURCES, QDir::Files))
        files << folder + QLatin1Char('/') + name;
    return files;
}

bool isGenerated(const QString &name)
{
    return !name.contains(QLatin1Char('/')) &&
           (name.startsWith(QLatin1String("ui_")) || name.startsWith(QLatin1String("moc_")) ||
            name.endsWith(QLatin1String(".moc")));
}

// "file includes header" of every include that leads from one folder of ours into another.
QMap<QPair<QString, QString>, QString> includesBetweenFolders()
{
    QMap<QPair<QString, QString>, QString> found;
    for (const QString &folder : productFolders()) {
        for (const QString &file : sourcesIn(folder)) {
            for (const Include &include : includesOf(ROOT + QLatin1Char('/') + file)) {
                const QString target = roomOf(include.name);
                if (include.quoted && !isGenerated(include.name) && target != folder)
                    found.insert({folder, target}, file + QStringLiteral(" includes ") + include.name);
            }
        }
    }
    return found;
}

// Every file of ours that these include, directly or not, themselves included.
QSet<QString> reachedFromAll(const QStringList &files)
{
    QSet<QString> reached;
    QStringList open = files;
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

// The headers of one of Qt's modules, "QtWidgets" or "QtGui", that a file includes.
QStringList moduleIncludesOf(const QString &file, const QString &module)
{
    const QDir headers(QLibraryInfo::location(QLibraryInfo::HeadersPath) + QLatin1Char('/') + module);
    QStringList wrong;
    for (const Include &include : includesOf(ROOT + QLatin1Char('/') + file)) {
        const bool isQt = include.name.startsWith(QLatin1Char('q'), Qt::CaseInsensitive);
        if (include.name.startsWith(module + QLatin1Char('/')) || (isQt && headers.exists(include.name)))
            wrong << file + QStringLiteral(" includes ") + include.name;
    }
    return wrong;
}

bool hasModule(const QString &module, const QString &header)
{
    return QFileInfo::exists(QLibraryInfo::location(QLibraryInfo::HeadersPath) + QLatin1Char('/') + module +
                             QLatin1Char('/') + header);
}

} // namespace

class tst_Architecture : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void arrowsBetweenRooms_data();
    void arrowsBetweenRooms();
    void everyFolderIsDrawn();
    void noTwoFoldersIncludeEachOther();
    void aFolderIsSmallEnoughToRead_data();
    void aFolderIsSmallEnoughToRead();
    void includesAreWrittenFromTheRoot_data();
    void includesAreWrittenFromTheRoot();
    void theEngineHoldsNoWidget_data();
    void theEngineHoldsNoWidget();
    void theModelIncludesNothingOfQtGui();
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
    const QStringList files = sourcesIn(room);
    QVERIFY2(!files.isEmpty(), "the room has no sources");
    QStringList wrong;
    for (const QString &file : files) {
        for (const Include &include : includesOf(ROOT + QLatin1Char('/') + file)) {
            const QString target = roomOf(include.name);
            if (include.quoted && !isGenerated(include.name) && target != room && !allowed.contains(target))
                wrong << file + QStringLiteral(" includes ") + include.name;
        }
    }
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join(QLatin1Char('\n'))));
}

void tst_Architecture::everyFolderIsDrawn()
{
    const QMap<QString, QStringList> drawn = arrows();
    for (const QString &folder : productFolders())
        QVERIFY2(drawn.contains(folder), qPrintable(folder));
}

void tst_Architecture::noTwoFoldersIncludeEachOther()
{
    const auto includes = includesBetweenFolders();
    QVERIFY(!includes.isEmpty());
    QStringList wrong;
    for (auto it = includes.begin(); it != includes.end(); ++it) {
        const QPair<QString, QString> back(it.key().second, it.key().first);
        if (it.key().first < it.key().second && includes.contains(back))
            wrong << it.value() + QStringLiteral(", and ") + includes.value(back);
    }
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join(QLatin1Char('\n'))));
}

void tst_Architecture::aFolderIsSmallEnoughToRead_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<int>("most");
    for (const QString &folder : productFolders()) {
        const int most = 40;
        QTest::newRow(qPrintable(QStringLiteral("%1: at most %2 files").arg(folder).arg(most)))
            << folder << most;
    }
}

void tst_Architecture::aFolderIsSmallEnoughToRead()
{
    QFETCH(QString, folder);
    QFETCH(int, most);
    const int count = QDir(ROOT + QLatin1Char('/') + folder).entryList(QDir::Files).size();
    QVERIFY2(count <= most, qPrintable(QStringLiteral("%1 files").arg(count)));
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
    QTest::addColumn<QString>("room");
    for (const char *room : {"math", "display", "result", "check", "host/vxapi/model"})
        QTest::newRow(room) << QString::fromLatin1(room);
}

void tst_Architecture::theEngineHoldsNoWidget()
{
    QFETCH(QString, room);
    QVERIFY(hasModule(QStringLiteral("QtWidgets"), QStringLiteral("QWidget")));
    const QStringList files = filesUnder(room, SOURCES);
    QVERIFY2(!files.isEmpty(), "the room has no sources");
    QStringList wrong;
    for (const QString &reached : reachedFromAll(files)) {
        wrong += moduleIncludesOf(reached, QStringLiteral("QtWidgets"));
        for (const Include &include : includesOf(ROOT + QLatin1Char('/') + reached)) {
            if (include.name.startsWith(QLatin1String("ui_")))
                wrong << reached + QStringLiteral(" includes ") + include.name;
        }
    }
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join(QLatin1Char('\n'))));
}

void tst_Architecture::theModelIncludesNothingOfQtGui()
{
    QVERIFY(hasModule(QStringLiteral("QtGui"), QStringLiteral("QImage")));
    const QStringList files = filesUnder(QStringLiteral("host/vxapi/model"), SOURCES);
    QVERIFY(!files.isEmpty());
    QStringList wrong;
    for (const QString &reached : reachedFromAll(files))
        wrong += moduleIncludesOf(reached, QStringLiteral("QtGui"));
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
