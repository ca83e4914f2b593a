// SPDX-License-Identifier: MIT
#include "math/PairNotes.h"

#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/clickinfo/ClickInfoValues.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxparser/CPLClickInfo.h"
#include "math/FormText.h"
#include "math/ResultRecord.h"

#include <cmath>
#include <QSizeF>

using namespace clickinfo;

namespace imagemath {

namespace {

/// A setting of the acquisition, and how a difference is told: %1 is A's value, %2 B's.
struct Setting
{
    QLatin1String section;
    QLatin1String key;
    QString difference;
};

QVector<Setting> settings()
{
    return {{SECTION_LUMINESCENT, KEY_EXPOSURE, formText("A was exposed %1 s, B %2 s")},
            {SECTION_LUMINESCENT, KEY_FNUMBER, formText("A has f-number %1, B %2")},
            {SECTION_CAMERA, KEY_GAIN, formText("A has %1 electrons per count, B %2")},
            {SECTION_LUMINESCENT, KEY_TRANSMISSION, formText("A has a transmission of %1, B of %2")},
            {SECTION_LUMINESCENT, KEY_EXCITATION_FILTER, formText("A has excitation filter %1, B %2")},
            {SECTION_LUMINESCENT, KEY_EMISSION_FILTER, formText("A has emission filter %1, B %2")}};
}

/// The text of a value; numbers that are equal have equal texts.
QString valueOf(const CVXSDataset &dataset, const Setting &setting)
{
    const CPLClickInfo &info = *dataset.getClickInfo();
    const double number = numberOf(info, setting.section, setting.key);
    return std::isnan(number) ? textOf(info, setting.section, setting.key).trimmed() : textOfNumber(number);
}

void noteSaturation(const CVXSDataset &dataset, const QString &role, Notes *notes)
{
    const qint64 saturated = dataset.getSaturatedPixelCount();
    const CILImage *stored = saturated > 0 ? dataset.getCoreImage(EIMAGE_LUMINESCENT) : nullptr;
    if (!stored)
        return;
    notes->append({Note::Kind::Saturation, formText("%1 of %2 pixels of %3 are saturated (%4 counts or more)")
                                               .arg(saturated)
                                               .arg(stored->pixelCount())
                                               .arg(role, textOfNumber(dataset.getSaturationCeiling()))});
}

/// [cm]; NaN where it is not known.
QSizeF fieldOf(double width, const CILImage &image)
{
    return {width, width * image.getHeight() / image.getWidth()};
}

bool areDifferent(double a, double b)
{
    return std::abs(a - b) > 1e-6 * std::abs(b); // false for NaN
}

QString textOfField(const QSizeF &field)
{
    return QStringLiteral("%1 x %2").arg(QString::number(field.width(), 'g', 6),
                                         QString::number(field.height(), 'g', 6));
}

} // namespace

Notes saturationNotes(const CVXSDataset &a, const CVXSDataset &b)
{
    Notes notes;
    noteSaturation(a, QStringLiteral("A"), &notes);
    noteSaturation(b, QStringLiteral("B"), &notes);
    return notes;
}

Notes settingsNotes(const CVXSDataset &a, const CVXSDataset &b, tag_edisplayunit unit)
{
    if (unit != EUNIT_COUNTS)
        return {};
    QStringList differences;
    const QVector<Setting> all = settings();
    for (const Setting &setting : all) {
        const QString ofA = valueOf(a, setting);
        const QString ofB = valueOf(b, setting);
        if (!ofA.isEmpty() && !ofB.isEmpty() && ofA != ofB)
            differences += setting.difference.arg(ofA, ofB);
    }
    if (differences.isEmpty())
        return {};
    differences += formText("the unit is counts");
    return {{Note::Kind::Settings, differences.join(QStringLiteral("; "))}};
}

Notes correctionNotes(const OperandRecord &a, const OperandRecord &b, tag_edisplayunit unit)
{
    Notes notes;
    if (a.flatFieldCorrected != b.flatFieldCorrected && unit != EUNIT_EFFICIENCY)
        notes.append({Note::Kind::Correction, a.flatFieldCorrected
                                                  ? formText("A is corrected for the flat field, B is not")
                                                  : formText("B is corrected for the flat field, A is not")});
    if (a.backgroundSubtracted != b.backgroundSubtracted)
        notes.append({Note::Kind::Correction, a.backgroundSubtracted
                                                  ? formText("A has its background subtracted, B has not")
                                                  : formText("B has its background subtracted, A has not")});
    return notes;
}

Notes offsetNotes(const QString &role, const OperandRecord &operand, double binning, const CILImage &image)
{
    if (image.pixelsAdded() == 1.0 || operand.backgroundSubtracted)
        return {};
    return {
        {Note::Kind::Offset,
         formText(
             "%1 was binned from %2 to %3 by adding up counts and no background was subtracted: the camera's "
             "offset adds up as well, to %4 times what it was")
             .arg(role, textOfNumber(binning), textOfNumber(double(image.binningFactor())),
                  textOfNumber(image.pixelsAdded()))}};
}

Notes maskFieldNotes(const CVXSDataset &datasetB, const CILImage &photograph)
{
    const CILImage *luminescent = datasetB.getCoreImage(EIMAGE_LUMINESCENT);
    if (!luminescent || photograph.isEmpty())
        return {};
    const QSizeF mask = fieldOf(datasetB.getFOVForImage(EIMAGE_PHOTOGRAPH), photograph);
    const QSizeF image = fieldOf(datasetB.getFOVForImage(EIMAGE_LUMINESCENT), *luminescent);
    if (!areDifferent(mask.width(), image.width()) && !areDifferent(mask.height(), image.height()))
        return {};
    return {
        {Note::Kind::MaskField, formText("The photograph of B shows %1 cm, its image %2 cm; the tissue mask "
                                         "takes both for the same field")
                                    .arg(textOfField(mask), textOfField(image))}};
}

Notes valuesNotes(const CVXSDataset &a, const CVXSDataset &b, tag_edisplayunit unit)
{
    const auto valuesOf = [unit](const CVXSDataset &dataset) {
        return dataset.getShownUnit() < EUNIT_COUNT ? unit : dataset.getShownUnit();
    };
    if (valuesOf(a) == valuesOf(b))
        return {};
    return {
        {Note::Kind::Values, formText("A and B are of different kinds: %1 and %2")
                                 .arg(unitLabel(valuesOf(a)).toLower(), unitLabel(valuesOf(b)).toLower())}};
}

Notes roiNotes(const RoiOfK &roi, const OperandRecord &a, const OperandRecord &b, tag_edisplayunit unit)
{
    Notes notes;
    if (roi.inA.clickNumber != a.clickNumber || roi.inB.clickNumber != b.clickNumber)
        notes.append({Note::Kind::Values, formText("k is from the ROI \"%1\" of another pair, %2 and %3")
                                              .arg(roi.name, roi.inA.clickNumber, roi.inB.clickNumber)});
    else if (roi.unit != unitKey(unit))
        notes.append({Note::Kind::Values,
                      formText("k is from the ROI \"%1\" in another unit, %2").arg(roi.name, roi.unit)});
    QStringList saturated;
    if (roi.inA.saturatedPixels > 0)
        saturated += formText("%1 pixels of A").arg(roi.inA.saturatedPixels);
    if (roi.inB.saturatedPixels > 0)
        saturated += formText("%1 pixels of B").arg(roi.inB.saturatedPixels);
    if (!saturated.isEmpty() && notes.isEmpty())
        notes.append({Note::Kind::Saturation, formText("k is from the ROI \"%1\", where %2 are saturated")
                                                  .arg(roi.name, saturated.join(QStringLiteral(", ")))});
    return notes;
}

} // namespace imagemath
