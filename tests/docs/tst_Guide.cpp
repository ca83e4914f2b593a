// SPDX-License-Identifier: MIT
#include "host/vxapi/model/DisplayUnits.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QRegularExpression>
#include <QSet>
#include <QTest>
#include <QXmlStreamReader>

namespace {

const QString ROOT = QStringLiteral(VEXA_SOURCE_DIR "/");
constexpr qint64 MAX_PICTURE = 120000; ///< bytes, so that the guide stays quick to load

QString textOf(const QString &path)
{
    QFile file(ROOT + path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// Without what only sets the text: marks of Markdown, line breaks, repeated blanks.
QString plain(QString text)
{
    return text.remove(QRegularExpression(QStringLiteral("[*`>]"))).simplified();
}

QString guide()
{
    return plain(textOf(QStringLiteral("docs/image-math.md")));
}

QString bothGuides()
{
    return guide() + QLatin1Char(' ') + plain(textOf(QStringLiteral("docs/workspace.md")));
}

/// Adjacent string literals as one text, escapes undone.
QString joined(const QString &literals)
{
    QString text;
    QRegularExpressionMatchIterator parts =
        QRegularExpression(QStringLiteral("\"((?:[^\"\\\\]|\\\\.)*)\"")).globalMatch(literals);
    while (parts.hasNext())
        text += parts.next().captured(1);
    return text.replace(QLatin1String("\\n"), QLatin1String("\n"))
        .replace(QLatin1String("\\\""), QLatin1String("\""));
}

/// The texts for the user in a source file.
QStringList messagesOf(const QString &source)
{
    static const QRegularExpression call(
        QStringLiteral("\\b(?:tr|formText|translated|logLine\\(\\s*QStringLiteral)\\(\\s*((?:\"(?:[^\"\\\\]|"
                       "\\\\.)*\"\\s*)+)"));
    QStringList found;
    QRegularExpressionMatchIterator matches = call.globalMatch(source);
    while (matches.hasNext())
        found += joined(matches.next().captured(1));
    return found;
}

/// What of a message is fixed: it may name a click number, a file, a reason.
QStringList fixedParts(QString message)
{
    message.remove(QRegularExpression(QStringLiteral("&(?=\\w)"))); // keyboard shortcuts
    QStringList parts;
    const QStringList all = message.split(QRegularExpression(QStringLiteral("%\\d")));
    for (const QString &part : all) {
        if (!plain(part).isEmpty())
            parts += plain(part);
    }
    return parts;
}

QStringList sourcesIn(const QString &folder)
{
    QStringList paths;
    const QStringList names = QDir(ROOT + folder).entryList({QStringLiteral("*.cpp")}, QDir::Files);
    for (const QString &name : names)
        paths += folder + QLatin1Char('/') + name;
    return paths;
}

QStringList linksOf(const QString &page)
{
    QStringList targets;
    QRegularExpressionMatchIterator links =
        QRegularExpression(QStringLiteral("\\]\\(([^)\\s]+)\\)")).globalMatch(textOf(page));
    while (links.hasNext())
        targets += links.next().captured(1);
    return targets;
}

/// As the pages' viewers name a heading.
QSet<QString> anchorsOf(const QString &page)
{
    QSet<QString> anchors;
    QRegularExpressionMatchIterator headings =
        QRegularExpression(QStringLiteral("^#+ (.*)$"), QRegularExpression::MultilineOption)
            .globalMatch(textOf(page));
    while (headings.hasNext()) {
        QString anchor = headings.next().captured(1).toLower();
        anchor.remove(QRegularExpression(QStringLiteral("[^\\w -]")));
        anchors.insert(anchor.replace(QLatin1Char(' '), QLatin1Char('-')));
    }
    return anchors;
}

} // namespace

/// What the guide says agrees with what the programs say, letter for letter, and what it links is there.
class tst_Guide : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyMessageOfTheToolIsExplained_data();
    void everyMessageOfTheToolIsExplained();
    void everyMessageOfTheHostPartIsExplained_data();
    void everyMessageOfTheHostPartIsExplained();
    void everyControlIsExplained();
    void everyLinkLeadsSomewhere_data();
    void everyLinkLeadsSomewhere();
    void everyPictureIsUsedAndSmall();
};

void tst_Guide::everyMessageOfTheToolIsExplained_data()
{
    QTest::addColumn<QString>("message");
    int count = 0;
    for (const char *room : {"math", "display", "result", "window", "plugin"}) {
        const QStringList paths = sourcesIn(QString::fromLatin1(room));
        for (const QString &path : paths) {
            const QStringList messages = messagesOf(textOf(path));
            for (const QString &message : messages)
                QTest::addRow("%d %s", ++count, qPrintable(plain(message).left(60))) << message;
        }
    }
    for (const DisplayUnit &unit : DISPLAY_UNITS) // under the images
        QTest::addRow("%d %s", ++count, unit.label) << QString::fromLatin1(unit.label);
}

void tst_Guide::everyMessageOfTheToolIsExplained()
{
    QFETCH(QString, message);
    const QString text = guide();
    const QStringList parts = fixedParts(message);
    for (const QString &part : parts)
        QVERIFY2(text.contains(part), qPrintable(QStringLiteral("not in image-math.md: ") + part));
}

void tst_Guide::everyMessageOfTheHostPartIsExplained_data()
{
    QTest::addColumn<QString>("path");
    for (const char *path : {"app/datasets/LooseDatasets.cpp", "app/datasets/SequenceManager.cpp",
                             "check/ResultCheck.cpp", "app/menus/FileMenu.cpp"})
        QTest::newRow(path) << QString::fromLatin1(path);
}

void tst_Guide::everyMessageOfTheHostPartIsExplained()
{
    QFETCH(QString, path);
    const QString text = bothGuides();
    const QStringList messages = messagesOf(textOf(path));
    QVERIFY2(messages.size() >= 4, qPrintable(path));
    for (const QString &message : messages) {
        const QStringList parts = fixedParts(message);
        for (const QString &part : parts)
            QVERIFY2(text.contains(part), qPrintable(QStringLiteral("in neither guide: ") + part));
    }
}

void tst_Guide::everyControlIsExplained()
{
    const QString text = guide();
    const QRegularExpression markup(QStringLiteral("<[^>]*>"));
    QXmlStreamReader form(textOf(QStringLiteral("window/cvxsimagemathwnd.ui")));
    QString property;
    int count = 0;
    while (!form.atEnd()) {
        form.readNext();
        if (!form.isStartElement())
            continue;
        if (form.name() == QLatin1String("property"))
            property = form.attributes().value(QStringLiteral("name")).toString();
        const bool isShown = property == QLatin1String("text") || property == QLatin1String("title") ||
                             property == QLatin1String("windowTitle");
        if (form.name() != QLatin1String("string") || !isShown)
            continue;
        QString shown = form.readElementText().remove(markup).simplified();
        if (shown.startsWith(QLatin1String("Sequence: ")))
            shown = QStringLiteral("Sequence: "); // followed by the sequence's name
        ++count;
        QVERIFY2(text.contains(plain(shown)),
                 qPrintable(QStringLiteral("no control in the guide: ") + shown));
    }
    QVERIFY2(!form.hasError(), qPrintable(form.errorString()));
    QVERIFY2(count >= 25, qPrintable(QString::number(count)));
}

void tst_Guide::everyLinkLeadsSomewhere_data()
{
    QTest::addColumn<QString>("page");
    for (const char *page : {"README.md", "docs/image-math.md", "docs/workspace.md"})
        QTest::newRow(page) << QString::fromLatin1(page);
}

void tst_Guide::everyLinkLeadsSomewhere()
{
    QFETCH(QString, page);
    const QStringList targets = linksOf(page);
    QVERIFY(targets.size() >= 4);
    for (const QString &target : targets) {
        const QString file = target.section(QLatin1Char('#'), 0, 0);
        const QString anchor = target.section(QLatin1Char('#'), 1);
        const QString path =
            file.isEmpty() ? page : QDir::cleanPath(QFileInfo(page).path() + QLatin1Char('/') + file);
        QVERIFY2(QFileInfo::exists(ROOT + path), qPrintable(target));
        if (!anchor.isEmpty())
            QVERIFY2(anchorsOf(path).contains(anchor), qPrintable(target));
    }
}

void tst_Guide::everyPictureIsUsedAndSmall()
{
    const QStringList links =
        linksOf(QStringLiteral("docs/image-math.md")) + linksOf(QStringLiteral("docs/workspace.md"));
    const QFileInfoList pictures = QDir(ROOT + QStringLiteral("docs/pictures")).entryInfoList(QDir::Files);
    QVERIFY(pictures.size() >= 10);
    for (const QFileInfo &picture : pictures) {
        const QString name = picture.fileName();
        QVERIFY2(links.contains(QStringLiteral("pictures/") + name), qPrintable(name));
        QVERIFY2(picture.size() <= MAX_PICTURE, qPrintable(name));
        QVERIFY2(!QImage(picture.filePath()).isNull(), qPrintable(name));
    }
}

QTEST_GUILESS_MAIN(tst_Guide)
#include "tst_Guide.moc"
