// SPDX-License-Identifier: MIT
#include "host/vxapi/view/windows/DatasetPicture.h"

#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/clickinfo/ClickInfoValues.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/VXCalibration.h"
#include "host/vxapi/view/canvas/CVXSMultiImageView.h"
#include "host/vxparser/CPLClickInfo.h"

#include <cmath>
#include <limits>
#include <QCoreApplication>

namespace {

/// Below this, limits with six decimals are off by more than one of 256 colours.
constexpr double LEAST_STORED_RANGE = 256 * 0.5e-6;

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(DatasetPicture)
};

CILImage greyPicture(const CILImage &stored)
{
    CILImage image = stored;
    CILPalette palette;
    palette.SetColorTable(VXS_CT_GRAYS, double(image.getMin()), double(image.getMax()), 0, 0);
    image.setPalette(palette);
    return image;
}

/// Lines that fit a view: broken at blanks, a path behind a "/".
QStringList wrapped(const QString &line)
{
    constexpr int LONGEST = 60;
    QStringList lines;
    QString rest = line;
    while (rest.size() > LONGEST) {
        const int blank = rest.lastIndexOf(QLatin1Char(' '), LONGEST);
        const int slash = rest.lastIndexOf(QLatin1Char('/'), LONGEST - 1) + 1;
        const int end = blank > LONGEST / 2 ? blank : slash > 0 ? slash : LONGEST;
        lines.append(rest.left(end));
        rest = rest.mid(end).trimmed();
    }
    return lines << rest;
}

PictureTone toneOf(const CVXSDataset &dataset)
{
    return {dataset.getToolInfo().brightness, double(dataset.getToolInfo().gamma)};
}

} // namespace

DatasetPicture::DatasetPicture(CVXSDataset *dataset, CVXSMultiImageView *view)
    : m_dataset(dataset), m_view(view)
{
    m_view->setLayout(ELAYOUT_SINGLE);
    m_view->setImageBorder(20);
    m_view->addImage(nullptr, false, QString(), 0);
    m_message.show(false);
    m_view->addTextTag(&m_message);
    const VXSRECT strip = m_view->getColorBarRect();
    m_bar.rect = {strip.left, strip.top + 0.08f * strip.height(), strip.right,
                  strip.top + 0.92f * strip.height()};
    const QVector<EDATASETPICTURE> all = choices();
    if (!all.isEmpty())
        m_choice = all.first();
}

// A result of image math opens in the colours in which it was made, in the unit of its pixels; but for small
// values (ratios, efficiencies), of which the record keeps too few digits.
ColorLimits DatasetPicture::wantedLimits() const
{
    if (const std::optional<ColorLimits> chosen = m_dataset->getColorLimits())
        return *chosen;
    const CPLClickInfo &info = *m_dataset->getClickInfo();
    if (!clickinfo::isMathResult(info))
        return ColorLimits();
    const auto stored = [&info](QLatin1String key) {
        return clickinfo::numberOf(info, clickinfo::SECTION_GRAPH_CONTROLS, key);
    };
    ColorLimits limits{ELIMITS_MANUAL, stored(clickinfo::KEY_COLOR_TABLE_MIN),
                       stored(clickinfo::KEY_COLOR_TABLE_MAX), EUNIT_COUNTS};
    const QString unitName =
        clickinfo::textOf(info, clickinfo::SECTION_GRAPH_CONTROLS, clickinfo::KEY_INTENSITY_CALIBRATION);
    const bool isUsable = unitOfKey(unitName, &limits.unit) && limits.high - limits.low >= LEAST_STORED_RANGE;
    return isUsable ? limits : ColorLimits();
}

DatasetPicture::~DatasetPicture()
{
    m_view->removeColorbar(&m_bar);
    m_view->setUnderlay(0, {});
    m_view->setImageAt(nullptr, false, 0, QString(), 0);
}

