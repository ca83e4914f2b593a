// SPDX-License-Identifier: MIT
#include "app/datasets/DatasetSaving.h"

#include "app/datasets/FolderChoice.h"
#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxutils/CVXPreference.h"
#include "host/vxutils/CVXSErrorHandler.h"
#include "host/vxutils/CVXSMessageBox.h"
#include "host/vxutils/CVXUtilityFns.h"
#include "host/vxutils/deleteFolderTree.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(Saving)
};

bool isDatasetFolder(const QString &folder)
{
    return QFileInfo::exists(folder + QLatin1Char('/') + clickinfo::FILE_CLICK_INFO);
}

bool tell(QWidget *parent, ESTATUS status, const QString &error)
{
    if (status != ESTATUS_SUCCESS)
        CVXSErrorHandler::errorMessage(parent, status, error);
    return status == ESTATUS_SUCCESS;
}

/// The item is asked for its error here, after it was saved: of two arguments of one call either may be had
/// first.
template <typename Item>
bool tellOf(QWidget *parent, ESTATUS status, const Item *item)
{
    return tell(parent, status, status == ESTATUS_SUCCESS ? QString() : item->lastError());
}

QString chooseSequencePlace(QWidget *parent, const CVXSSequenceDataset &sequence)
{
    const QString usual = CVXPreference::getProgramDataPath() + QStringLiteral("/sequences");
    QDir().mkpath(usual); // so that the dialog can start there; what fails is told when saving
    return chooseFolder(parent, Text::tr("Save Sequence %1 In").arg(sequence.getSequenceID()),
                        "MainWindow/saveSequenceFolder", usual);
}

} // namespace

bool saving::saveDataset(QWidget *parent, CVXSDataset *dataset)
{
    if (dataset->getDatasetType() == EDATASET_IN_MEMORY)
        return saveDatasetElsewhere(parent, dataset);
    return tellOf(parent, dataset->saveDatasetAs(dataset->getFolderPath()), dataset);
}

bool saving::saveDatasetElsewhere(QWidget *parent, CVXSDataset *dataset)
{
    const QString chosen = chooseFolder(parent, Text::tr("Save Dataset As"), "MainWindow/saveFolder",
                                        CVXPreference::getProgramDataPath());
    if (chosen.isEmpty())
        return false;
    QString refusal;
    const QString target = targetFolder(*dataset, chosen, &refusal);
    if (target.isEmpty())
        return tell(parent, ESTATUS_FILE_NOT_WRITABLE, refusal);
    const bool isThere = QFileInfo::exists(target);
    const bool isOwn = isThere && !QDir(target).isEmpty();
    const ESTATUS status =
        dataset->isPartOfSequence() ? dataset->saveCopy(target) : dataset->saveDatasetAs(target);
    // What a full disk left half written would stand in the way of the next attempt.
    if (status != ESTATUS_SUCCESS && !isOwn) {
        deleteFolderTree(QDir(target));
        if (isThere)
            QDir().mkdir(target);
    }
    return tellOf(parent, status, dataset);
}

QString saving::targetFolder(const CVXSDataset &dataset, const QString &chosen, QString *refusal)
{
    const QString clickNumber = dataset.getClickNumber();
    const QString own = QFileInfo(dataset.getFolderPath()).canonicalFilePath();
    const auto isOwn = [&own](const QString &folder) {
        return !own.isEmpty() && QFileInfo(folder).canonicalFilePath() == own;
    };
    const auto refuse = [refusal](const QString &folder, const QString &reason) {
        *refusal = QDir::toNativeSeparators(folder) + QStringLiteral(": ") + reason;
        return QString();
    };
    if (!CVXUtilityFns::isSafeFileName(clickNumber))
        return refuse(chosen, Text::tr("\"%1\" cannot be the name of a folder").arg(clickNumber));
    const QDir parentFolder(chosen);
    // Who chooses the folder of that very name means this one and none below it.
    const QString target =
        parentFolder.dirName() == clickNumber ? chosen : parentFolder.absoluteFilePath(clickNumber);
    if (isOwn(target))
        return dataset.isPartOfSequence()
                   ? refuse(target, Text::tr("the dataset lies there; save its sequence instead"))
                   : target;
    if (target != chosen && isDatasetFolder(chosen))
        return refuse(chosen, Text::tr("this folder holds another dataset, %1; choose the folder in which "
                                       "the dataset is to get one of its own")
                                  .arg(parentFolder.dirName()));
    if (isDatasetFolder(target))
        return refuse(target, Text::tr("this folder holds another dataset of the click number %1, which is "
                                       "not overwritten")
                                  .arg(clickNumber));
    const QFileInfo there(target);
    if (there.exists() && (!there.isDir() || !QDir(target).isEmpty()))
        return refuse(target, Text::tr("there are other files in this folder already"));
    return target;
}

bool saving::saveSequence(QWidget *parent, CVXSSequenceDataset *sequence)
{
    if (sequence->getSequenceInfoPath().isEmpty()) {
        const QString place = chooseSequencePlace(parent, *sequence);
        return !place.isEmpty() && tellOf(parent, sequence->save(place), sequence);
    }
    const ESTATUS status = sequence->save();
    if (status == ESTATUS_SUCCESS)
        return true;
    // A place that cannot be written must not cost the user what was drawn.
    enum { SAVE_AS, CANCEL };
    const int answer = CVXSMessageBox::warning(
        parent, CVXUtilityFns::getAppName(),
        Text::tr("The sequence %1 is not saved. %2\n%3")
            .arg(sequence->getSequenceID(), statusText(status), sequence->lastError()),
        QStringList{Text::tr("Save &As..."), Text::tr("Cancel")}, SAVE_AS, CANCEL);
    return answer == SAVE_AS && saveSequenceElsewhere(parent, sequence);
}

bool saving::saveSequenceElsewhere(QWidget *parent, CVXSSequenceDataset *sequence)
{
    const QString place = chooseSequencePlace(parent, *sequence);
    return !place.isEmpty() && tellOf(parent, sequence->saveAs(place), sequence);
}

QString saving::lossText(const UnsavedContent &unsaved)
{
    QStringList lost;
    if (unsaved.files)
        lost += Text::tr("its files are not there");
    if (unsaved.rois)
        lost += Text::tr("ROIs");
    if (unsaved.pixels)
        lost += Text::tr("pixels");
    if (unsaved.record)
        lost += Text::tr("values of ClickInfo");
    if (unsaved.display)
        lost += Text::tr("colors");
    return lost.join(QStringLiteral(", "));
}
