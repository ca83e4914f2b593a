// SPDX-License-Identifier: MIT
#include "result/NoteText.h"

namespace {

constexpr QLatin1Char SIGN('=');
constexpr QLatin1Char END(';');

} // namespace

void notetext::append(QString &note, const QString &key, const QString &value)
{
    note += key + SIGN + value + END;
}

void notetext::remove(QString &note, const QString &key)
{
    const int start = note.indexOf(key);
    const int end = start < 0 ? -1 : note.indexOf(END, start);
    if (end >= 0)
        note.remove(start, end - start + 1);
}

void notetext::replace(QString &note, const QString &key, const QString &value)
{
    const int start = note.indexOf(key);
    if (start < 0)
        return;
    const int sign = note.indexOf(SIGN, start);
    const int end = note.indexOf(END, start);
    if (sign >= 0 && sign < end)
        note.replace(sign + 1, end - sign - 1, value);
}
