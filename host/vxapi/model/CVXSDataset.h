// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/CVXSImageList.h"
#include "host/vxapi/model/VXTypes.h"
#include "host/vximage/CILImage.h"

#include <memory>
#include <QObject>

class CPLClickInfo;
class CVXSSequenceDataset;

/// One acquisition ("click"): a folder with ClickInfo.txt, AnalyzedClickInfo.txt and its images, or the same
/// in memory. Pixels are read when first asked for, calibrated images are remembered until something that they
/// depend on (unit, flat field, background, the pixels) changes. User-interface thread only.
class VXAPI_EXPORT CVXSDataset : public QObject
{
    Q_OBJECT

public:
    /// An empty dataset in memory (type 2) of that click number; not registered before registerDataset().
    explicit CVXSDataset(const QString &clickNumber, QObject *parent = nullptr);
    ~CVXSDataset() override;

    // --- the open datasets ---

    /// The dataset of that click number that is open in this process, or null.
    static CVXSDataset *getDataset(const QString &clickNumber);
    /// Reads the ClickInfo of a dataset folder; pixels come later. Null on failure, with status and "file: reason".
    static CVXSDataset *open(const QString &folder, ESTATUS *status, QString *error, QObject *parent = nullptr);
    /// Makes getDataset() answer with this dataset. False when another one of that click number is registered.
    bool registerDataset();

    // --- identity and storage ---

    QString getClickNumber() const;
    /// Ends in "/"; empty for a dataset that has no folder yet.
    QString getFolderPath() const;
    void setFolderPath(const QString &path);
    /// 0 acquired or imported and on disk, 1 a result of image math, 2 only in memory (no files yet).
    int getDatasetType() const;
    bool isPartOfSequence() const;
    CVXSSequenceDataset *getSequenceDataset() const;
    CPLClickInfo *getClickInfo() const;
    bool isModified() const;
    void setModified(bool modified);
    /// Marks a result of image math that has not been saved by the person yet.
    void setImageMathToBeSaved(bool toBeSaved);
    bool isImageMathToBeSaved() const;
    /// Writes ClickInfo.txt, the images and last AnalyzedClickInfo.txt into that folder (created when missing), each file
    /// whole or not at all. Takes the folder as its own, and a dataset of type 2 becomes one of type 0.
    ESTATUS saveDatasetAs(const QString &folder);
    /// "file: reason" of the last operation of this dataset that failed.
    QString lastError() const;

    // --- kind of acquisition ---

    bool isLuminescentDataset() const;
    /// True for epi-fluorescence, transfluorescence and transillumination.
    bool isFluorescentDataset() const;
    bool isTransFluorescentDataset() const;
    bool isTransIlluminationDataset() const;

    // --- images ---

    const CVXSImageList *getImageList() const;
    /// The stored image of that type, read from its file on first use; null when there is none or it cannot be read (then a
    /// log line of level 3 names file and reason).
    CILImage *getCoreImage(tag_eimagetype type) const;
    /// Gives a dataset in memory an image. The luminescent one's binning factor is written to ClickInfo.
    void setCoreImage(tag_eimagetype type, const CILImage &image);
    /// The luminescent image in that unit, 32-bit float, background and flat field applied as the flags say, into `target`
    /// (binning factor and palette included). On failure `target` becomes empty (0 x 0) and a log line of level 3 names
    /// dataset and reason; `caller` names who asked.
    ESTATUS getCalibratedLuminImage(tag_edisplayunit unit, CILImage *target, const QString &caller) const;
    /// Width of the imaged field of that image [cm]; NaN when it is not recorded.
    double getFOVForImage(tag_eimagetype type) const;

    // --- corrections ---

    bool isLuminFlatFieldCorrected() const;
    /// Switches the flat-field correction of calibrated images on or off. Without a flat-field image it cannot be
    /// switched on; pixels stored corrected stay so. Emits calibrationChanged() when the state changed.
    void doFlatFieldCorrection(bool on);
    bool isLuminBackgroundSubtracted() const;
    void doBackgroundSubtraction(bool on);
    bool isLuminFLBkgSubtracted() const;

    // --- display ---

    tag_edisplayunit getUnit() const;
    void setUnit(tag_edisplayunit unit);
    /// [mW]; 0 when not recorded.
    double getBottomIlluminationPower() const;
    const CVXSToolInfo &getToolInfo() const;
    void setToolInfo(const CVXSToolInfo &info);
    tag_ecolortable getColorTable() const;
    void setColorTable(tag_ecolortable table);

Q_SIGNALS:
    void calibrationChanged();
    void unitChanged();
    void displayChanged();

private:
    friend class CVXSSequenceDataset;
    class Private;
    std::unique_ptr<Private> d;
};
