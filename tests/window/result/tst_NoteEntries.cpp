// SPDX-License-Identifier: MIT
#include "tests/support/WindowProbe.h"

#include <QtTest>

/// The window's members on note texts hand over to the free functions.
class tst_NoteEntries : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anEntryIsAppended();
    void anEntryIsRemoved();
    void anEntryIsReplaced();

private:
    WindowProbe m_window;
};

void tst_NoteEntries::anEntryIsAppended()
{
    QString note = QStringLiteral("A=1;");
    m_window.appendNoteEntry(note, QStringLiteral("A"), QStringLiteral("2"));
    QCOMPARE(note, QStringLiteral("A=1;A=2;"));
}

void tst_NoteEntries::anEntryIsRemoved()
{
    QString note = QStringLiteral("A=1;B=2;A=3;");
    m_window.removeNoteEntry(note, QStringLiteral("A"));
    QCOMPARE(note, QStringLiteral("B=2;A=3;"));
}

void tst_NoteEntries::anEntryIsReplaced()
{
    QString note = QStringLiteral("A=1;B=2;");
    m_window.replaceNoteEntry(note, QStringLiteral("B"), QStringLiteral("9"));
    QCOMPARE(note, QStringLiteral("A=1;B=9;"));
}

QTEST_MAIN(tst_NoteEntries)
#include "tst_NoteEntries.moc"
