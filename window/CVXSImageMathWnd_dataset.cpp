// SPDX-License-Identifier: MIT
#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxapi/view/windows/CVXSChildWindow.h"
#include "host/vxutils/deleteFolderTree.h"
#include "math/ToolLog.h"
#include "result/ResultFolderLock.h"
#include "result/ResultPlace.h"
#include "window/CVXSImageMathWnd.h"

#include <QDir>

namespace {

const QString TEMP_FOLDER = QStringLiteral("TempFolder");

bool isOnlyInMemory(const CVXSDataset *dataset)
{
    return dataset && dataset->getDatasetType() == EDATASET_IN_MEMORY;
}

QString analyzedPathOf(const QString &clickInfoPath)
{
    return clickInfoPath.left(clickInfoPath.lastIndexOf(QLatin1Char('/'))) + QLatin1Char('/') +
           clickinfo::FILE_ANALYZED_CLICK_INFO;
}

} // namespace

void CVXSImageMathWnd::onClickDisplayResultForMeasuring()
{
    QString clickA;
    QString clickB;
    if (m_pListBoxA->currentItem() && m_pListBoxB->currentItem()) {
        clickA = currentClickA();
        clickB = currentClickB();
    }
    if (!bothAssociated(clickA, clickB)) {
        showInvalidSelection();
        return;
    }
    m_pDisplayBtn->setEnabled(true);
    // A dataset of it could not be opened: nothing is made.
    if (!m_emptyBecause.result.isEmpty()) {
        imagemath::logLine(noPixelsText());
        return;
    }
    copyPhotograph();
    saveUnsavedOverview();
    if (!hasPlaceOnDisk(clickA) || !hasPlaceOnDisk(clickB)) {
        imagemath::logLine(
            QStringLiteral("The sequence %1 has no folder on disk yet").arg(m_pSequence->getSequenceID()));
        imagemath::logLine(QStringLiteral("ClickInfo creation failed"));
        return;
    }

    QString pathA = clickInfoFolder(clickA);
    QString pathB = clickInfoFolder(clickB);
    if (isOnlyInMemory(m_pDatasetA))
        pathA = saveTemporaryCopy(*m_pDatasetA, clickA);
    if (isOnlyInMemory(m_pDatasetB))
        pathB = saveTemporaryCopy(*m_pDatasetB, clickB);
    pathA += clickinfo::FILE_CLICK_INFO;
    pathB += clickinfo::FILE_CLICK_INFO;

    m_resultLock = std::make_unique<ResultFolderLock>(); // taken when the name is known
    const ESTATUS written = writeResultClickInfo(pathA, pathB);
    const ESTATUS analyzed = written == ESTATUS_SUCCESS
                                 ? writeAnalyzedClickInfo(analyzedPathOf(pathA), analyzedPathOf(pathB))
                                 : written;
    m_resultLock.reset();
    if (written != ESTATUS_SUCCESS) {
        imagemath::logLine(QStringLiteral("ClickInfo creation failed"));
        return;
    }
    if (analyzed != ESTATUS_SUCCESS) {
        imagemath::logLine(QStringLiteral("Analyzed ClickInfo creation failed"));
        return;
    }
    if (isOnlyInMemory(m_pDatasetA) || isOnlyInMemory(m_pDatasetB)) {
        for (const QString &click : {clickA, clickB})
            deleteFolderTree(QDir(m_pSequence->getDatasetFolderPath(click) + TEMP_FOLDER));
    }
    loadResult();
}

// The folder's path ends in "/" already; the host gets it with the second one.
void CVXSImageMathWnd::loadResult()
{
    ESTATUS status = ESTATUS_SUCCESS;
    const QString path = m_resultFolderPath + QLatin1Char('/') + clickinfo::FILE_CLICK_INFO;
    Q_EMIT signalLoadImageMathReuslt(path, true, &status, nullptr);
    if (status != ESTATUS_SUCCESS) {
        imagemath::logLine(QStringLiteral("Loading Failed"));
        return;
    }
    if (CVXSDataset *result = CVXSDataset::getDataset(m_resultClickNumber)) {
        result->setColorTable(m_pSequence->getImageAdjust().colorTable);
        result->setModified(true);
        result->setImageMathToBeSaved(true);
    }
    if (CVXSChildWindow *window = CVXSChildWindow::getActiveChildWnd())
        window->refreshAfterDatasetAdded();
}

void CVXSImageMathWnd::copyPhotograph()
{
    if (!isPhotoEnabled())
        return;
    const CVXSDataset *dataset = photoDataset();
    if (const CILImage *photograph = dataset ? dataset->getCoreImage(EIMAGE_PHOTOGRAPH) : nullptr)
        m_photoImage = *photograph;
}

// A computed overview may never have been saved; its datasets then have no place on disk yet.
void CVXSImageMathWnd::saveUnsavedOverview()
{
    if (!m_pSequence->isTransIllumOverviewResultSequence() || !m_pSequence->getSequenceInfoPath().isEmpty())
        return;
    if (CVXSChildWindow *window = CVXSChildWindow::getActiveChildWnd())
        window->saveSequence();
}

QString CVXSImageMathWnd::clickInfoFolder(const QString &click) const
{
    if (m_pSequence->isTransIllumOverviewResultSequence() || m_bSavedForImageMath)
        return m_pSequence->getSequenceInfoPath() + click + QLatin1Char('/');
    return m_pSequence->getDatasetFolderPath(click);
}

// A relative path would mean the folder in which the workspace was started.
bool CVXSImageMathWnd::hasPlaceOnDisk(const QString &click) const
{
    return QDir::isAbsolutePath(clickInfoFolder(click)) &&
           QDir::isAbsolutePath(m_pSequence->getDatasetFolderPath(click));
}

// A copy on disk of a dataset that is only in memory, which goes on being only in memory.
QString CVXSImageMathWnd::saveTemporaryCopy(CVXSDataset &dataset, const QString &click) const
{
    const QString temporary = m_pSequence->getDatasetFolderPath(click) + TEMP_FOLDER;
    const QString folder = temporary + QLatin1Char('/') + click;
    QDir().mkdir(temporary);
    QDir().mkdir(folder);
    const QString ownFolder = dataset.getFolderPath();
    const bool wasModified = dataset.isModified();
    const bool wasToBeSaved = dataset.isImageMathToBeSaved();
    dataset.saveDatasetAs(folder + QLatin1Char('/'));
    dataset.setFolderPath(ownFolder);
    dataset.setModified(wasModified);
    dataset.setImageMathToBeSaved(wasToBeSaved);
    return folder + QLatin1Char('/');
}

ESTATUS CVXSImageMathWnd::prepareResultFolder()
{
    QString reason;
    const ESTATUS status = ProgramDataPlace::empty(m_resultClickNumber, &reason);
    if (status == ESTATUS_SUCCESS)
        m_resultFolderPath = ProgramDataPlace::folderNamed(m_resultClickNumber) + QLatin1Char('/');
    else
        imagemath::logLine(reason);
    return status;
}
