// SPDX-License-Identifier: MIT
#include "app/provenance/HowMadePanel.h"

#include "app/datasets/RecentSequences.h"
#include "app/provenance/VerdictStrip.h"
#include "app/provenance/WrappedText.h"
#include "check/StoredRecord.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/view/canvas/KeepInSight.h"
#include "host/vxapi/view/windows/CVXSChildWindow.h"
#include "host/vxapi/view/windows/CVXSMdiSubWindow.h"
#include "host/vxutils/CVXPreference.h"
#include "host/vxutils/CVXSLog.h"
#include "host/vxutils/PlainToolTip.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSettings>
#include <QTimer>
#include <QVBoxLayout>

namespace {

constexpr char KEY_WANTED[] = "HowMadePanel/comesWithResults";
constexpr int WIDTH = 300; // a shortened hash in one line
constexpr int MAX_TOOL_TIP = 2000;

QLabel *newText(const QString &text)
{
    auto *label = new QLabel(text);
    label->setTextFormat(Qt::PlainText); // what a file says is no markup
    label->setWordWrap(true);
    label->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    return label;
}

/// As text that wraps, a line for each value.
QString toolTipOf(const QString &text)
{
    if (text.isEmpty())
        return QString();
    QString lines = text.left(MAX_TOOL_TIP);
    lines.replace(QLatin1String("; "), QLatin1String("\n"));
    return plainToolTip(lines);
}

/// The panel takes its place from the area of the windows: the result that it came with stays whole in it.
void moveIntoSight(CVXSChildWindow *window)
{
    const auto move = [guarded = QPointer<CVXSChildWindow>(window)] {
        CVXSMdiSubWindow *frame = guarded ? guarded->subWindow() : nullptr;
        if (!frame || frame->isMaximized())
            return;
        const QRect area = frame->parentWidget()->rect();
        if (frame->geometry().right() > area.right())
            frame->move(placeInSight(frame->pos(), frame->size(), area).x(), frame->y());
    };
    QTimer::singleShot(0, window, move); // when the areas have their new sizes
}

QFont bold(const QFont &font)
{
    QFont heavier = font;
    heavier.setBold(true);
    return heavier;
}

} // namespace

HowMadePanel::HowMadePanel(const RecentSequences *recent, QWidget *parent)
    : QDockWidget(tr("How this was made"), parent), m_recent(recent)
{
    setObjectName(QStringLiteral("howMadePanel")); // by which the window's state is restored
    setAllowedAreas(Qt::LeftDockWidgetArea | Qt::RightDockWidgetArea);
    m_isWanted = CVXPreference::settings()->value(KEY_WANTED, true).toBool();
    makeWidgets();
    makeAction();
    connect(this, &QDockWidget::visibilityChanged, this, [this](bool isVisible) {
        if (isVisible && m_isStale)
            showResult();
    });
    showRows();
}

void HowMadePanel::makeWidgets()
{
    auto *content = new QWidget(this);
    m_title = new WrappedText;
    m_title->setObjectName(QStringLiteral("howMadeTitle"));
    m_title->setFont(bold(font()));
    // Both scroll: a check may have much to say, and must not push the window larger than the screen.
    auto *told = new QWidget;
    m_verdict = new VerdictStrip(told);
    m_rowsPlace = new QVBoxLayout;
    auto *column = new QVBoxLayout(told);
    column->setContentsMargins(0, 0, 4, 0);
    column->addWidget(m_verdict);
    column->addLayout(m_rowsPlace);
    column->addStretch(1);
    m_area = new QScrollArea(content);
    m_area->setWidget(told);
    m_area->setWidgetResizable(true);
    m_area->setFrameShape(QFrame::NoFrame);
    m_area->setMinimumWidth(WIDTH);
    m_area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);

    m_checkButton = new QPushButton(tr("&Check"), content);
    m_checkButton->setObjectName(QStringLiteral("howMadeCheck"));
    m_checkButton->setToolTip(tr("Compute the result again from its operands and compare every pixel"));
    connect(m_checkButton, &QPushButton::clicked, this, &HowMadePanel::check);
    m_copyButton = new QPushButton(tr("C&opy"), content);
    m_copyButton->setObjectName(QStringLiteral("howMadeCopy"));
    m_copyButton->setToolTip(tr("Copy all of this as text, with the hashes in full"));
    connect(m_copyButton, &QPushButton::clicked, this, &HowMadePanel::copy);

    auto *buttons = new QHBoxLayout;
    buttons->addWidget(m_checkButton);
    buttons->addWidget(m_copyButton);
    buttons->addStretch(1);
    auto *layout = new QVBoxLayout(content);
    layout->addWidget(m_title);
    layout->addWidget(m_area, 1);
    layout->addLayout(buttons);
    setWidget(content);
}

