// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/CVXSImageList.h"
#include "host/vxapi/model/VXTypes.h"
#include "host/vximage/CILImage.h"

#include <memory>
#include <optional>
#include <QObject>

class CPLClickInfo;
class CROIManager;
class CVXSSequenceDataset;

/// What closing a dataset would lose.
struct UnsavedContent
{
    bool files = false;  ///< it has none, or they are gone: all of it
    bool pixels = false; ///< of any of its images
    bool rois = false;
    bool record = false;  ///< pairs of ClickInfo, apart from
    bool display = false; ///< colours, limits and the like ("Graph Controls")

    bool any() const { return files || pixels || rois || record || display; }
    UnsavedContent operator+(const UnsavedContent &other) const
    {
        return {files || other.files, pixels || other.pixels, rois || other.rois, record || other.record,
                display || other.display};
    }
};

/// One acquisition ("click"): a folder with ClickInfo.txt, AnalyzedClickInfo.txt and its images, or the same
/// in memory. Pixels are read when first asked for, calibrated images are remembered until something that
/// they depend on (unit, flat field, background, the pixels) changes. User-interface thread only.
///
///     std::unique_ptr<CVXSDataset> dataset(CVXSDataset::open(folder, &status, &error));
///     dataset->registerDataset();             // from here on CVXSDataset::getDataset() answers with it
///     CILImage image;                         // 32-bit float [photons/s/cm^2/sr]
///     status = dataset->getCalibratedLuminImage(EUNIT_RADIANCE, &image, caller);
///     status = dataset->MeasureROIAndMakeMeasRecords(true); // into CRoiMeasurementManager
///
/// The model works without a screen. What can fail answers with an ESTATUS (0: success) or null, tells
/// "file: reason", and leaves everything as it was; nothing here asks the user anything.
class VXAPI_EXPORT CVXSDataset : public QObject
{
    Q_OBJECT

public:
    /// An empty dataset in memory (type 2) of that click number; not registered before registerDataset().
    explicit CVXSDataset(const QString &clickNumber, QObject *parent = nullptr);
    ~CVXSDataset() override;

    // --- the open datasets ---

    /// The dataset of that click number that is open in this process, else the one that lies complete in the
    /// folder handed to registerStoredDatasets(), which is opened for this; else null. A stored dataset whose
    /// folder has that name answers too, whatever its click number: the name is taken. What is answered for a
    /// stored dataset goes when somebody opens it otherwise, or when its files do: keep it in a QPointer.
    static CVXSDataset *getDataset(const QString &clickNumber);
    /// The open one alone.
    static CVXSDataset *getOpenDataset(const QString &clickNumber);
    /// Takes notice of every dataset that lies complete directly under that folder (the program-data path),
    /// so that getDataset() knows it and no result of image math gets its name again. What is there
    /// incomplete is left alone and not known. Called at start and after each load; a dataset that is gone,
    /// or was registered under another folder, is forgotten.
    static void registerStoredDatasets(const QString &folder);
    /// Whether the dataset lies complete in its folder: ClickInfo.txt, AnalyzedClickInfo.txt (written last),
    /// and every image that the sections of ClickInfo call for is there and readable, to its last pixel.
    /// ESTATUS_NOT_COMPLETE with "file: reason" (also lastError()) otherwise; the caller tells the user.
    ESTATUS checkComplete(QString *error) const;
    /// Reads the ClickInfo of a dataset folder; pixels come later. Null on failure, with status and "file:
    /// reason" (either may be null); the caller tells the user. The dataset is not registered yet.
    static CVXSDataset *open(const QString &folder, ESTATUS *status, QString *error,
                             QObject *parent = nullptr);
    /// Makes getDataset() answer with this dataset, and so no stored one. False when another one of that
    /// click number is registered.
    bool registerDataset();

    // --- identity and storage ---

