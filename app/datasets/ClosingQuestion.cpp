// SPDX-License-Identifier: MIT
#include "app/datasets/ClosingQuestion.h"

#include "app/datasets/DatasetParts.h"
#include "app/datasets/LooseDatasets.h"
#include "app/datasets/SequenceManager.h"
#include "host/vxutils/CVXSMessageBox.h"
#include "host/vxutils/CVXUtilityFns.h"

#include <QCoreApplication>

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(ClosingQuestion)
};

constexpr int MAX_LINES = 12; // more would be a box larger than the screen

} // namespace

bool isReadyToQuit(QWidget *parent, const DatasetParts &parts)
{
    QStringList losses = parts.looseDatasets->losses() + parts.sequences->losses();
    // About one alone the question of that one has more to offer.
    if (losses.size() < 2)
        return parts.looseDatasets->areReadyToClose() && parts.sequences->areReadyToClose();
    if (losses.size() > MAX_LINES) {
        const int more = losses.size() - MAX_LINES;
        losses = losses.mid(0, MAX_LINES);
        losses += Text::tr("and %1 more").arg(more);
    }
    enum { SAVE, DISCARD, CANCEL };
    const int answer = CVXSMessageBox::warning(
        parent, CVXUtilityFns::getAppName(),
        Text::tr("These changes are not saved:\n\n%1\n\nSave all of them before %2 is closed?")
            .arg(losses.join(QLatin1Char('\n')), CVXUtilityFns::getAppName()),
        QStringList{Text::tr("&Save All"), Text::tr("&Discard All"), Text::tr("Cancel")}, SAVE, CANCEL);
    if (answer == SAVE)
        return parts.looseDatasets->saveAll() && parts.sequences->saveAll();
    return answer == DISCARD;
}