void HowMadePanel::makeAction()
{
    QAction *action = toggleViewAction();
    action->setObjectName(QStringLiteral("actionHowMadePanel"));
    action->setText(tr("&How This Was Made"));
    connect(action, &QAction::triggered, this, [this](bool isShown) {
        if (isShown) {
            m_isWanted = true;
            CVXPreference::settings()->setValue(KEY_WANTED, true);
        }
    });
}

void HowMadePanel::closeEvent(QCloseEvent *event)
{
    m_isWanted = false;
    CVXPreference::settings()->setValue(KEY_WANTED, false);
    QDockWidget::closeEvent(event);
}

void HowMadePanel::setActiveChild(CVXSChildWindow *window)
{
    CVXSDataset *dataset = window ? window->getDataset() : nullptr;
    if (dataset && dataset->getDatasetType() != EDATASET_RESULT)
        dataset = nullptr;
    if (dataset && dataset == m_result)
        return;
    m_result = dataset;
    m_isStale = true;
    if (m_result && m_isWanted && isHidden()) {
        show();
        moveIntoSight(window);
    }
    if (isVisible() && m_isStale)
        showResult();
}

// The record is read only for a panel that is seen.
void HowMadePanel::showResult()
{
    m_isStale = false;
    // A verdict stands until the next check, whatever window was active in between.
    const auto checked = m_result ? m_checks.constFind(m_result.data()) : m_checks.constEnd();
    m_verdictText.clear();
    m_verdict->hide();
    if (checked != m_checks.constEnd())
        showVerdict(*checked);
    m_rows = m_result ? howmade::rowsOf(*m_result, StoredRecord::of(*m_result)) : QVector<HowMadeRow>();
    showRows();
}

void HowMadePanel::showRows()
{
    m_title->setText(m_result ? m_result->getClickNumber() : QString());
    m_title->setVisible(m_result);
    m_checkButton->setEnabled(m_result);
    m_copyButton->setEnabled(m_result);

    delete m_grid;
    m_grid = new QWidget;
    m_grid->setObjectName(QStringLiteral("howMadeRows"));
    auto *grid = new QGridLayout(m_grid);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(10);
    grid->setVerticalSpacing(3);
    grid->setColumnStretch(1, 1);
    for (const HowMadeRow &row : qAsConst(m_rows))
        addRow(grid, row);
    if (!m_result)
        grid->addWidget(newText(tr("The active window shows no result of image math. Open a result, or "
                                   "click on its window, to see how it was made.")),
                        0, 0, 1, 2);
    m_rowsPlace->addWidget(m_grid);
}

void HowMadePanel::addRow(QGridLayout *grid, const HowMadeRow &row)
{
    const int line = grid->rowCount();
    if (row.kind == HowMadeRow::Kind::Heading) {
        QLabel *heading = newText(row.name);
        heading->setFont(bold(font()));
        heading->setContentsMargins(0, 8, 0, 0);
        grid->addWidget(heading, line, 0, 1, 2);
        return;
    }
    auto *value = new WrappedText(row.value);
    value->setToolTip(toolTipOf(row.full));
    if (row.kind == HowMadeRow::Kind::Remark) {
        grid->addWidget(value, line, 0, 1, 2);
        return;
    }
    QLabel *name = newText(row.name);
    name->setWordWrap(false);
    grid->addWidget(name, line, 0);
    grid->addWidget(value, line, 1);
}

void HowMadePanel::check()
{
    if (!m_result)
        return;
    const QString name = m_result->getClickNumber();
    m_checkButton->setEnabled(false);
    m_checkButton->repaint();
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const ResultCheck verdict = ResultCheck::of(*m_result, m_recent->folders());
    QApplication::restoreOverrideCursor();
    if (!m_checks.contains(m_result))
        connect(m_result, &QObject::destroyed, this,
                [this, gone = m_result.data()] { m_checks.remove(gone); });
    m_checks.insert(m_result, verdict);
    showVerdict(verdict);
    m_area->verticalScrollBar()->setValue(0);
    m_checkButton->setEnabled(true);
    vxLog(verdict.level(), tr("%1 checked. %2").arg(name, verdict.headline),
          verdict.lines.join(QLatin1Char(' ')));
}

void HowMadePanel::showVerdict(const ResultCheck &verdict)
{
    m_verdict->tell(verdict);
    m_verdictText = verdict.headline + QLatin1Char('\n') + verdict.lines.join(QLatin1Char('\n'));
}

QString HowMadePanel::text() const
{
    if (!m_result)
        return QString();
    QString text = m_result->getClickNumber() + QLatin1Char('\n') + howmade::plainText(m_rows);
    if (!m_verdictText.isEmpty())
        text += QLatin1Char('\n') + m_verdictText + QLatin1Char('\n');
    return text;
}

void HowMadePanel::copy() const
{
    QApplication::clipboard()->setText(text());
}
