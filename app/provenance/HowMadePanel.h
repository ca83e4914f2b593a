// SPDX-License-Identifier: MIT
#pragma once

#include "app/provenance/HowMadeText.h"
#include "check/ResultCheck.h"

#include <QDockWidget>
#include <QHash>
#include <QPointer>

class CVXSChildWindow;
class CVXSDataset;
class VerdictStrip;
class WrappedText;
class QGridLayout;
class QPushButton;
class QScrollArea;
class QVBoxLayout;
class RecentSequences;

/// The panel that tells how the result in the active window was made, and computes it again on request. It
/// comes by itself with a result, until the user closes it; from then on only the View menu brings it back.
///
///     auto *panel = new HowMadePanel(recentSequences, mainWindow);
///     mainWindow->addDockWidget(Qt::RightDockWidgetArea, panel);
///     connect(workspace, &CVXSWorkspace::activeChildChanged, panel, &HowMadePanel::setActiveChild);
///     viewMenu->addAction(panel->toggleViewAction());
///
/// What it tells comes from check/StoredRecord as rows (HowMadeText); what a check found stands above them
/// (VerdictStrip). The record is read when the panel is seen, the pixels when the user asks for a check.
class HowMadePanel : public QDockWidget
{
    Q_OBJECT

public:
    /// `recent`: where operands are looked for that are not open.
    explicit HowMadePanel(const RecentSequences *recent, QWidget *parent = nullptr);

    /// The window whose result is told of; null, or one that shows no result: the panel says so.
    void setActiveChild(CVXSChildWindow *window);

    /// What "Copy" puts on the clipboard; empty without a result.
    QString text() const;

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void makeWidgets();
    void makeAction();
    void showResult();
    void showRows();
    void addRow(QGridLayout *grid, const HowMadeRow &row);
    void check();
    void showVerdict(const ResultCheck &verdict);
    void copy() const;

    const RecentSequences *m_recent;
    QPointer<CVXSDataset> m_result; ///< null: the active window shows none
    QVector<HowMadeRow> m_rows;
    QString m_verdictText;                            ///< of the last check of this result; empty before
    QHash<const CVXSDataset *, ResultCheck> m_checks; ///< the last one of each that is open
    bool m_isWanted = true;
    bool m_isStale = true; ///< the active result changed while the panel was hidden

    WrappedText *m_title = nullptr;
    VerdictStrip *m_verdict = nullptr;
    QWidget *m_grid = nullptr;
    QVBoxLayout *m_rowsPlace = nullptr;
    QScrollArea *m_area = nullptr;
    QPushButton *m_checkButton = nullptr;
    QPushButton *m_copyButton = nullptr;
};