    QString getClickNumber() const;
    /// Ends in "/"; empty for a dataset that has no folder yet.
    QString getFolderPath() const;
    /// A folder that holds no ClickInfo.txt, or an empty path, makes the dataset one in memory (type 2).
    void setFolderPath(const QString &path);
    /// One of EDATASETTYPE.
    int getDatasetType() const;
    /// Whether a sequence owns it; getSequenceDataset() is that sequence, else null.
    bool isPartOfSequence() const;
    CVXSSequenceDataset *getSequenceDataset() const;
    /// The record, the dataset's own; never null. Who changes it calls setModified().
    CPLClickInfo *getClickInfo() const;
    /// Whether something was changed since it was opened or saved. Pixels that somebody wrote in place count
    /// only after setModified().
    bool isModified() const;
    void setModified(bool modified);
    /// What is here and not in the dataset's files, found by comparing, whatever the marks say.
    UnsavedContent unsavedContent() const;
    /// Marks a result of image math that has not been saved by the user yet.
    void setImageMathToBeSaved(bool toBeSaved);
    bool isImageMathToBeSaved() const;
    /// Writes the images, ClickInfo.txt and last AnalyzedClickInfo.txt into that folder (created when
    /// missing), each file whole or not at all. Images that were never changed, and other files and folders
    /// that lie with the dataset, are copied byte for byte. Takes the folder as its own, and a dataset of
    /// type 2 becomes one of type 0; it is neither modified nor to be saved any more. A failure (status,
    /// lastError(), log line of level 3) leaves every file as it was or whole, and the dataset where it was.
    ESTATUS saveDatasetAs(const QString &folder);
    /// Writes the same files, and leaves the dataset where it was, with what it has to save still to be
    /// saved.
    ESTATUS saveCopy(const QString &folder) const;
    /// "file: reason" of the last operation of this dataset that failed.
    QString lastError() const;

    // --- kind of acquisition ---

    bool isLuminescentDataset() const;
    /// True for epi-fluorescence, transfluorescence and transillumination.
    bool isFluorescentDataset() const;
    bool isTransFluorescentDataset() const;
    bool isTransIlluminationDataset() const;

    // --- images ---

    /// Which images there are, read or not; never null.
    const CVXSImageList *getImageList() const;
    /// The stored image of that type, read from its file on first use; null when there is none or it cannot
    /// be read (then a log line of level 3 names file and reason, once; the file is not read again, and
    /// lastError() tells it each time). Pixels may be changed in place; saveDatasetAs() then writes them.
    CILImage *getCoreImage(tag_eimagetype type) const;
    /// The name of that image's file in the dataset's folder.
    QString getImageFileName(tag_eimagetype type) const;
    /// False when the image was read from its file and the file is another one since (by size and time): what
    /// is computed and what lies on disk then differ.
    bool isImageFileAsRead(tag_eimagetype type) const;
    /// Camera counts from which a stored luminescent pixel says no more than "bright": that of the automatic
    /// ranges (VXCalibration.h), or the largest value of the stored type where that is less. NaN for a result
    /// of image math, which no camera took, and without luminescent image.
    double getSaturationCeiling() const;
    /// How many stored luminescent pixels are at or above it, before any correction; -1 where there is no
    /// ceiling.
    qint64 getSaturatedPixelCount() const;
    /// Gives the dataset an image. The luminescent one's binning factor is written to ClickInfo. An empty
    /// image is refused with a log line. Emits calibrationChanged().
    void setCoreImage(tag_eimagetype type, const CILImage &image);
    /// The luminescent image in that unit, 32-bit float, background and flat field applied as the flags say,
    /// into `target` (binning factor and palette included). On failure `target` becomes empty (0 x 0) and a
    /// log line of level 3 names dataset and reason; `caller` names who asked.
    ///
    /// counts = stored pixels - background; corrected = counts / flat field (normalised to its maximum, so that
    /// its own scale does not matter, and brought onto the grid by area average; division is IEEE, so a
    /// flat-field pixel of 0 gives an infinity or NaN); times the factor of VXCalibration.h. Counts are values
    /// that add up (CILImage::valuesAddUp()), the others are not. Efficiency = counts / (excitation reference - background), without flat field, whose
    /// shading is in both. Background and excitation reference must have the luminescent image's size, a flat
    /// field its aspect ratio (to less than a pixel of its own). The palette gets colour table, direction and log scale of the dataset; its limits are the caller's to set.
    /// A result of image math is converted from the unit of its pixels ("Intensity Calibration"), with no
    /// correction; no factor leads to or from efficiency. Products and ratios have no unit: they are given as
    /// they are, whatever is asked for.
    ///
    /// Status: ESTATUS_NO_IMAGE without luminescent image or excitation reference, ESTATUS_BAD_IMAGE when a
    /// file cannot be read or sizes differ, ESTATUS_BAD_VALUE for a calibration constant that is not usable.
    /// Asking again for something that did not change answers with the same pixels (CILImage::contentId()) at
    /// no cost.
    ESTATUS getCalibratedLuminImage(tag_edisplayunit unit, CILImage *target, const QString &caller) const;
    /// Camera pixels that a pixel of the luminescent image stands for along an axis; 1 when it is not recorded.
    /// ClickInfo keeps that of a result truncated: then the record of its making, in its image file, tells it
    /// exactly.
    double getBinningFactor() const;
    /// Rules of another version, for a dataset that nobody else has open: a computation of then is repeated.
    void setCalibrationRules(ECALIBRATIONRULES rules);
    /// Why the luminescent image cannot be had in that unit, as far as the record tells: the constants and
    /// images that are missing. Empty when nothing stands against it. Reads no pixels.
    QString obstacleToUnit(tag_edisplayunit unit) const;
    /// Width of the imaged field of that image [cm]; NaN when it is not recorded.
    double getFOVForImage(tag_eimagetype type) const;

