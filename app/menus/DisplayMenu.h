// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/VXTypes.h"

#include <QObject>
#include <QPointer>

class CVXSChildWindow;
class CVXSDataset;
class CVXSSequenceDataset;
class QAction;
class QActionGroup;
class QMenu;

/// How images are shown: unit, colour table, reversed, log scale. It changes the active sequence as a whole,
/// or the active dataset when that belongs to none.
class DisplayMenu : public QObject
{
    Q_OBJECT

public:
    /// Adds its actions to the menu.
    explicit DisplayMenu(QMenu *menu, QObject *parent = nullptr);

    /// The window whose sequence or dataset is changed; null: none, and the actions are disabled.
    void setActiveChild(CVXSChildWindow *window);

private:
    void addUnits(QMenu *menu);
    void addColors(QMenu *menu);
    void showState();
    void offerUnits();
    void applyUnit(tag_edisplayunit unit);
    void applyColors();

    QPointer<CVXSSequenceDataset> m_sequence;
    QMetaObject::Connection m_loading; ///< what the sequence can be shown in is known when it is there
    QPointer<CVXSDataset> m_dataset;   ///< only when it belongs to no sequence
    QActionGroup *m_units;
    QActionGroup *m_tables;
    QAction *m_reversed = nullptr;
    QAction *m_logScale = nullptr;
};
