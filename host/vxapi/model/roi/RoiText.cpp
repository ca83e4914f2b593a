// SPDX-License-Identifier: MIT
#include "host/vxapi/model/roi/RoiText.h"

#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/clickinfo/ClickInfoValues.h"

#include <array>
#include <cmath>
#include <QCoreApplication>
#include <QMap>

using namespace clickinfo;

namespace {

constexpr std::array<QLatin1String, 5> SHAPES = {ROI_RECTANGLE, ROI_ELLIPSE, ROI_POLYGON, ROI_FREEHAND,
                                                 ROI_GRID}; // in the order of EROISHAPE
constexpr std::array<QLatin1String, 2> KINDS = {ROI_MEASUREMENT, ROI_BACKGROUND};

using Fields = QMap<QString, QString>;

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(ROI)
};

QString field(QLatin1String key, const QString &value)
{
    return QStringLiteral("; %1 %2").arg(key, value);
}

QString cornersText(const QVector<QPointF> &outline)
{
    QStringList corners;
    corners.reserve(outline.size());
    for (const QPointF &corner : outline)
        corners += textOfNumber(corner.x()) + QLatin1Char(' ') + textOfNumber(corner.y());
    return corners.join(QStringLiteral(", "));
}

template <std::size_t N>
bool indexOf(const std::array<QLatin1String, N> &names, const QString &name, int *index, QString *reason)
{
    for (std::size_t i = 0; i < N; ++i) {
        if (name == names[i]) {
            *index = int(i);
            return true;
        }
    }
    *reason = Text::tr("\"%1\" is no kind or shape of an ROI").arg(name);
    return false;
}

bool readNumber(const QString &text, double *number, QString *reason)
{
    bool isNumber = false;
    *number = text.toDouble(&isNumber); // C locale, whatever the system's
    if (isNumber && std::isfinite(*number))
        return true;
    *reason = Text::tr("\"%1\" is not a finite number").arg(text);
    return false;
}

bool takeField(Fields *fields, QLatin1String key, QString *value, QString *reason)
{
    if (!fields->contains(key)) {
        *reason = Text::tr("it has no \"%1\"").arg(key);
        return false;
    }
    *value = fields->take(key);
    return true;
}

bool takeLength(Fields *fields, QLatin1String key, double *length, QString *reason)
{
    QString text;
    return takeField(fields, key, &text, reason) && readNumber(text, length, reason);
}

bool takeCount(Fields *fields, QLatin1String key, int *count, QString *reason)
{
    QString text;
    if (!takeField(fields, key, &text, reason))
        return false;
    *count = text.toInt();
    if (*count >= 1)
        return true;
    *reason = Text::tr("\"%1 %2\" is not a whole number of 1 or more").arg(key, text);
    return false;
}

bool takeBox(Fields *fields, QRectF *box, QString *reason)
{
    double left = 0.0, top = 0.0, width = 0.0, height = 0.0;
    if (!takeLength(fields, ROI_LEFT, &left, reason) || !takeLength(fields, ROI_TOP, &top, reason) ||
        !takeLength(fields, ROI_WIDTH, &width, reason) || !takeLength(fields, ROI_HEIGHT, &height, reason))
        return false;
    if (!(width > 0.0 && height > 0.0)) {
        *reason = Text::tr("its width or height is not above 0");
        return false;
    }
    *box = QRectF(left, top, width, height);
    return true;
}

bool takeCorners(Fields *fields, QVector<QPointF> *outline, QString *reason)
{
    QString text;
    if (!takeField(fields, ROI_CORNERS, &text, reason))
        return false;
    const QVector<QStringRef> corners = text.splitRef(QLatin1Char(','));
    outline->reserve(corners.size());
    for (const QStringRef &corner : corners) {
        const QStringList xy = corner.toString().simplified().split(QLatin1Char(' '));
        double x = 0.0, y = 0.0;
        if (xy.size() != 2) {
            *reason = Text::tr("\"%1\" is not a corner \"x y\"").arg(corner.trimmed().toString());
            return false;
        }
        if (!readNumber(xy[0], &x, reason) || !readNumber(xy[1], &y, reason))
            return false;
        outline->append({x, y});
    }
    return true;
}

bool fieldsOf(const QStringList &parts, Fields *fields, QString *reason)
{
    for (int i = 1; i < parts.size(); ++i) {
        const QString part = parts[i].trimmed();
        const QString key = part.section(QLatin1Char(' '), 0, 0);
        if (fields->contains(key)) {
            *reason = Text::tr("\"%1\" stands twice").arg(key);
            return false;
        }
        fields->insert(key, part.mid(key.size()).trimmed());
    }
    return true;
}

std::optional<CROIBase> roiOf(EROISHAPE shape, EROIKIND kind, Fields *fields, QString *reason)
{
    if (shape == EROI_POLYGON || shape == EROI_FREEHAND) {
        QVector<QPointF> outline;
        if (!takeCorners(fields, &outline, reason))
            return std::nullopt;
        return CROIBase(shape, kind, outline);
    }
    QRectF box;
    if (!takeBox(fields, &box, reason))
        return std::nullopt;
    if (shape != EROI_GRID)
        return CROIBase(shape, kind, box);
    int rows = 0, columns = 0;
    if (!takeCount(fields, ROI_ROWS, &rows, reason) || !takeCount(fields, ROI_COLUMNS, &columns, reason))
        return std::nullopt;
    return CROIBase(kind, box, rows, columns);
}

} // namespace

QString roitext::write(const CROIBase &roi)
{
    const QString start =
        QString(KINDS[std::size_t(roi.kind())]) + QLatin1Char(' ') + SHAPES[std::size_t(roi.shape())];
    if (roi.shape() == EROI_POLYGON || roi.shape() == EROI_FREEHAND)
        return start + field(ROI_CORNERS, cornersText(roi.outline()));
    const QRectF box = roi.boundingBox();
    const QString text = start + field(ROI_LEFT, textOfNumber(box.x())) +
                         field(ROI_TOP, textOfNumber(box.y())) + field(ROI_WIDTH, textOfNumber(box.width())) +
                         field(ROI_HEIGHT, textOfNumber(box.height()));
    if (roi.shape() != EROI_GRID)
        return text;
    return text + field(ROI_ROWS, QString::number(roi.rows())) +
           field(ROI_COLUMNS, QString::number(roi.columns()));
}

std::optional<CROIBase> roitext::read(const QString &text, QString *reason)
{
    const QStringList parts = text.split(QLatin1Char(';'));
    const QStringList start = parts.first().simplified().split(QLatin1Char(' '));
    int kind = 0, shape = 0;
    Fields fields;
    if (!indexOf(KINDS, start.value(0), &kind, reason) ||
        !indexOf(SHAPES, start.mid(1).join(QLatin1Char(' ')), &shape, reason) ||
        !fieldsOf(parts, &fields, reason))
        return std::nullopt;
    std::optional<CROIBase> roi = roiOf(EROISHAPE(shape), EROIKIND(kind), &fields, reason);
    if (!roi)
        return std::nullopt;
    if (!fields.isEmpty()) {
        *reason = Text::tr("\"%1\" means nothing here").arg(fields.firstKey());
        return std::nullopt;
    }
    *reason = roi->complaint();
    return reason->isNull() ? roi : std::nullopt;
}
