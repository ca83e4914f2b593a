// SPDX-License-Identifier: MIT
#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/clickinfo/ClickInfoValues.h"
#include "host/vxapi/model/clickinfo/ConstantRanges.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSDataset_p.h"
#include "host/vxapi/model/VXCalibration.h"
#include "host/vximage/PixelCount.h"
#include "host/vxutils/CVXSLog.h"

#include <cmath>
#include <limits>

using namespace clickinfo;

namespace {

bool isByte(VXSDataTypes type)
{
    return type == VXS_UINT8 || type == VXS_MASK;
}

} // namespace

const CVXSImageList *CVXSDataset::getImageList() const
{
    return &d->images.list();
}

CILImage *CVXSDataset::getCoreImage(tag_eimagetype type) const
{
    if (!DatasetImages::isImageType(type))
        return nullptr;
    const bool wasLoaded = d->images.isLoaded(type);
    CILImage *image = d->coreImage(type);
    const QString error = d->images.error(type);
    if (error.isEmpty())
        return image;
    d->lastError = error;
    if (!wasLoaded)
        vxLog(ELOG_FAILURE, tr("%1: the %2 cannot be read: %3")
                                .arg(d->clickNumber, tr(DatasetImages::kind(type).name), error));
    return image;
}

CILImage *CVXSDataset::Private::coreImage(tag_eimagetype type)
{
    const bool wasLoaded = images.isLoaded(type);
    CILImage *image = images.image(type, folder);
    if (image && !wasLoaded && type == EIMAGE_LUMINESCENT)
        image->setBinningFactor(float(binningFactor()));
    return image;
}

QString CVXSDataset::getImageFileName(tag_eimagetype type) const
{
    return DatasetImages::isImageType(type) ? d->images.fileName(type) : QString();
}

bool CVXSDataset::isImageFileAsRead(tag_eimagetype type) const
{
    return !DatasetImages::isImageType(type) || d->images.isFileAsRead(type, d->folder);
}

double CVXSDataset::getSaturationCeiling() const
{
    const CILImage *stored = d->isResult() ? nullptr : getCoreImage(EIMAGE_LUMINESCENT);
    if (!stored)
        return std::numeric_limits<double>::quiet_NaN();
    return isByte(stored->getType()) ? double(std::numeric_limits<std::uint8_t>::max()) : VX_SATURATED_COUNTS;
}

qint64 CVXSDataset::getSaturatedPixelCount() const
{
    const double ceiling = getSaturationCeiling();
    if (std::isnan(ceiling))
        return -1;
    const CILImage &stored = *getCoreImage(EIMAGE_LUMINESCENT);
    // Asked for at every computation. An image without content ID may be written by someone.
    SaturatedPixels &known = d->saturated;
    if (known.content == 0 || known.content != stored.contentId())
        known = {stored.contentId(), qint64(ilCountAtOrAbove(stored, ceiling))};
    return known.count;
}

void CVXSDataset::setCoreImage(tag_eimagetype type, const CILImage &image)
{
    if (!DatasetImages::isImageType(type) || image.isEmpty()) {
        d->lastError = tr("%1: an empty image cannot be set").arg(d->clickNumber);
        vxLog(ELOG_FAILURE, d->lastError);
        return;
    }
    d->images.set(type, image, &d->clickInfo);
    if (type == EIMAGE_LUMINESCENT) {
        ensureSection(&d->clickInfo, SECTION_LUMINESCENT)
            ->setValue(KEY_BINNING, textOfNumber(double(image.binningFactor())));
    }
    d->isModified = true;
    Q_EMIT calibrationChanged();
}

double CVXSDataset::Private::binningFactor()
{
    const double binning = numberOf(clickInfo, SECTION_LUMINESCENT, KEY_BINNING);
    if (!constantRange(KEY_BINNING).holds(binning))
        return 1.0;
    const double exact = isResult() ? images.recordedBinning(folder) : binning;
    return std::trunc(exact) == binning ? exact : binning; // who edited ClickInfo means it
}

double CVXSDataset::getBinningFactor() const
{
    return d->binningFactor();
}

double CVXSDataset::getFOVForImage(tag_eimagetype type) const
{
    const double width = DatasetImages::isImageType(type)
                             ? numberOf(d->clickInfo, DatasetImages::kind(type).section, KEY_FOV)
                             : 0.0;
    return constantRange(KEY_FOV).holds(width) ? width : std::numeric_limits<double>::quiet_NaN();
}
