// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/view/windows/CVXSChildWindow.h"

#include <memory>

/// Shows one dataset: its luminescent image in the dataset's unit with a colour bar (or its photograph), the
/// unit, and what was corrected.
class VXAPI_EXPORT CVXSImageWindow : public CVXSChildWindow
{
    Q_OBJECT

public:
    explicit CVXSImageWindow(CVXSDataset *dataset, QWidget *parent = nullptr);
    ~CVXSImageWindow() override;

    /// The window that shows that dataset, or null.
    static CVXSImageWindow *getImageWindow(const CVXSDataset *dataset);

    bool isSequenceWindow() const override { return false; }
    CVXSSequenceDataset *getSequenceDataset() const override { return nullptr; }
    CVXSDataset *getDataset() const override;
    ESTATUS saveSequence() override;
    void refreshAfterDatasetAdded() override;
    bool canCopy() const override;
    /// The rows of the table when the keyboard is there, else the selected ROIs, else the picture.
    void copy() override;
    bool canCopyPicture() const override;
    /// The picture with its colour bar and ROIs, without the controls around it.
    QImage picture() override;
    bool canPaste() const override;
    /// ROIs; a message says why when there are none.
    void paste() override;

    /// Switches the dataset's flat-field correction on or off, and shows it.
    virtual void switchFlatFieldCorrection(bool on);

private:
    class Private;
    std::unique_ptr<Private> d;
};
