// SPDX-License-Identifier: MIT
#include "result/ClickNumber.h"

#include <algorithm>
#include <QSet>

namespace {

const QString SEQUENCE_MARK = QStringLiteral("_SEQ");
constexpr int LETTERS = 26;
constexpr int MOST_Z = 3;

bool isDigit(QChar c)
{
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

} // namespace

QString clicknumber::stem(const QString &name)
{
    const int mark = name.indexOf(SEQUENCE_MARK);
    if (mark >= 0)
        return name.left(mark + SEQUENCE_MARK.size());
    const auto lastDigit = std::find_if(name.rbegin(), name.rend(), isDigit);
    return name.left(int(name.rend() - lastDigit));
}

QString clicknumber::initials(const QString &name)
{
    const auto end =
        std::find_if(name.begin(), name.end(), [](QChar c) { return isDigit(c) || c == QLatin1Char('_'); });
    return name.left(int(end - name.begin()));
}

int clicknumber::suffixValue(const QString &name)
{
    int sum = 0;
    for (const QChar c : name.mid(stem(name).size()))
        sum += int(static_cast<unsigned char>(c.toUpper().toLatin1())) - 'A' + 1;
    return sum;
}

QString clicknumber::suffixOfValue(int value)
{
    if (value <= 0)
        return QString();
    QString letters(std::min(value / LETTERS, MOST_Z), QLatin1Char('Z'));
    if (const int rest = value % LETTERS)
        letters += QLatin1Char(char('A' - 1 + rest));
    return letters;
}

QString clicknumber::forResult(const QString &clickNumber,
                               const std::function<bool(const QString &)> &isTaken)
{
    const QString text = stem(clickNumber.trimmed());
    const QString prefix = initials(text);
    QString rest = text.mid(prefix.size());
    int value = suffixValue(QStringLiteral("M"));
    if (rest.startsWith(QLatin1Char('_'))) {
        const QString letters = initials(rest.mid(1));
        value = suffixValue(letters) + 1;
        rest = rest.mid(1 + letters.size());
    }
    // All values up to 0 have no letters; the texts repeat in the end, and then there is no free one.
    QSet<QString> tried;
    for (value = std::max(value, 0);; ++value) {
        const QString candidate = prefix + QLatin1Char('_') + suffixOfValue(value) + rest;
        if (tried.contains(candidate))
            return QString();
        if (!isTaken(candidate))
            return candidate;
        tried.insert(candidate);
    }
}