QVector<EDATASETPICTURE> DatasetPicture::choices() const
{
    QVector<EDATASETPICTURE> found;
    if (!m_dataset)
        return found;
    const CVXSImageList *images = m_dataset->getImageList();
    const bool isLuminescent = images->isPresent(EIMAGE_LUMINESCENT);
    if (isLuminescent && images->isPresent(EIMAGE_PHOTOGRAPH))
        found.append(EPICTURE_OVERLAY);
    if (isLuminescent)
        found.append(EPICTURE_LUMINESCENT);
    if (images->isPresent(EIMAGE_PHOTOGRAPH))
        found.append(EPICTURE_PHOTOGRAPH);
    if (images->isPresent(EIMAGE_XRAY))
        found.append(EPICTURE_XRAY);
    return found;
}

bool DatasetPicture::isLuminescentShown() const
{
    return m_choice == EPICTURE_OVERLAY || m_choice == EPICTURE_LUMINESCENT;
}

void DatasetPicture::setLimits(ColorLimits limits)
{
    if (!m_dataset)
        return;
    limits.unit = m_limits.unit < EUNIT_COUNT ? m_limits.unit : m_dataset->getUnit();
    m_dataset->setColorLimits(limits);
}

void DatasetPicture::refresh()
{
    if (!m_dataset)
        return;
    m_message.show(false);
    m_note.clear();
    m_view->setUnderlay(0, {});
    m_view->setImageTone(0, {});
    if (choices().isEmpty())
        showMessage(Text::tr("This dataset holds no image."));
    else if (isLuminescentShown())
        showLuminescent();
    else
        showStored(m_choice == EPICTURE_PHOTOGRAPH ? EIMAGE_PHOTOGRAPH : EIMAGE_XRAY);
    m_view->setImageAt(m_image.isEmpty() ? nullptr : &m_image, false, 0, QString(), 0);
}

void DatasetPicture::showLuminescent()
{
    const tag_edisplayunit unit = m_dataset->getShownUnit();
    if (m_dataset->getCalibratedLuminImage(m_dataset->getUnit(), &m_image, QStringLiteral("Image Window")) !=
        ESTATUS_SUCCESS) {
        showMessage(Text::tr("The image cannot be shown:") + QLatin1Char('\n') + m_dataset->lastError());
        return;
    }
    updateLimits(unit);
    const CVXSToolInfo &info = m_dataset->getToolInfo();
    CILPalette palette;
    palette.SetColorTable(m_dataset->getColorTable(), m_limits.low, m_limits.high, info.reversed ? 1 : 0, 0);
    palette.setLogScale(info.logarithmic ? 1 : 0);
    m_image.setPalette(palette);
    m_bar.palette = palette;
    m_view->addColorbar(&m_bar);
    if (m_choice == EPICTURE_OVERLAY)
        addPhotograph();
}

void DatasetPicture::updateLimits(tag_edisplayunit unit)
{
    m_limits = wantedLimits();
    // Products and ratios are the same in every unit.
    if (m_limits.mode == ELIMITS_MANUAL && (m_limits.unit == unit || unit >= EUNIT_COUNT))
        return;
    const bool isFull = m_limits.mode == ELIMITS_FULL;
    m_limits = {isFull ? ELIMITS_FULL : ELIMITS_AUTO, double(m_image.getMin()), double(m_image.getMax()),
                unit};
    if (m_limits.mode == ELIMITS_FULL)
        return;
    // What is computed has no camera that saturates: a product of counts may be far above its ceiling.
    double ceiling = std::numeric_limits<double>::infinity();
    if (!clickinfo::isMathResult(*m_dataset->getClickInfo())) {
        const double factor = VX_CalibrateIntensityWithFilterTrans(EIMAGE_LUMINESCENT, m_dataset,
                                                                   unitKey(EUNIT_COUNTS), unitKey(unit));
        ceiling = VX_SATURATED_COUNTS * (std::isfinite(factor) ? factor : 1.0);
    }
    VX_LuminImageMinMax(&m_image, &m_limits.low, &m_limits.high, unitKey(m_dataset->getUnit()), 1.0, ceiling,
                        VX_RANGE_BINS);
}

