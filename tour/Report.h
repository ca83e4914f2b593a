// SPDX-License-Identifier: MIT
#pragma once

#include <QPixmap>
#include <QString>
#include <QStringList>

/// What a tour found, for the user: pictures with captions, numbers, and what holds and what does not. Each
/// line is printed as it comes.
class Report
{
public:
    explicit Report(const QString &outFolder) : m_outFolder(outFolder) {}

    QString outFolder() const { return m_outFolder; }
    void heading(const QString &text);
    void note(const QString &text);
    /// Saves NAME.png.
    void picture(const QString &name, const QPixmap &pixels, const QString &caption);
    /// What has to hold; one that does not makes the whole report fail.
    void check(bool holds, const QString &what);
    /// Checks that a number lies within `bound` of the true one, and prints both.
    void checkNear(double measured, double truth, double bound, const QString &what);
    bool allHolds() const { return m_holds; }

    /// Writes all of it into FILE in the folder, after a last line that says whether everything holds.
    void write(const QString &file);

private:
    void tell(const QString &line);

    QString m_outFolder;
    QStringList m_lines;
    bool m_holds = true;
};
