// SPDX-License-Identifier: MIT
#include "host/vxapi/model/clickinfo/RecordedBinning.h"

#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"

#include <limits>
#include <QByteArray>
#include <QJsonDocument>
#include <QJsonObject>

double clickinfo::recordedBinning(const std::string &description)
{
    const QByteArray json = QByteArray::fromRawData(description.data(), int(description.size()));
    const QJsonObject made = QJsonDocument::fromJson(json).object().value(RECORD_MADE_BY).toObject();
    const double binning = made.value(RECORD_BINNING).toDouble();
    return binning > 0.0 ? binning : std::numeric_limits<double>::quiet_NaN();
}
