// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringView>

/// The escapes of one text (key, name or value) in a ClickInfo line, see docs/clickinfo-format.md.
///
/// Written text never holds a line break, a control or invisible character, a blank at either end, or
/// anything that UTF-8 cannot carry; so blanks around it may be dropped when it is read.
namespace clickinfotext {

/// Where a text stands, which decides what else must be escaped there.
enum EPlace {
    SECTION_KEY, ///< between "[" and "]": also "]"
    PAIR_KEY,    ///< before "=": also "=", and "#" or "[" at its start
    REST         ///< up to the end of the line
};

/// The text as it is written in that place. A null text has an escape of its own; the outcome is never null.
QString escaped(const QString &text, EPlace place);

/// The text back; false, with `reason` and an unfinished `text`, for an escape that does not exist or a
/// control character that must be escaped.
bool unescaped(QStringView escapedText, QString *text, QString *reason);

/// Position of the first `mark` that is not escaped, from `from` on, or -1.
int findUnescaped(QStringView line, QChar mark, int from);

} // namespace clickinfotext