void DatasetPicture::addPhotograph()
{
    const CILImage *photograph = stored(EIMAGE_PHOTOGRAPH);
    if (!photograph) {
        m_note = Text::tr("photograph cannot be read");
        return;
    }
    m_photograph = greyPicture(*photograph);
    m_view->setUnderlay(0,
                        {&m_photograph, toneOf(*m_dataset), 1.0 / widthRatio(EIMAGE_PHOTOGRAPH), m_opacity});
}

void DatasetPicture::showStored(tag_eimagetype type)
{
    m_view->removeColorbar(&m_bar);
    const CILImage *image = stored(type);
    if (!image) {
        m_image = CILImage();
        showMessage(Text::tr("The image cannot be shown:") + QLatin1Char('\n') + m_dataset->lastError());
        return;
    }
    m_image = greyPicture(*image);
    if (type == EIMAGE_PHOTOGRAPH)
        m_view->setImageTone(0, toneOf(*m_dataset));
}

const CILImage *DatasetPicture::stored(tag_eimagetype type) const
{
    const CILImage *image = m_dataset ? m_dataset->getCoreImage(type) : nullptr;
    return image && !image->isEmpty() ? image : nullptr;
}

/// Width of the luminescent image's field over that of the other image; 1 when one is not recorded.
double DatasetPicture::widthRatio(tag_eimagetype type) const
{
    const double ratio = m_dataset->getFOVForImage(EIMAGE_LUMINESCENT) / m_dataset->getFOVForImage(type);
    // What is further apart than this is no field of view but a slip in a file.
    return std::isfinite(ratio) && ratio > 0.05 && ratio < 20.0 ? ratio : 1.0;
}

FieldMapping DatasetPicture::mapping() const
{
    const CILImage *luminescent = stored(EIMAGE_LUMINESCENT);
    QRectF place = m_view->imagePlace(0);
    if (!luminescent || place.isEmpty())
        return FieldMapping();
    const QSize pixels(int(luminescent->getWidth()), int(luminescent->getHeight()));
    if (!isLuminescentShown()) {
        const double width =
            place.width() * widthRatio(m_choice == EPICTURE_PHOTOGRAPH ? EIMAGE_PHOTOGRAPH : EIMAGE_XRAY);
        const QPointF centre = place.center();
        place.setSize(QSizeF(width, width * pixels.height() / pixels.width()));
        place.moveCenter(centre);
    }
    return FieldMapping(place, m_dataset->getFOVForImage(EIMAGE_LUMINESCENT), pixels);
}

QString DatasetPicture::obstacleToRois() const
{
    if (!m_dataset || !m_dataset->getImageList()->isPresent(EIMAGE_LUMINESCENT))
        return Text::tr("ROIs need a luminescent image, and this dataset has none.");
    const double width = m_dataset->getFOVForImage(EIMAGE_LUMINESCENT);
    if (!std::isfinite(width) || !(width > 0.0))
        return Text::tr("ROIs are kept in centimetres, and this dataset's field of view is not recorded.");
    if (!m_view->imageAt(0))
        return Text::tr("There is no picture to draw ROIs on.");
    return QString();
}

void DatasetPicture::showMessage(const QString &message)
{
    m_view->removeColorbar(&m_bar);
    QStringList lines;
    const QStringList given = message.split(QLatin1Char('\n'));
    for (const QString &line : given)
        lines += wrapped(line);
    lines.removeAll(QString());
    m_message.setStringList(lines);
    const QSize size = m_message.getSize();
    double width = 0.0;
    double height = 0.0;
    m_view->convertWindowToObjectSize(size.width(), size.height(), width, height);
    const VXSRECT column = m_view->getImageLayoutRect();
    m_message.setPosition(double(column.left) + (double(column.width()) - width) / 2.0,
                          double(column.top) + (double(column.height()) - height) / 2.0);
    m_message.show(true);
}
