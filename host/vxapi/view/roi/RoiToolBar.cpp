// SPDX-License-Identifier: MIT
#include "host/vxapi/view/roi/RoiToolBar.h"

#include "host/vxapi/model/CROIManager.h"
#include "host/vxapi/model/roi/RoiMimeData.h"
#include "host/vxapi/view/roi/RoiEditor.h"
#include "host/vxapi/view/roi/RoiIcons.h"

#include <QActionGroup>
#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QInputDialog>
#include <QLabel>
#include <QSpinBox>

namespace {

constexpr int MOST_ROWS = 100; ///< and columns: so many make as many cells as a grid may have

struct Tool
{
    EROITOOL tool;
    const char *name;
    const char *text;
    const char *tip;
};

constexpr Tool TOOLS[] = {
    {EROITOOL_SELECT, "RoiSelectTool", QT_TRANSLATE_NOOP("RoiToolBar", "Select"),
     QT_TRANSLATE_NOOP("RoiToolBar", "Select, move and resize ROIs with the mouse or the arrow keys")},
    {EROITOOL_RECTANGLE, "RoiRectangleTool", QT_TRANSLATE_NOOP("RoiToolBar", "Rectangle"),
     QT_TRANSLATE_NOOP("RoiToolBar", "Draw a rectangle (with Shift: a square)")},
    {EROITOOL_ELLIPSE, "RoiEllipseTool", QT_TRANSLATE_NOOP("RoiToolBar", "Ellipse"),
     QT_TRANSLATE_NOOP("RoiToolBar", "Draw an ellipse (with Shift: a circle)")},
    {EROITOOL_GRID, "RoiGridTool", QT_TRANSLATE_NOOP("RoiToolBar", "Grid"),
     QT_TRANSLATE_NOOP("RoiToolBar", "Draw a grid of rows and columns; each cell is measured")},
    {EROITOOL_POLYGON, "RoiPolygonTool", QT_TRANSLATE_NOOP("RoiToolBar", "Polygon"),
     QT_TRANSLATE_NOOP(
         "RoiToolBar",
         "Click the corners of a polygon; a double click or Return ends it, Escape cancels it")},
    {EROITOOL_FREEHAND, "RoiFreehandTool", QT_TRANSLATE_NOOP("RoiToolBar", "Free-hand"),
     QT_TRANSLATE_NOOP("RoiToolBar", "Draw an outline in one stroke")}};

constexpr char TIP[] = "tip"; ///< an action's own tooltip, while it shows an obstacle

} // namespace

RoiToolBar::RoiToolBar(CROIManager *manager, RoiEditor *editor, QWidget *parent)
    : QToolBar(parent), m_manager(manager), m_editor(editor), m_tools(new QActionGroup(this))
{
    setObjectName(QStringLiteral("RoiToolBar"));
    setIconSize(QSize(20, 20));
    addTools();
    addGridSize();
    addSeparator();
    addKind();
    addSeparator();
    addCommands();
    const QList<QAction *> all = actions();
    for (QAction *action : all)
        action->setProperty(TIP, action->toolTip());
    connect(editor, &RoiEditor::toolChanged, this, &RoiToolBar::showTool);
    connect(editor, &RoiEditor::renameRequested, this, &RoiToolBar::rename);
    if (manager) {
        connect(manager, &CROIManager::selectionChanged, this, &RoiToolBar::showSelection);
        connect(manager, &CROIManager::roisChanged, this, &RoiToolBar::showSelection);
    }
    connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, this, &RoiToolBar::showClipboard);
    showTool(editor->drawing().tool);
    showSelection();
    showClipboard();
}

void RoiToolBar::addTools()
{
    for (const Tool &tool : TOOLS) {
        QAction *action = addAction(roiToolIcon(tool.tool), tr(tool.text));
        action->setObjectName(QLatin1String(tool.name));
        action->setToolTip(tr(tool.tip));
        action->setCheckable(true);
        action->setData(tool.tool);
        m_tools->addAction(action);
        widgetForAction(action)->setObjectName(QLatin1String(tool.name) + QLatin1String("Button"));
        const EROITOOL code = tool.tool;
        connect(action, &QAction::triggered, this, [this, code] { m_editor->setTool(code); });
    }
}

void RoiToolBar::addGridSize()
{
    auto *box = new QWidget(this);
    auto *layout = new QHBoxLayout(box);
    layout->setContentsMargins(4, 0, 4, 0);
    const auto add = [&](const char *name, const QString &tip, int value) {
        auto *spin = new QSpinBox(box);
        spin->setObjectName(QLatin1String(name));
        spin->setToolTip(tip);
        spin->setRange(1, MOST_ROWS);
        spin->setValue(value);
        layout->addWidget(spin);
        connect(spin, QOverload<int>::of(&QSpinBox::valueChanged), this,
                [this] { m_editor->setGridSize(m_rows->value(), m_columns->value()); });
        return spin;
    };
    m_rows = add("RoiGridRows", tr("Rows of the grid"), m_editor->drawing().rows);
    layout->addWidget(new QLabel(QStringLiteral("×"), box));
    m_columns = add("RoiGridColumns", tr("Columns of the grid"), m_editor->drawing().columns);
    m_gridSize = addWidget(box);
}

