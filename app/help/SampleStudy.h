// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>

class QProcess;

/// The sample study: simulated acquisitions of which the truth is known, made by a program of its own when
/// the user first asks for it, and kept in the program-data folder.
class SampleStudy : public QObject
{
    Q_OBJECT

public:
    explicit SampleStudy(QObject *parent = nullptr);
    ~SampleStudy() override;

    /// Opens it: emits ready(), at once when it was made before. While it is being made nothing is begun a
    /// second time. A failure is told in the log (level 3).
    void open();
    bool isBeingMade() const { return m_maker; }

Q_SIGNALS:
    /// The sequence lies in that folder.
    void ready(const QString &folder);
    void beingMadeChanged(bool isBeingMade);

private:
    void make();
    void finish(bool isMade, const QString &reason);

    QProcess *m_maker = nullptr; ///< while it works
};
