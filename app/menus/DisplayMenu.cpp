// SPDX-License-Identifier: MIT
#include "app/menus/DisplayMenu.h"

#include "app/menus/UnitOffer.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxapi/view/windows/CVXSChildWindow.h"
#include "host/vximage/CILPalette.h"
#include "host/vxutils/PlainToolTip.h"

#include <QAction>
#include <QActionGroup>
#include <QMenu>

namespace {

void setColors(CVXSDataset *dataset, const tag_simageadjust &adjust)
{
    CVXSToolInfo info = dataset->getToolInfo();
    info.reversed = adjust.reverse;
    info.logarithmic = adjust.logScale;
    dataset->setColorTable(adjust.colorTable);
    dataset->setToolInfo(info);
}

void checkAction(QActionGroup *group, int code)
{
    const QList<QAction *> actions = group->actions();
    for (QAction *action : actions)
        action->setChecked(action->data().toInt() == code);
}

} // namespace

DisplayMenu::DisplayMenu(QMenu *menu, QObject *parent)
    : QObject(parent), m_units(new QActionGroup(this)), m_tables(new QActionGroup(this))
{
    addUnits(menu);
    addColors(menu);
    // Others change these things as well, so the marks are set when they are about to be seen.
    connect(menu, &QMenu::aboutToShow, this, &DisplayMenu::showState);
    showState();
}

void DisplayMenu::addUnits(QMenu *menu)
{
    QMenu *units = menu->addMenu(tr("&Unit"));
    units->setObjectName(QStringLiteral("menuUnit"));
    units->setToolTipsVisible(true);
    for (int unit = 0; unit < EUNIT_COUNT; ++unit) {
        QAction *action = units->addAction(unitLabel(tag_edisplayunit(unit)));
        action->setCheckable(true);
        action->setData(unit);
        m_units->addAction(action);
    }
    connect(m_units, &QActionGroup::triggered, this,
            [this](QAction *action) { applyUnit(tag_edisplayunit(action->data().toInt())); });
}

void DisplayMenu::addColors(QMenu *menu)
{
    QMenu *tables = menu->addMenu(tr("&Color Table"));
    tables->setObjectName(QStringLiteral("menuColorTable"));
    for (int code = 0; code < VXS_CT_COUNT; ++code) {
        QAction *action =
            tables->addAction(QString::fromLatin1(CILPalette::tableName(VXS_COLORTABLE_TYPES(code))));
        action->setCheckable(true);
        action->setData(code);
        m_tables->addAction(action);
    }
    m_reversed = menu->addAction(tr("&Reversed Colors"));
    m_reversed->setObjectName(QStringLiteral("actionReversed"));
    m_reversed->setCheckable(true);
    m_logScale = menu->addAction(tr("&Log Scale"));
    m_logScale->setObjectName(QStringLiteral("actionLogScale"));
    m_logScale->setCheckable(true);
    connect(m_tables, &QActionGroup::triggered, this, &DisplayMenu::applyColors);
    connect(m_reversed, &QAction::triggered, this, &DisplayMenu::applyColors);
    connect(m_logScale, &QAction::triggered, this, &DisplayMenu::applyColors);
}

void DisplayMenu::setActiveChild(CVXSChildWindow *window)
{
    m_sequence = window ? window->getSequenceDataset() : nullptr;
    m_dataset = window ? window->getDataset() : nullptr;
    if (m_dataset && m_dataset->getSequenceDataset()) {
        m_sequence = m_dataset->getSequenceDataset();
        m_dataset = nullptr;
    }
    disconnect(m_loading);
    if (m_sequence)
        m_loading = connect(m_sequence, &CVXSSequenceDataset::loaded, this, &DisplayMenu::showState);
    showState();
}

void DisplayMenu::showState()
{
    // Datasets that are still to come would not get what is chosen.
    const bool any = m_dataset || (m_sequence && !m_sequence->isLoading());
    const bool hasUnit = !m_dataset || m_dataset->getShownUnit() < EUNIT_COUNT; // not of a ratio
    m_units->setEnabled(any && hasUnit);
    m_tables->setEnabled(any);
    m_reversed->setEnabled(any);
    m_logScale->setEnabled(any);
    if (!any)
        return;
    offerUnits(); // where the group is enabled
    tag_simageadjust adjust;
    if (m_sequence) {
        adjust = m_sequence->getImageAdjust();
    } else {
        adjust.colorTable = m_dataset->getColorTable();
        adjust.reverse = m_dataset->getToolInfo().reversed;
        adjust.logScale = m_dataset->getToolInfo().logarithmic;
    }
    checkAction(m_units, m_sequence ? m_sequence->getActiveUnit() : m_dataset->getUnit());
    checkAction(m_tables, adjust.colorTable);
    m_reversed->setChecked(adjust.reverse);
    m_logScale->setChecked(adjust.logScale);
}

void DisplayMenu::offerUnits()
{
    const QList<CVXSDataset *> datasets =
        m_sequence ? m_sequence->getDatasets() : QList<CVXSDataset *>{m_dataset};
    const QList<QAction *> actions = m_units->actions();
    for (QAction *action : actions) {
        const UnitOffer offer = UnitOffer::of(datasets, tag_edisplayunit(action->data().toInt()));
        action->setEnabled(offer.isPossible);
        action->setToolTip(plainToolTip(offer.remark));
    }
}

void DisplayMenu::applyUnit(tag_edisplayunit unit)
{
    if (m_sequence)
        m_sequence->setActiveUnit(unit);
    else if (m_dataset)
        m_dataset->setUnit(unit);
}

void DisplayMenu::applyColors()
{
    tag_simageadjust adjust;
    if (const QAction *table = m_tables->checkedAction())
        adjust.colorTable = VXS_COLORTABLE_TYPES(table->data().toInt());
    adjust.reverse = m_reversed->isChecked();
    adjust.logScale = m_logScale->isChecked();
    if (m_sequence) {
        const QList<CVXSDataset *> datasets = m_sequence->getDatasets();
        for (CVXSDataset *dataset : datasets)
            setColors(dataset, adjust);
        CVXSToolInfo info = m_sequence->getToolInfo();
        info.reversed = adjust.reverse;
        info.logarithmic = adjust.logScale;
        m_sequence->setToolInfo(info);
        m_sequence->setImageAdjust(adjust);
    } else if (m_dataset) {
        setColors(m_dataset, adjust);
    }
}
