// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/view/roi/RoiTypes.h"

#include <functional>
#include <QPointer>
#include <QToolBar>

class CROIManager;
class QActionGroup;
class QComboBox;
class QSpinBox;
class RoiEditor;

/// The tools for drawing ROIs, their kind, and what is done with those that are selected.
class VXAPI_EXPORT RoiToolBar : public QToolBar
{
    Q_OBJECT

public:
    /// `manager` may be null: then nothing can be done.
    RoiToolBar(CROIManager *manager, RoiEditor *editor, QWidget *parent = nullptr);
    /// Why nothing can be drawn: the bar is disabled then and its tooltips say so. Empty: it is enabled.
    void setObstacle(const QString &reason);
    /// Asks for the selected ROI's new name.
    void rename();

Q_SIGNALS:
    /// What went wrong.
    void messageChanged(const QString &text);

private:
    void addTools();
    void addGridSize();
    void addKind();
    void addCommands();
    QAction *addCommand(const char *name, const QString &text, const QString &tip,
                        std::function<void()> command);
    void showTool(EROITOOL tool);
    void showSelection();
    void showClipboard();

    QPointer<CROIManager> m_manager;
    RoiEditor *m_editor;
    QActionGroup *m_tools;
    QAction *m_gridSize = nullptr;
    QSpinBox *m_rows = nullptr;
    QSpinBox *m_columns = nullptr;
    QComboBox *m_kind = nullptr;
    QList<QAction *> m_needSelection;
    QAction *m_paste = nullptr;
};
