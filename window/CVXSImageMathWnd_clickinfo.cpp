// SPDX-License-Identifier: MIT
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxapi/model/VXCalibration.h"
#include "result/ResultFolderLock.h"
#include "result/ResultWriter.h"
#include "window/CVXSImageMathWnd.h"

using resultclickinfo::DisplayFacts;
using resultwriter::PhotographSource;

namespace {

/// Has the window's own operations name the result and prepare its folder.
class WindowPlace : public ResultPlace
{
public:
    WindowPlace(CVXSImageMathWnd &window, QString &clickNumber, QString &folder)
        : m_window(window), m_clickNumber(clickNumber), m_folder(folder)
    {
    }

    QString clickNumberFor(const QString &clickA) override
    {
        return m_clickNumber = m_window.makeResultClickNumber(clickA);
    }
    ESTATUS prepareFolder(const QString &, QString *folder, QString *) override
    {
        const ESTATUS status = m_window.prepareResultFolder();
        if (status == ESTATUS_SUCCESS)
            *folder = m_folder;
        return status;
    }
    QString folderOf(const QString &clickNumber) const override
    {
        return ProgramDataPlace::folderNamed(clickNumber);
    }

private:
    CVXSImageMathWnd &m_window;
    QString &m_clickNumber;
    QString &m_folder;
};

} // namespace

bool CVXSImageMathWnd::isPhotoEnabled() const
{
    return m_pPhotoFromCB->isEnabled() && m_pWithPhotoChkBox->isChecked();
}

CVXSDataset *CVXSImageMathWnd::photoDataset() const
{
    return isPhotoFromA() ? m_pDatasetA : m_pDatasetB;
}

PhotographSource CVXSImageMathWnd::photographSource() const
{
    if (!isPhotoEnabled())
        return PhotographSource::None;
    return isPhotoFromA() ? PhotographSource::A : PhotographSource::B;
}

resultwriter::Request CVXSImageMathWnd::resultRequest(const QString &pathA, const QString &pathB) const
{
    resultwriter::Request request;
    request.a = {currentClickA(), pathA, m_pDatasetA};
    request.b = {currentClickB(), pathB, m_pDatasetB};
    request.operation = m_pOperationCB->currentText();
    request.k = m_pKLineEdit->text();
    request.photograph = photographSource();
    request.image = m_resultImage;
    request.record = m_resultRecord;
    return request;
}

DisplayFacts CVXSImageMathWnd::displayFacts()
{
    const tag_edisplayunit unit = m_pSequence->getActiveUnit();
    if (m_pFullResultRadioBtn->isChecked()) {
        double factor = 1.0;
        if (unit == EUNIT_RADIANCE)
            factor = VX_CalibrateIntensityWithFilterTrans(EIMAGE_LUMINESCENT, m_pDatasetA,
                                                          unitKey(EUNIT_COUNTS), unitKey(EUNIT_RADIANCE));
        // The range is asked for and not written: what is written is what the user sees.
        double minimum = 0.0;
        double maximum = 0.0;
        VX_LuminImageMinMax(&m_resultImage, &minimum, &maximum, unitKey(unit), factor, VX_SATURATED_COUNTS,
                            VX_RANGE_BINS);
    }
    return resultclickinfo::displayFactsOf(m_resultImage, unit, m_pSequence->getImageAdjust().colorTable,
                                           m_pDatasetA, isPhotoEnabled() ? photoDataset() : nullptr);
}

ESTATUS CVXSImageMathWnd::writeResultClickInfo(const QString &pathA, const QString &pathB)
{
    const ESTATUS angles = checkImagingAngles(pathA, pathB);
    if (angles != ESTATUS_SUCCESS)
        return angles;
    WindowPlace place(*this, m_resultClickNumber, m_resultFolderPath);
    resultwriter::Request request = resultRequest(pathA, pathB);
    request.display = displayFacts();
    return resultwriter::writeClickInfo(request, place, m_resultLock.get()).status;
}

ESTATUS CVXSImageMathWnd::writeAnalyzedClickInfo(const QString &analyzedPathA, const QString &analyzedPathB)
{
    resultwriter::Written first;
    first.clickNumber = m_resultClickNumber;
    first.folder = m_resultFolderPath;
    return resultwriter::writeAnalyzedClickInfo(resultRequest(QString(), QString()), first, analyzedPathA,
                                                analyzedPathB);
}
