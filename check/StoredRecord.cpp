// SPDX-License-Identifier: MIT
#include "check/StoredRecord.h"

#include "host/vxapi/model/CVXSDataset.h"
#include "host/vximage/CILImage.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(StoredRecord)
};

} // namespace

StoredRecord StoredRecord::of(const CVXSDataset &result)
{
    StoredRecord found;
    const QString name = result.getImageFileName(EIMAGE_LUMINESCENT);
    found.file = result.getFolderPath() + name;
    if (!QFileInfo(found.file).isFile()) { // not a line in the log each time the window is looked at
        found.problem = Text::tr("The image file is not there: %1").arg(found.file);
        return found;
    }
    std::string description;
    if (CILImage::loadDescription(QFile::encodeName(found.file).constData(), &description) != EIL_SUCCESS) {
        found.problem =
            Text::tr("The image file cannot be read: %1").arg(QString::fromStdString(CILImage::lastError()));
        return found;
    }
    if (description.empty()) {
        found.problem = Text::tr("%1 does not tell how it was made.").arg(name);
        return found;
    }
    QString reason;
    if (description.size() > MAX_BYTES)
        reason = Text::tr("it has %1 bytes, more than any record").arg(description.size());
    else if (imagemath::fromJson(QByteArray::fromStdString(description), &found.record, &reason) &&
             found.isThere())
        return found;
    found.record = imagemath::ResultRecord();
    if (reason.isEmpty())
        reason = Text::tr("it names no operation");
    found.problem = Text::tr("What %1 tells of its making is damaged: %2.").arg(name, reason);
    return found;
}
