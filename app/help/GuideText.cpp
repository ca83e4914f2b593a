// SPDX-License-Identifier: MIT
#include "app/help/GuideText.h"

#include <QCoreApplication>
#include <QDir>
#include <QRegularExpression>
#include <QTextDocumentFragment>

#include <md4c-html.h>

namespace {

void append(const MD_CHAR *text, MD_SIZE size, void *target)
{
    static_cast<QByteArray *>(target)->append(text, int(size));
}

} // namespace

QString guide::folder()
{
    return QDir::cleanPath(QCoreApplication::applicationDirPath() + QStringLiteral("/../share/doc/vexa"));
}

QString guide::anchorOf(const QString &heading)
{
    QString anchor;
    for (const QChar letter : heading.toLower()) {
        if (letter.isLetterOrNumber() || letter == QLatin1Char('-') || letter == QLatin1Char('_'))
            anchor += letter;
        else if (letter.isSpace())
            anchor += QLatin1Char('-');
    }
    return anchor;
}

QString guide::toHtml(const QByteArray &markdown)
{
    QByteArray bytes;
    if (md_html(markdown.constData(), MD_SIZE(markdown.size()), append, &bytes, MD_DIALECT_GITHUB, 0) != 0)
        return QString();
    QString html = QString::fromUtf8(bytes);
    html.replace(QLatin1String("<table>"),
                 QLatin1String("<table border=\"1\" cellspacing=\"0\" cellpadding=\"5\" width=\"100%\">"));
    html.replace(QRegularExpression(QStringLiteral("href=\"([^\":/#]+)\\.md([\"#])")),
                 QStringLiteral("href=\"\\1.html\\2"));

    static const QRegularExpression headings(QStringLiteral("<(h[1-6])>(.*?)</h[1-6]>"));
    QString named;
    int from = 0;
    for (auto it = headings.globalMatch(html); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        const QString text = QTextDocumentFragment::fromHtml(match.captured(2)).toPlainText();
        named += html.mid(from, match.capturedStart() - from);
        named += QStringLiteral("<%1><a name=\"%2\"></a>%3</%1>")
                     .arg(match.captured(1), anchorOf(text), match.captured(2));
        from = match.capturedEnd();
    }
    return named + html.mid(from);
}
