// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class QMenu;

/// The menu of the results of image math that lie in the program-data folder, the newest first. It is built
/// whenever it is shown.
class EarlierResults : public QObject
{
    Q_OBJECT

public:
    static constexpr int MAX_COUNT = 15;

    explicit EarlierResults(QMenu *menu, QObject *parent = nullptr);

Q_SIGNALS:
    void chosen(const QString &folder);
    /// The user looks for one that is not in the list.
    void othersWanted();

private:
    void fill();

    QMenu *m_menu;
};
