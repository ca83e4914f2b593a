// SPDX-License-Identifier: MIT
#include "host/vxapi/view/windows/DatasetText.h"

#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/clickinfo/ClickInfoValues.h"
#include "host/vxapi/model/CVXSDataset.h"

#include <QCoreApplication>
#include <QStringList>

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(DatasetText)
};

} // namespace

QString datasetKindText(const CVXSDataset &dataset)
{
    if (dataset.getDatasetType() == EDATASET_RESULT)
        return Text::tr("Image Math result");
    if (dataset.isTransIlluminationDataset())
        return Text::tr("Transillumination");
    if (dataset.isTransFluorescentDataset())
        return Text::tr("Transfluorescence");
    if (dataset.isFluorescentDataset())
        return Text::tr("Fluorescence");
    if (dataset.isLuminescentDataset())
        return Text::tr("Luminescence");
    if (dataset.getImageList()->isPresent(EIMAGE_PHOTOGRAPH))
        return Text::tr("Photograph");
    if (dataset.getImageList()->isPresent(EIMAGE_XRAY))
        return Text::tr("X-ray");
    return Text::tr("No image");
}

QString sourceFileText(const CVXSDataset &dataset)
{
    using namespace clickinfo;
    if (isMathResult(*dataset.getClickInfo()))
        return QString();
    const QString file = sourceFileOf(*dataset.getClickInfo(), SECTION_LUMINESCENT);
    return file.isEmpty() ? sourceFileOf(*dataset.getClickInfo(), SECTION_PHOTOGRAPH) : file;
}

QString clickAndSourceText(const CVXSDataset &dataset)
{
    const QString file = sourceFileText(dataset);
    return file.isEmpty() ? dataset.getClickNumber()
                          : Text::tr("%1 - %2").arg(dataset.getClickNumber(), file);
}

QString correctionText(const CVXSDataset &dataset)
{
    QStringList parts;
    if (dataset.isLuminBackgroundSubtracted())
        parts.append(Text::tr("background subtracted"));
    if (dataset.isLuminFLBkgSubtracted())
        parts.append(Text::tr("fluorescent background subtracted"));
    if (dataset.isLuminFlatFieldCorrected())
        parts.append(Text::tr("flat-field corrected"));
    return parts.join(QStringLiteral(", "));
}
