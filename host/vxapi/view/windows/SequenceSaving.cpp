// SPDX-License-Identifier: MIT
#include "host/vxapi/view/windows/SequenceSaving.h"

#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxutils/CVXSErrorHandler.h"
#include "host/vxutils/CVXSLog.h"

#include <QCoreApplication>

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(SequenceSaving)
};

} // namespace

ESTATUS saveSequenceWithMessage(QWidget *parent, CVXSSequenceDataset *sequence)
{
    if (!sequence) {
        CVXSErrorHandler::errorMessage(parent, ESTATUS_NOT_SEQUENCE,
                                       Text::tr("This window shows no sequence."));
        return ESTATUS_NOT_SEQUENCE;
    }
    const ESTATUS status = sequence->save();
    if (status != ESTATUS_SUCCESS)
        CVXSErrorHandler::errorMessage(parent, status, sequence->lastError());
    else // one that was never saved has just got its folder without a question
        vxLog(ELOG_INFORMATION, Text::tr("Sequence saved: %1").arg(sequence->getSequenceID()),
              sequence->getSequenceInfoPath());
    return status;
}
