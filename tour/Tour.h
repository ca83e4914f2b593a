// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <QString>
#include <QStringList>

class CVXSDataset;
class CVXSSequenceDataset;
class MainWindow;
class QWidget;

/// The way from the menu to the displayed result: every formula, a pair that cannot be combined, the
/// colour-scale choices, a typed k. Leaves a picture of each and summary.txt.
class Tour
{
public:
    Tour(MainWindow &window, CVXSSequenceDataset &sequence, const QString &outFolder);

    /// False when something that the tour checks did not hold; the summary says what.
    bool run();

private:
    QWidget *openImageMath();
    void selectPair(const QString &clickA, const QString &clickB);
    void picture(const QString &name, const QString &caption);
    void mainJob();
    void formulas();
    void pairsThatCannotBeCombined();
    void colorScales();
    void check(bool holds, const QString &what);
    QString firstClick(const std::function<bool(const CVXSDataset &)> &wanted, const QString &what) const;

    MainWindow &m_window;
    CVXSSequenceDataset &m_sequence;
    QString m_outFolder;
    QWidget *m_tool = nullptr;
    QStringList m_summary;
    bool m_holds = true;
};