void RoiToolBar::addKind()
{
    m_kind = new QComboBox(this);
    m_kind->setObjectName(QStringLiteral("RoiKind"));
    m_kind->addItem(tr("Measurement"), EROI_MEASUREMENT);
    m_kind->addItem(tr("Background"), EROI_BACKGROUND);
    m_kind->setToolTip(tr("Kind of the selected ROIs and of those that are drawn next"));
    addWidget(m_kind)->setToolTip(m_kind->toolTip());
    connect(m_kind, QOverload<int>::of(&QComboBox::activated), this, [this] {
        const auto kind = EROIKIND(m_kind->currentData().toInt());
        m_editor->setKind(kind);
        m_editor->setKindOfSelected(kind);
    });
}

QAction *RoiToolBar::addCommand(const char *name, const QString &text, const QString &tip,
                                std::function<void()> command)
{
    QAction *action = addAction(text);
    action->setObjectName(QLatin1String(name));
    action->setToolTip(tip);
    widgetForAction(action)->setObjectName(QLatin1String(name) + QLatin1String("Button"));
    connect(action, &QAction::triggered, this, std::move(command));
    return action;
}

void RoiToolBar::addCommands()
{
    m_needSelection = {
        addCommand("RoiRename", tr("Rename..."), tr("Rename the selected ROI (F2)"), [this] { rename(); }),
        addCommand("RoiDelete", tr("Delete"), tr("Delete the selected ROIs (Del)"),
                   [this] { m_editor->removeSelected(); }),
        addCommand("RoiCopy", tr("Copy"),
                   tr("Copy the selected ROIs, to paste them here or in another dataset (Ctrl+C)"),
                   [this] { m_editor->copySelected(); })};
    m_paste = addCommand("RoiPaste", tr("Paste"),
                         tr("Paste the copied ROIs at the same places of the field of view (Ctrl+V)"),
                         [this] { m_editor->paste(); });
}

void RoiToolBar::showTool(EROITOOL tool)
{
    const QList<QAction *> all = m_tools->actions();
    for (QAction *action : all) {
        if (action->data().toInt() == tool)
            action->setChecked(true);
    }
    m_gridSize->setVisible(tool == EROITOOL_GRID);
}

void RoiToolBar::showSelection()
{
    const CROIBase *selected = m_manager ? m_manager->selectedROI() : nullptr;
    for (QAction *action : qAsConst(m_needSelection))
        action->setEnabled(selected);
    if (!selected)
        return;
    // What the bar shows is what is drawn next.
    m_kind->setCurrentIndex(m_kind->findData(selected->kind()));
    m_editor->setKind(selected->kind());
}

void RoiToolBar::showClipboard()
{
    m_paste->setEnabled(roimime::isPresent(QGuiApplication::clipboard()->mimeData()));
}

void RoiToolBar::setObstacle(const QString &reason)
{
    setEnabled(reason.isEmpty());
    setToolTip(reason);
    const QList<QAction *> all = actions();
    for (QAction *action : all)
        action->setToolTip(reason.isEmpty() ? action->property(TIP).toString() : reason);
    m_kind->setToolTip(reason.isEmpty() ? tr("Kind of the selected ROIs and of those that are drawn next")
                                        : reason);
    if (!reason.isEmpty())
        m_editor->setTool(EROITOOL_SELECT);
}

void RoiToolBar::rename()
{
    const CROIBase *selected = m_manager ? m_manager->selectedROI() : nullptr;
    if (!selected)
        return;
    const QString before = selected->name();
    // Others may remove the ROI, or close this window, while the question is open.
    const QPointer<QInputDialog> dialog = new QInputDialog(this);
    dialog->setObjectName(QStringLiteral("RenameRoiDialog"));
    dialog->setWindowTitle(tr("Rename ROI"));
    dialog->setLabelText(tr("New name of \"%1\":").arg(before));
    dialog->setTextValue(before);
    const bool isAccepted = dialog->exec() == QDialog::Accepted;
    if (!dialog)
        return;
    const QString name = dialog->textValue().trimmed();
    delete dialog.data();
    CROIBase *roi = nullptr;
    if (!isAccepted || name == before || !m_manager || !m_manager->getROI(before, roi))
        return;
    if (m_manager->renameROI(roi, name))
        return;
    Q_EMIT messageChanged(name.isEmpty() ? tr("\"%1\" keeps its name: the new one is empty.").arg(before)
                                         : tr("\"%1\" keeps its name: \"%2\" is taken.").arg(before, name));
}