    // --- corrections ---

    /// Whether calibrated images are corrected for the flat field, now or in the stored pixels.
    bool isLuminFlatFieldCorrected() const;
    /// Switches the flat-field correction of calibrated images on or off; it is off at first. Without a
    /// flat-field image that can be read and has the luminescent image's aspect ratio, or for a result of
    /// image math, it cannot be switched on (lastError() and a log line say why); pixels stored corrected stay
    /// so. Emits calibrationChanged() when the state changed.
    void doFlatFieldCorrection(bool on);
    /// Background subtraction is on from the start when there is a background image; pixels stored subtracted
    /// stay so.
    bool isLuminBackgroundSubtracted() const;
    void doBackgroundSubtraction(bool on);
    /// Whether the stored pixels had a fluorescence background subtracted.
    bool isLuminFLBkgSubtracted() const;

    // --- ROIs ---

    /// The dataset's ROIs; read from AnalyzedClickInfo.txt on first use.
    CROIManager *roiManager() const;
    /// Measures the ROIs of the dataset in its present unit into the records of CRoiMeasurementManager:
    /// all of them, or (false) those without a record that is up to date. A dataset whose luminescent image
    /// or field of view is missing, or cannot be had in its unit, gets a status and a log line of level 3,
    /// and loses its records: none of them tells the image as it is now. Without ROIs there is nothing to do
    /// and the status is 0. A dataset in whose place another one of its click number is registered cannot be
    /// measured: the records tell of that one. Where counts cannot be had but the unit can, the records say
    /// so (CRoiMeasInfo::counts).
    ESTATUS MeasureROIAndMakeMeasRecords(bool all);

    // --- display ---

    /// At first "Intensity Calibration" of "Graph Controls", else counts; in a sequence, the sequence's unit
    /// if one was chosen.
    tag_edisplayunit getUnit() const;
    void setUnit(tag_edisplayunit unit);
    /// What the values of the luminescent image are in when it is shown and measured: getUnit(), but
    /// EUNIT_PRODUCT or EUNIT_RATIO for such a result.
    tag_edisplayunit getShownUnit() const;
    /// [mW]; 0 when not recorded.
    double getBottomIlluminationPower() const;
    const CVXSToolInfo &getToolInfo() const;
    void setToolInfo(const CVXSToolInfo &info);
    tag_ecolortable getColorTable() const;
    void setColorTable(tag_ecolortable table);
    /// The limits of the colours that the user chose, now or in a file; nothing before that. Manual ones hold
    /// in their unit alone.
    std::optional<ColorLimits> getColorLimits() const;
    /// Keeps the choice with the dataset. Manual limits that are not finite, or the lower one above the upper
    /// one, change nothing.
    void setColorLimits(const ColorLimits &limits);

Q_SIGNALS:
    /// Calibrated images are others now: a correction was switched, or an image replaced.
    void calibrationChanged();
    void unitChanged();
    /// Colour table, its limits, direction, log scale, brightness or gamma changed; no pixel did.
    void displayChanged();

private:
    /// The measurement records of a click number tell of the registered dataset; without one, of the one that
    /// was measured.
    bool ownsRecords() const;

    friend class CROIManager;
    friend class CVXSSequenceDataset;
    class Private;
    std::unique_ptr<Private> d;
};
