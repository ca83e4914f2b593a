// SPDX-License-Identifier: MIT
#include "app/menus/UnitOffer.h"

#include "host/vxapi/model/CVXSDataset.h"

#include <algorithm>
#include <QCoreApplication>
#include <QStringList>
#include <QVector>

namespace {

constexpr int MAX_NAMED = 3; ///< click numbers; a tooltip is no list

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(UnitOffer)
};

/// The datasets that have the same in their way.
struct Obstacle
{
    QString reason;
    QStringList clickNumbers;
};

QString named(const QStringList &clickNumbers)
{
    const QString names = QStringList(clickNumbers.mid(0, MAX_NAMED)).join(QStringLiteral(", "));
    const int others = clickNumbers.size() - MAX_NAMED;
    return others > 0 ? Text::tr("%1 and %2 more").arg(names).arg(others) : names;
}

} // namespace

UnitOffer UnitOffer::of(const QList<CVXSDataset *> &datasets, tag_edisplayunit unit)
{
    UnitOffer offer;
    QVector<Obstacle> obstacles;
    int count = 0;
    for (const CVXSDataset *dataset : datasets) {
        if (!dataset->getImageList()->isPresent(EIMAGE_LUMINESCENT))
            continue;
        ++count;
        const QString reason = dataset->obstacleToUnit(unit);
        offer.isPossible = offer.isPossible || reason.isEmpty();
        if (reason.isEmpty())
            continue;
        auto same = std::find_if(obstacles.begin(), obstacles.end(),
                                 [&reason](const Obstacle &other) { return other.reason == reason; });
        if (same == obstacles.end())
            same = obstacles.insert(obstacles.end(), Obstacle{reason, {}});
        same->clickNumbers += dataset->getClickNumber();
    }
    QStringList lines;
    for (const Obstacle &obstacle : qAsConst(obstacles)) {
        lines +=
            count == 1
                ? obstacle.reason
                : Text::tr("%1 cannot be shown in it: %2").arg(named(obstacle.clickNumbers), obstacle.reason);
    }
    if (count == 0)
        lines += Text::tr("There is no luminescent image.");
    offer.remark = lines.join(QLatin1Char('\n'));
    return offer;
}
