// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QHash>
#include <QObject>

class QMenu;
struct StoredDataset;

/// The menu of the results of image math that lie in the program-data folder: formula, k and operands of each,
/// the one that was computed last first. It is built whenever it is shown.
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
    /// What a line says of a result.
    struct About
    {
        QDateTime written; ///< of the stored dataset that was looked at
        QDateTime made;    ///< when it was computed; when it was saved, if its record does not say
        QString formula;   ///< "A - B * k, k = 1.25"
        QString operands;
        QString sources; ///< the files that the operands were imported from; may be empty
    };
    void fill();
    const About &about(const StoredDataset &result);
    static About read(const StoredDataset &result);

    QMenu *m_menu;
    QHash<QString, About> m_known; ///< by folder
};
