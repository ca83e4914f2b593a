// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/roi/CROIBase.h"
#include "host/vxutils/ESTATUS.h"

#include <memory>
#include <QList>
#include <QObject>
#include <QStringList>

class CPLSection;
class CVXSDataset;

/// The ROIs of one dataset, in the order in which they were made. Names are unique in the dataset, in any
/// case. Every change of ROIs sets the dataset's modified flag and marks the measurements that it touches as
/// out of date. User-interface thread only.
class VXAPI_EXPORT CROIManager : public QObject
{
    Q_OBJECT

public:
    explicit CROIManager(CVXSDataset *dataset);
    ~CROIManager() override;

    // --- look up ---

    QList<CROIBase *> rois() const;
    void getAllBkgROINames(QStringList *names) const;
    void getAllMeasurementROINamesExceptGridROI(QStringList *names) const;
    /// The ROI of that name (exact match); `roi` becomes null, and the answer false, when there is none.
    bool getROI(const QString &name, CROIBase *&roi) const;

    // --- selection ---

    /// Makes the ROI the selected one; with `add` beside those that are selected, of which the last is "the
    /// selected one". A null ROI, or one of another dataset, leaves nothing selected (with `add`: changes
    /// nothing).
    void selectROI(CROIBase *roi, bool add);
    QList<CROIBase *> selectedROIs() const;
    /// The selected one, or null.
    CROIBase *selectedROI() const;
    /// False, and the record untouched, when nothing is selected.
    bool getSelectedROIProps(tagROIInfo *info) const;
    /// Selects the ROI that was made (drawn, added or pasted) last; nothing when there is none: what was read
    /// from a file was not made now, and after a paste that failed, or when the last made one was removed,
    /// an earlier ROI must not be taken for it.
    void selectLastCreatedROI();

    // --- change ---

    /// Adds an ROI. An empty name gets "ROI 1", "Bkg 1" or "Grid 1" and so on; a name that is taken gets the
    /// next free number behind it ("Tumor", "Tumor 2"). Null (and a log line) for a box or outline without
    /// area or with a coordinate that is not finite.
    CROIBase *addROI(const CROIBase &roi);
    /// False when the name is empty or taken, or the ROI is not of this dataset.
    bool renameROI(CROIBase *roi, const QString &name);
    void setROIKind(CROIBase *roi, EROIKIND kind);
    void moveROI(CROIBase *roi, const QPointF &by);
    void setROIBox(CROIBase *roi, const QRectF &box);
    /// Removes what is selected, with its measurements. False when nothing was.
    bool removeROIObject();

    // --- the host's ROI clipboard ---

    /// Copies the selected ROI; false, and the clipboard empty, when nothing is selected.
    bool copyROIObject();
    /// Pastes the copy at the same place [cm]; with `shifted` a little to the lower right, to be seen beside
    /// the original. The pasted ROI is the last created one; its name stays unique. False when the clipboard
    /// is empty.
    bool pasteROIObject(bool shifted);
    static bool hasCopy();

    // --- measurement ---

    /// Marks the ROI's measurement record out of date and keeps it; nothing when there is none.
    void setMeasurementInvalid(CROIBase *roi);
    /// The same for all ROIs of the dataset.
    void setAllMeasurementsInvalid();

    // --- in files ---

    /// Reads the ROIs of an "ROIs" section (null: none), replacing those there are. Damaged entries are left
    /// out with a log line; the dataset's modified flag is not touched.
    void readSection(const CPLSection *section);
    /// Appends the ROIs, then the entries that could not be read, as they were.
    void writeSection(CPLSection *section) const;
    /// Whether the ROIs differ from what was read or saved last; not so for one that was pasted and removed
    /// again.
    bool isModified() const;
    void markSaved();

Q_SIGNALS:
    /// ROIs were added, removed, renamed, moved, or changed kind.
    void roisChanged();
    void selectionChanged();

private:
    void changed();
    /// Takes over that shape, if it can be kept and is another.
    void reshape(CROIBase *roi, const CROIBase &reshaped);

    class Private;
    std::unique_ptr<Private> d;
};
