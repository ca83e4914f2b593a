// SPDX-License-Identifier: MIT
#include "host/vxapi/model/CROIManager_p.h"

#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/CRoiMeasurementManager.h"
#include "host/vxapi/model/CVXSDataset.h"

#include <algorithm>
#include <QRegularExpression>

namespace {

/// Of the field of view's width; enough to see two outlines, not enough to lose sight of one.
constexpr double SHIFT = 0.02;

QString withoutNumber(const QString &name, int *number)
{
    static const QRegularExpression numbered(QStringLiteral("^(.*\\S) ([1-9][0-9]{0,8})$"),
                                             QRegularExpression::DotMatchesEverythingOption);
    const QRegularExpressionMatch match = numbered.match(name);
    *number = match.hasMatch() ? match.captured(2).toInt() : 1;
    return match.hasMatch() ? match.captured(1) : name;
}

} // namespace

std::optional<CROIBase> &CROIManager::Private::clipboard()
{
    static std::optional<CROIBase> copy;
    return copy;
}

QStringList CROIManager::Private::namesOf(const CROIBase &roi)
{
    return QStringList(roi.name()) + roi.cellNames();
}

bool CROIManager::Private::isSameShape(const CROIBase &a, const CROIBase &b)
{
    // Not with == of rectangles and points, which takes neighbours for the same.
    const auto isSame = [](const QPointF &p, const QPointF &q) { return p.x() == q.x() && p.y() == q.y(); };
    const QRectF boxA = a.boundingBox();
    const QRectF boxB = b.boundingBox();
    const QVector<QPointF> cornersA = a.outline();
    const QVector<QPointF> cornersB = b.outline();
    return a.shape() == b.shape() && a.rows() == b.rows() && a.columns() == b.columns() &&
           isSame(boxA.topLeft(), boxB.topLeft()) && boxA.width() == boxB.width() &&
           boxA.height() == boxB.height() &&
           std::equal(cornersA.cbegin(), cornersA.cend(), cornersB.cbegin(), cornersB.cend(), isSame);
}

QString CROIManager::Private::clickNumber() const
{
    return dataset ? dataset->getClickNumber() : QString();
}

QString CROIManager::Private::place() const
{
    const QString folder = dataset ? dataset->getFolderPath() : QString();
    return folder.isEmpty() ? clickNumber() : folder + clickinfo::FILE_ANALYZED_CLICK_INFO;
}

bool CROIManager::Private::owns(const CROIBase *roi) const
{
    return roi && std::any_of(rois.cbegin(), rois.cend(), [&](const auto &own) { return own.get() == roi; });
}

bool CROIManager::Private::isNameFree(const CROIBase &roi) const
{
    const QStringList names = namesOf(roi);
    return std::none_of(names.cbegin(), names.cend(),
                        [&](const QString &name) { return taken.contains(name.toCaseFolded()); });
}

void CROIManager::Private::claim(const CROIBase &roi)
{
    for (const QString &name : namesOf(roi))
        taken.insert(name.toCaseFolded());
}

void CROIManager::Private::release(const CROIBase &roi)
{
    for (const QString &name : namesOf(roi))
        taken.remove(name.toCaseFolded());
}

void CROIManager::Private::giveFreeName(CROIBase *roi) const
{
    int number = 0;
    QString base = withoutNumber(roi->name(), &number);
    if (roi->name().trimmed().isEmpty()) {
        base = roi->shape() == EROI_GRID        ? QStringLiteral("Grid")
               : roi->kind() == EROI_BACKGROUND ? QStringLiteral("Bkg")
                                                : QStringLiteral("ROI");
        number = 0;
    }
    while (number == 0 || !isNameFree(*roi))
        roi->setName(QStringLiteral("%1 %2").arg(base, QString::number(++number)));
}

CRoiMeasurementManager *CROIManager::Private::records() const
{
    const bool areOwn = dataset && dataset->ownsRecords();
    return areOwn ? CRoiMeasurementManager::getRoiMeasurementManager() : nullptr;
}

CROIBase *CROIManager::Private::append(const CROIBase &roi)
{
    rois.push_back(std::make_unique<CROIBase>(roi));
    claim(roi);
    return rois.back().get();
}

void CROIManager::Private::removeSelected()
{
    for (const CROIBase *roi : qAsConst(selected)) {
        release(*roi);
        if (roi == lastCreated)
            lastCreated = nullptr;
    }
    rois.erase(std::remove_if(rois.begin(), rois.end(),
                              [&](const auto &roi) { return selected.contains(roi.get()); }),
               rois.end());
    selected.clear();
}

void CROIManager::Private::clear()
{
    selected.clear();
    lastCreated = nullptr;
    rois.clear();
    taken.clear();
    unreadable.clear();
}

QStringList CROIManager::Private::allNames() const
{
    QStringList names;
    for (const auto &roi : rois)
        names += namesOf(*roi);
    return names;
}

void CROIManager::Private::shift(CROIBase *roi) const
{
    const double width = dataset ? dataset->getFOVForImage(EIMAGE_LUMINESCENT) : 0.0;
    const double step = SHIFT * (width > 0.0 ? width : 10.0);
    const auto isCovered = [&] {
        return std::any_of(rois.cbegin(), rois.cend(),
                           [&](const auto &own) { return isSameShape(*own, *roi); });
    };
    // Once for each paste before; each ROI can be in the way once.
    for (std::size_t i = 0; i <= rois.size() && (i == 0 || isCovered()); ++i)
        roi->translate({step, step});
}
