// SPDX-License-Identifier: MIT
#include "math/ToolLog.h"
#include "result/ClickNumber.h"
#include "result/NoteText.h"
#include "result/ResultPlace.h"
#include "window/CVXSImageMathWnd.h"

void CVXSImageMathWnd::appendNoteEntry(QString &note, const QString &key, const QString &value)
{
    notetext::append(note, key, value);
}

void CVXSImageMathWnd::removeNoteEntry(QString &note, const QString &key)
{
    notetext::remove(note, key);
}

void CVXSImageMathWnd::replaceNoteEntry(QString &note, const QString &key, const QString &value)
{
    notetext::replace(note, key, value);
}

QString CVXSImageMathWnd::makeResultClickNumber(QString clickNumber)
{
    const QString free = ProgramDataPlace::freeClickNumber(clickNumber);
    if (free.isNull())
        imagemath::logLine(QStringLiteral("Every click number for a result of %1 is taken").arg(clickNumber));
    return free;
}

QString CVXSImageMathWnd::clickNumberStem(const QString &name)
{
    return clicknumber::stem(name);
}

QString CVXSImageMathWnd::userInitials(const QString &name)
{
    return clicknumber::initials(name);
}

int CVXSImageMathWnd::letterSuffixValue(const QString &name)
{
    return clicknumber::suffixValue(name);
}

QString CVXSImageMathWnd::letterSuffixFromValue(int n)
{
    return clicknumber::suffixOfValue(n);
}
