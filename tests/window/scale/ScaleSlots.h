// SPDX-License-Identifier: MIT
#pragma once

// What the tests of the colour-range slots share: a study whose clicks calibrate differently, and palettes as
// texts.

#include "display/ColorScale.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxapi/model/VXCalibration.h"
#include "tests/support/TestStudy.h"

#include <QString>

namespace scaleslots {

const QString A = "AB20260102030405", B = "AB20260102030406", POWER_A = "AB20260102030407",
              POWER_B = "AB20260102030408", TRANS_A = "AB20260102030409", TRANS_B = "AB20260102030410";

inline void fill(TestStudy &study)
{
    ClickSpec spec;
    const auto add = [&](const QString &number, const char *exposure, const char *power, QLatin1String kind) {
        spec.clickNumber = number;
        spec.kind = kind;
        spec.luminescentKeys = {{clickinfo::KEY_EXPOSURE, exposure}};
        if (power)
            spec.luminescentKeys.insert(clickinfo::KEY_BOTTOM_POWER, power);
        study.add(spec);
    };
    add(A, "60", nullptr, clickinfo::KIND_LUMINESCENT);
    add(B, "6", nullptr, clickinfo::KIND_LUMINESCENT);
    add(POWER_A, "60", "4", clickinfo::KIND_FLUORESCENT);
    add(POWER_B, "6", "0.5", clickinfo::KIND_FLUORESCENT);
    add(TRANS_A, "60", nullptr, clickinfo::KIND_TRANSILLUMINATION);
    add(TRANS_B, "6", nullptr, clickinfo::KIND_TRANSILLUMINATION);
}

inline CILPalette palette(VXS_COLORTABLE_TYPES table, double min, double max, bool reversed, bool log)
{
    CILPalette made;
    made.SetColorTable(table, min, max, reversed, 0);
    made.setLogScale(log);
    return made;
}

inline QString text(const CILPalette &p)
{
    return QString("table %1, %2 to %3%4%5")
        .arg(int(p.getColorTableType()))
        .arg(p.getImageMin(), 0, 'g', 17)
        .arg(p.getImageMax(), 0, 'g', 17)
        .arg(p.isReversed() ? ", reversed" : "", p.isLogScale() ? ", log" : "");
}

/// How a sequence is shown: colour table, direction and scale.
inline void show(CVXSSequenceDataset *sequence, int table, bool reversed, bool logarithmic)
{
    tag_simageadjust adjust;
    adjust.colorTable = VXS_COLORTABLE_TYPES(table);
    sequence->setImageAdjust(adjust);
    CVXSToolInfo info;
    info.reversed = reversed;
    info.logarithmic = logarithmic;
    sequence->setToolInfo(info);
}

/// As it was before any test.
inline void showAtFirst(CVXSSequenceDataset *sequence)
{
    sequence->setActiveUnit(EUNIT_COUNTS);
    sequence->setToolInfo(CVXSToolInfo());
    sequence->setImageAdjust(tag_simageadjust());
}

/// The automatic range that the host finds; on failure as it was handed in.
inline colorscale::Limits hostRange(CILImage image, const QString &unit, double factor,
                                    colorscale::Limits limits = {})
{
    VX_LuminImageMinMax(&image, &limits.min, &limits.max, unit, factor, 65000.0, 25000);
    return limits;
}

} // namespace scaleslots
