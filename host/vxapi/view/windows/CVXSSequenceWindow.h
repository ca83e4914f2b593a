// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/view/windows/CVXSChildWindow.h"

#include <memory>

/// Shows a sequence: its name and a thumbnail a click (luminescent image over photograph where there are
/// both), with the click number under it. Double click or Return asks for the dataset's image window.
class VXAPI_EXPORT CVXSSequenceWindow : public CVXSChildWindow
{
    Q_OBJECT

public:
    explicit CVXSSequenceWindow(CVXSSequenceDataset *sequence, QWidget *parent = nullptr);
    ~CVXSSequenceWindow() override;

    /// The window that shows that sequence, or null.
    static CVXSSequenceWindow *getSequenceWindow(const CVXSSequenceDataset *sequence);

    /// True for a sequence that holds only a 3D scene.
    bool is3DSceneOnlySequence() const;

    bool isSequenceWindow() const override { return true; }
    CVXSSequenceDataset *getSequenceDataset() const override;
    CVXSDataset *getDataset() const override { return nullptr; }
    ESTATUS saveSequence() override;
    void refreshAfterDatasetAdded() override;

Q_SIGNALS:
    /// A dataset was added that is not the sequence's; the text is its click number, or empty. What changes in the
    /// sequence itself the sequence announces.
    void signalUpdateMeasurmentsCombobox(QString clickNumber);
    /// The user asks for the image window of that click.
    void datasetActivated(const QString &clickNumber);

private:
    class Private;
    std::unique_ptr<Private> d;
};
