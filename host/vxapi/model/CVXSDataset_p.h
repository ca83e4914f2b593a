// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/CalibratedImages.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/DatasetImages.h"
#include "host/vxparser/CPLClickInfo.h"

#include <QPointer>

class CVXSSequenceDataset;

/// The inside of a dataset. ClickInfo is read whenever a key is needed, so nothing here repeats what it says.
class CVXSDataset::Private
{
public:
    explicit Private(const QString &number) : clickNumber(number) {}

    bool hasSection(const char *section) const;
    QString kind() const;
    bool isResult() const;
    bool isStoredFlatFieldCorrected() const;
    bool isStoredBackgroundSubtracted() const;
    double binningFactor() const;
    CILPalette palette() const;
    void readDisplay();
    void writeDisplay();

    CILImage *coreImage(tag_eimagetype type);
    ESTATUS calibrated(tag_edisplayunit unit, CILImage *target, QString *reason);
    ESTATUS prepare(tag_edisplayunit unit, SIngredients *ingredients, QString *reason);
    ESTATUS unitOfResult(tag_edisplayunit wanted, tag_edisplayunit *stored, QString *reason) const;
    ESTATUS addCompanions(tag_edisplayunit unit, SIngredients *ingredients, QString *reason);
    /// A further image of the luminescent grid.
    ESTATUS companion(tag_eimagetype type, const CILImage &stored, const CILImage **image, QString *reason);
    static void compute(const SIngredients &ingredients, CILImage *target);

    ESTATUS load(const QString &path, QString *error);
    ESTATUS saveTo(const QString &target, QString *error);
    ESTATUS saveAnalyzed(const QString &target, QString *error) const;
    ESTATUS copyOtherFiles(const QString &target, QString *error) const;

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

    tag_edisplayunit unit = EUNIT_COUNTS;
    CVXSToolInfo toolInfo;
    tag_ecolortable colorTable = VXS_CT_RAINBOW;
};
