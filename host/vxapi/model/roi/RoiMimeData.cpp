// SPDX-License-Identifier: MIT
#include "host/vxapi/model/roi/RoiMimeData.h"

#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/roi/RoiText.h"
#include "host/vxparser/CPLClickInfo.h"

#include <QCoreApplication>
#include <QMimeData>

namespace {

/// The same section as in a dataset's file, UTF-8.
const QString TYPE = QStringLiteral("application/x-vexa-rois");

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(ROI)
};

} // namespace

void roimime::write(const std::vector<CROIBase> &rois, QMimeData *data)
{
    auto *section = new CPLSection;
    section->setSectionKey(clickinfo::SECTION_ROIS);
    for (const CROIBase &roi : rois)
        section->addKeyValue(roi.name(), roitext::write(roi));
    CPLClickInfo record;
    record.addSection(section);
    const QByteArray text = record.toText();
    data->setData(TYPE, text);
    if (!data->hasText())
        data->setText(QString::fromUtf8(text));
}

bool roimime::isPresent(const QMimeData *data)
{
    return data && data->hasFormat(TYPE);
}

std::vector<CROIBase> roimime::read(const QMimeData *data, QString *reason)
{
    if (!isPresent(data)) {
        *reason = Text::tr("There is no ROI to be pasted: select ROIs and copy them first.");
        return {};
    }
    CPLClickInfo record;
    QString error;
    record.fromText(data->data(TYPE), &error);
    QStringList names;
    QStringList texts;
    if (const CPLSection *section = record[clickinfo::SECTION_ROIS]) {
        section->getKeyList(&names);
        section->getValueList(&texts);
    }
    std::vector<CROIBase> rois;
    for (int i = 0; i < names.size() && error.isEmpty(); ++i) {
        std::optional<CROIBase> roi = roitext::read(texts[i], &error);
        if (!roi)
            break;
        roi->setName(names[i]);
        rois.push_back(*roi);
    }
    if (error.isEmpty() && rois.empty())
        error = Text::tr("there is none");
    if (error.isEmpty())
        return rois;
    *reason = Text::tr("The copied ROIs cannot be read: %1").arg(error);
    return {};
}
