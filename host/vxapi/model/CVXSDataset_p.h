// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/CalibratedImages.h"
#include "host/vxapi/model/CROIManager.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/DatasetImages.h"
#include "host/vxparser/CPLClickInfo.h"

#include <QPointer>

class CRoiMeasInfo;
class CVXSSequenceDataset;

/// Names what was measured last, so that pixels changed in place are noticed.
struct MeasuredContent
{
    std::uint64_t calibrated = 0; ///< CILImage::contentId()
    std::uint64_t counts = 0;
    double pixelSize = 0.0;

    /// False when someone may be writing the pixels.
    bool matches(const MeasuredContent &now) const;
};

/// How many stored luminescent pixels are saturated.
struct SaturatedPixels
{
    std::uint64_t content = 0; ///< CILImage::contentId(); 0: not counted
    qint64 count = -1;
};

/// The inside of a dataset. ClickInfo is read whenever a key is needed, so nothing here repeats what it says.
class CVXSDataset::Private
{
public:
    explicit Private(const QString &number) : clickNumber(number) {}

    bool hasSection(QLatin1String section) const;
    QString kind() const;
    bool isResult() const;
    bool isStoredFlatFieldCorrected() const;
    bool isStoredBackgroundSubtracted() const;
    double binningFactor();
    /// EUNIT_PRODUCT or EUNIT_RATIO for such a result, else EUNIT_COUNT.
    tag_edisplayunit unitlessValues() const;
    CILPalette palette() const;
    void readDisplay();
    void writeDisplay();
    void readColorLimits();
    void writeColorLimits();

    CILImage *coreImage(tag_eimagetype type);
    ESTATUS calibrated(tag_edisplayunit unit, CILImage *target, QString *reason);
    ESTATUS prepare(tag_edisplayunit unit, Ingredients *ingredients, QString *reason);
    ESTATUS unitOfResult(tag_edisplayunit wanted, tag_edisplayunit *stored, QString *reason) const;
    ESTATUS addCompanions(tag_edisplayunit unit, Ingredients *ingredients, QString *reason);
    /// A further image of the luminescent grid.
    ESTATUS companion(tag_eimagetype type, const CILImage &stored, const CILImage **image, QString *reason);
    void compute(const Ingredients &ingredients, CILImage *target) const;
    /// Why the flat field does not fit the luminescent image; empty when it does, or one of them is missing.
    QString obstacleToFlatField();

    ESTATUS load(const QString &path, QString *error);
    ESTATUS saveTo(const QString &target, QString *error);
    /// The dataset lies in that folder from here on, with nothing left to save.
    void settleIn(const QString &target);
    ESTATUS saveAnalyzed(const QString &target, QString *error) const;
    ESTATUS copyOtherFiles(const QString &target, QString *error) const;

    /// Where the ROIs of the present folder are; empty without folder.
    QString roiFile() const;
    void readRois();
    /// Whether AnalyzedClickInfo.txt of the present folder tells other ROIs than there are.
    bool areRoisToBeWritten() const;
    /// The record of that file (which may be missing) with the ROIs that there are.
    ESTATUS analyzedWithRois(const QString &file, CPLClickInfo *analyzed, QString *error) const;
    void markRoisSaved();
    /// What ROIs are measured in.
    struct MeasuredImages
    {
        CILImage calibrated;    ///< in the dataset's unit
        CILImage counts;        ///< empty when it cannot be had
        double pixelSize = 0.0; ///< [cm]
        CILImage stored;        ///< as the camera gave it, on the same grid; empty without a ceiling
        double ceiling = 0.0;   ///< of its pixels [counts]

        MeasuredContent content() const { return {calibrated.contentId(), counts.contentId(), pixelSize}; }
    };
    ESTATUS imagesToMeasure(const CVXSDataset &dataset, MeasuredImages *measured, QString *error);
    CRoiMeasInfo measure(const MeasuredImages &measured, const CROIBase &roi) const;

    QString clickNumber;
    QString folder; ///< ends in "/", or empty
    bool isOnDisk = false;
    bool isModified = false;
    bool isImageMathToBeSaved = false;
    QString lastError;
    QPointer<CVXSSequenceDataset> sequence;

    CPLClickInfo clickInfo;
    DatasetImages images;
    CalibratedImages remembered;
    bool isFlatFieldOn = false;
    bool isBackgroundOn = true;
    ECALIBRATIONRULES rules = ECALIBRATION_NOW;

    tag_edisplayunit unit = EUNIT_COUNTS;
    CVXSToolInfo toolInfo;
    tag_ecolortable colorTable = VXS_CT_RAINBOW;
    std::optional<ColorLimits> colorLimits;

    std::unique_ptr<CROIManager> rois; ///< from its first use on
    QString roisOf;                    ///< the file that they were read from or saved to
    bool hasRecords = false;
    MeasuredContent measured;
    SaturatedPixels saturated;
};
