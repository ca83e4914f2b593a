// SPDX-License-Identifier: MIT
#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/clickinfo/ClickInfoValues.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSDataset_p.h"

#include "host/vxutils/CVXSLog.h"

#include <algorithm>
#include <array>
#include <cmath>

using namespace clickinfo;

namespace {

constexpr std::array<QLatin1String, 3> MODES = {LIMITS_AUTO, LIMITS_FULL,
                                                LIMITS_MANUAL}; // in the order of ELIMITMODE

bool areUsable(const ColorLimits &limits)
{
    if (limits.mode != ELIMITS_MANUAL)
        return true;
    return std::isfinite(limits.low) && std::isfinite(limits.high) && limits.low <= limits.high &&
           limits.unit >= EUNIT_COUNTS && limits.unit < EUNIT_COUNT;
}

/// Whether they come to the same; numbers and unit are those of manual limits.
bool isSame(const ColorLimits &a, const ColorLimits &b)
{
    return a.mode == b.mode &&
           (a.mode != ELIMITS_MANUAL || (a.low == b.low && a.high == b.high && a.unit == b.unit));
}

} // namespace

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

std::optional<ColorLimits> CVXSDataset::getColorLimits() const
{
    return d->colorLimits;
}

void CVXSDataset::setColorLimits(const ColorLimits &limits)
{
    if (!areUsable(limits) || (d->colorLimits && isSame(*d->colorLimits, limits)))
        return;
    // What holds without a choice needs none; a result opens with limits of its own.
    if (!d->colorLimits && limits.mode == ELIMITS_AUTO && !d->isResult())
        return;
    d->colorLimits = limits;
    d->writeColorLimits();
    Q_EMIT displayChanged();
}

void CVXSDataset::Private::readColorLimits()
{
    if (!clickInfo[SECTION_COLOR_LIMITS])
        return;
    const QString mode = textOf(clickInfo, SECTION_COLOR_LIMITS, KEY_LIMITS_MODE);
    ColorLimits limits;
    limits.low = numberOf(clickInfo, SECTION_COLOR_LIMITS, KEY_LIMITS_MIN);
    limits.high = numberOf(clickInfo, SECTION_COLOR_LIMITS, KEY_LIMITS_MAX);
    const auto known = std::find(MODES.begin(), MODES.end(), mode);
    const bool isUnitKnown =
        unitOfKey(textOf(clickInfo, SECTION_COLOR_LIMITS, KEY_LIMITS_UNIT), &limits.unit);
    limits.mode = ELIMITMODE(known - MODES.begin());
    if (known != MODES.end() && (limits.mode != ELIMITS_MANUAL || isUnitKnown) && areUsable(limits)) {
        colorLimits = limits;
        return;
    }
    vxLog(ELOG_WARNING, tr("%1: the \"%2\" are damaged; the automatic ones are taken")
                            .arg(folder + FILE_CLICK_INFO, SECTION_COLOR_LIMITS));
}

void CVXSDataset::Private::writeColorLimits()
{
    CPLSection *section = ensureSection(&clickInfo, SECTION_COLOR_LIMITS);
    section->setValue(KEY_LIMITS_MODE, MODES[std::size_t(colorLimits->mode)]);
    isModified = true;
    if (colorLimits->mode != ELIMITS_MANUAL)
        return;
    section->setValue(KEY_LIMITS_MIN, textOfNumber(colorLimits->low));
    section->setValue(KEY_LIMITS_MAX, textOfNumber(colorLimits->high));
    section->setValue(KEY_LIMITS_UNIT, unitKey(colorLimits->unit));
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
    readColorLimits();
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
