// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QStringList>

class QMenu;

/// The sequences opened last, the newest first, kept in the user's settings; and the menu that offers them.
class RecentSequences : public QObject
{
    Q_OBJECT

public:
    static constexpr int MAX_COUNT = 10;

    explicit RecentSequences(QObject *parent = nullptr);

    QStringList folders() const;
    /// Puts a sequence's folder first.
    void add(const QString &folder);
    void remove(const QString &folder);
    void clear();
    /// The user wants that one.
    void choose(const QString &folder) { Q_EMIT chosen(folder); }

    /// Has the menu filled each time before it is shown.
    void attach(QMenu *menu);

Q_SIGNALS:
    void chosen(const QString &folder);

private:
    void store(const QStringList &folders);
    void fill(QMenu *menu);
};
