// SPDX-License-Identifier: MIT
#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/clickinfo/ClickInfoValues.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSDataset_p.h"

using namespace clickinfo;

tag_edisplayunit CVXSDataset::getUnit() const
{
    return d->unit;
}

void CVXSDataset::setUnit(tag_edisplayunit unit)
{
    if (unit == d->unit || unit < EUNIT_COUNTS || unit >= EUNIT_COUNT)
        return;
    d->unit = unit;
    Q_EMIT unitChanged();
}

tag_edisplayunit CVXSDataset::getShownUnit() const
{
    const tag_edisplayunit unitless = d->unitlessValues();
    return unitless == EUNIT_COUNT ? d->unit : unitless;
}

double CVXSDataset::getBottomIlluminationPower() const
{
    const double power = numberOf(d->clickInfo, SECTION_LUMINESCENT, KEY_BOTTOM_POWER);
    return power > 0.0 ? power : 0.0;
}

const CVXSToolInfo &CVXSDataset::getToolInfo() const
{
    return d->toolInfo;
}

void CVXSDataset::setToolInfo(const CVXSToolInfo &info)
{
    const CVXSToolInfo &is = d->toolInfo;
    if (info.reversed == is.reversed && info.logarithmic == is.logarithmic &&
        info.brightness == is.brightness && info.gamma == is.gamma)
        return;
    d->toolInfo = info;
    d->writeDisplay();
    Q_EMIT displayChanged();
}

tag_ecolortable CVXSDataset::getColorTable() const
{
    return d->colorTable;
}

void CVXSDataset::setColorTable(tag_ecolortable table)
{
    if (table == d->colorTable || !CILPalette::tableName(table))
        return;
    d->colorTable = table;
    d->writeDisplay();
    Q_EMIT displayChanged();
}

void CVXSDataset::Private::readDisplay()
{
    tag_edisplayunit stored;
    if (unitOfKey(textOf(clickInfo, SECTION_GRAPH_CONTROLS, KEY_INTENSITY_CALIBRATION), &stored))
        unit = stored;
    const QByteArray table = textOf(clickInfo, SECTION_GRAPH_CONTROLS, KEY_COLOR_TABLE).toUtf8();
    colorTable = CILPalette::tableOfName(table.constData(), colorTable);
    toolInfo.reversed = flagOf(clickInfo, SECTION_GRAPH_CONTROLS, KEY_REVERSED);
    toolInfo.logarithmic = flagOf(clickInfo, SECTION_GRAPH_CONTROLS, KEY_COLOR_TABLE_LOG);
    toolInfo.brightness = textOf(clickInfo, SECTION_GRAPH_CONTROLS, KEY_BRIGHTNESS).toInt();
    const double gamma = numberOf(clickInfo, SECTION_GRAPH_CONTROLS, KEY_GAMMA);
    if (gamma > 0.0)
        toolInfo.gamma = float(gamma);
}

void CVXSDataset::Private::writeDisplay()
{
    CPLSection *section = ensureSection(&clickInfo, SECTION_GRAPH_CONTROLS);
    section->setValue(KEY_COLOR_TABLE, QString::fromLatin1(CILPalette::tableName(colorTable)));
    section->setValue(KEY_REVERSED, textOfFlag(toolInfo.reversed));
    section->setValue(KEY_COLOR_TABLE_LOG, textOfFlag(toolInfo.logarithmic));
    section->setValue(KEY_BRIGHTNESS, toolInfo.brightness);
    section->setValue(KEY_GAMMA, QString::number(double(toolInfo.gamma), 'g', 9));
    isModified = true;
}

CILPalette CVXSDataset::Private::palette() const
{
    CILPalette palette;
    palette.SetColorTable(colorTable, 0.0, 0.0, toolInfo.reversed, 0);
    palette.setLogScale(toolInfo.logarithmic);
    return palette;
}
