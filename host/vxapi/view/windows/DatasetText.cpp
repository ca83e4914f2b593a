// SPDX-License-Identifier: MIT
#include "host/vxapi/view/windows/DatasetText.h"

#include "host/vxapi/model/CVXSDataset.h"

#include <QCoreApplication>
#include <QStringList>

namespace {

QString text(const char *source)
{
    return QCoreApplication::translate("DatasetText", source);
}

} // namespace

QString datasetKindText(const CVXSDataset &dataset)
{
    if (dataset.getDatasetType() == EDATASET_RESULT)
        return text("Image Math result");
    if (dataset.isTransIlluminationDataset())
        return text("Transillumination");
    if (dataset.isTransFluorescentDataset())
        return text("Transfluorescence");
    if (dataset.isFluorescentDataset())
        return text("Fluorescence");
    if (dataset.isLuminescentDataset())
        return text("Luminescence");
    if (dataset.getImageList()->isPresent(EIMAGE_PHOTOGRAPH))
        return text("Photograph");
    if (dataset.getImageList()->isPresent(EIMAGE_XRAY))
        return text("X-ray");
    return text("No image");
}

QString correctionText(const CVXSDataset &dataset)
{
    QStringList parts;
    if (dataset.isLuminBackgroundSubtracted())
        parts.append(text("background subtracted"));
    if (dataset.isLuminFLBkgSubtracted())
        parts.append(text("fluorescent background subtracted"));
    if (dataset.isLuminFlatFieldCorrected())
        parts.append(text("flat-field corrected"));
    return parts.join(QStringLiteral(", "));
}

QString unitText(tag_edisplayunit unit)
{
    switch (unit) {
    case EUNIT_COUNTS:
        return text("Counts");
    case EUNIT_RADIANCE:
        return text("Radiance [photons/s/cm²/sr]");
    case EUNIT_RADIANT_EFFICIENCY:
        return text("Radiant efficiency [(photons/s/cm²/sr) / (µW/cm²)]");
    case EUNIT_EFFICIENCY:
        return text("Efficiency");
    case EUNIT_COUNT:
        break;
    }
    return QString();
}
