// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/VXTypes.h"
#include "host/vxapi/view/canvas/CVXSTextTag.h"
#include "host/vxapi/view/canvas/FieldMapping.h"
#include "host/vxapi/view/canvas/VXViewTypes.h"
#include "host/vximage/CILImage.h"

#include <QPointer>
#include <QVector>

class CVXSDataset;
class CVXSMultiImageView;

/// What of a dataset is shown.
enum EDATASETPICTURE {
    EPICTURE_OVERLAY, ///< the luminescent image over the photograph
    EPICTURE_LUMINESCENT,
    EPICTURE_PHOTOGRAPH,
    EPICTURE_XRAY
};

/// Shows a picture of one dataset in slot 0 of a view. A display setting: it changes no pixel of the dataset.
class DatasetPicture
{
public:
    DatasetPicture(CVXSDataset *dataset, CVXSMultiImageView *view);
    ~DatasetPicture();

    /// The pictures that the dataset has, the one to be shown first in front.
    QVector<EDATASETPICTURE> choices() const;
    void setChoice(EDATASETPICTURE choice) { m_choice = choice; }
    /// Of the luminescent image over the photograph, 0 to 1.
    void setOpacity(double opacity) { m_opacity = opacity; }
    /// Limits for the unit that is shown, kept with the dataset; in another unit than theirs, manual ones are
    /// automatic.
    void setLimits(ColorLimits limits);
    /// Brings the view up to date.
    void refresh();

    /// The limits as they are shown; for ELIMITS_AUTO and ELIMITS_FULL the computed ones.
    ColorLimits limits() const { return m_limits; }
    bool isLuminescentShown() const;
    /// What is missing in the picture, for the user; empty when nothing is.
    QString note() const { return m_note; }
    /// From the view to the luminescent image's field, whichever picture is shown. Not valid without picture,
    /// luminescent image or field of view.
    FieldMapping mapping() const;
    /// Why ROIs can be neither drawn nor measured; empty when they can.
    QString obstacleToRois() const;

private:
    /// What the user chose, or what the dataset is shown with before that.
    ColorLimits wantedLimits() const;
    void showLuminescent();
    void showStored(tag_eimagetype type);
    void addPhotograph();
    void updateLimits(tag_edisplayunit unit);
    void showMessage(const QString &text);
    const CILImage *stored(tag_eimagetype type) const;
    double widthRatio(tag_eimagetype type) const;

    QPointer<CVXSDataset> m_dataset;
    CVXSMultiImageView *m_view;
    EDATASETPICTURE m_choice = EPICTURE_LUMINESCENT;
    double m_opacity = 0.7;
    ColorLimits m_limits;
    QString m_note;
    CILImage m_image;
    CILImage m_photograph;
    SColorbar m_bar;
    CVXSTextTag m_message;
};
