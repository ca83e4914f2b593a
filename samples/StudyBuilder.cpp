// SPDX-License-Identifier: MIT
#include "samples/StudyBuilder.h"

#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxparser/CPLClickInfo.h"
#include "samples/Phantom.h"

using namespace clickinfo;

namespace samplestudy {

namespace {

QString dateOf(const QString &click)
{
    const QString stamp = click.mid(2);
    return QStringLiteral("%1-%2-%3T%4:%5:%6")
        .arg(stamp.mid(0, 4), stamp.mid(4, 2), stamp.mid(6, 2), stamp.mid(8, 2), stamp.mid(10, 2),
             stamp.mid(12, 2));
}

} // namespace

QString number(double value)
{
    return QString::number(value, 'g', 15);
}

CPLSection *section(CPLClickInfo *info, QLatin1String key, const QString &name)
{
    CPLSection *found = (*info)[key];
    if (!found) {
        found = new CPLSection;
        found->setSectionKey(key);
        info->addSection(found);
    }
    if (!name.isNull())
        found->setSectionName(name);
    return found;
}

void set(CPLSection *target, const QVector<Pair> &pairs)
{
    for (const Pair &pair : pairs)
        target->setValue(pair.key, pair.value);
}

QVector<Pair> fluorescence(const QString &excitation, const QString &emission, const QString &level)
{
    return {{KEY_EXCITATION_FILTER, excitation},
            {KEY_EMISSION_FILTER, emission},
            {KEY_EXCITATION_IRRADIANCE, QStringLiteral("18.5")},
            {KEY_FLUORESCENCE_LEVEL, level}};
}

StudyBuilder::StudyBuilder(const QString &sequenceId, std::uint64_t seed)
    : m_sequenceId(sequenceId), m_random(seed)
{
}

CVXSSequenceDataset &StudyBuilder::sequence()
{
    if (!m_sequence)
        m_sequence = std::make_unique<CVXSSequenceDataset>(m_sequenceId);
    return *m_sequence;
}

CVXSDataset *StudyBuilder::click(const QString &number, const QString &label)
{
    auto *dataset = new CVXSDataset(number);
    CPLClickInfo *info = dataset->getClickInfo();
    const int index = m_sequence ? m_sequence->getClickNumbers().size() : 0;
    set(section(info, SECTION_CLICK_NUMBER, dataset->getClickNumber()),
        {{KEY_SEQUENCE_ID, m_sequenceId}, {KEY_CLICK_INDEX, QString::number(index)}});
    set(section(info, SECTION_USER_INPUT), {{QLatin1String("User"), QStringLiteral("AB")},
                                            {QLatin1String("Group"), QStringLiteral("Sample study")},
                                            {QLatin1String("Experiment"), label}});
    set(section(info, SECTION_ANALYSIS_USER_INPUT),
        {{QLatin1String("Analysis Comment"), QStringLiteral("")}});
    return dataset;
}

void StudyBuilder::luminescent(CVXSDataset *dataset, const Camera &camera, const CILImage &expected,
                               QLatin1String kind, double exposure, const QVector<Pair> &more)
{
    luminescentImage(dataset, camera, camera.exposure(expected, m_random), kind, exposure, more);
}

void StudyBuilder::luminescentImage(CVXSDataset *dataset, const Camera &camera, const CILImage &image,
                                    QLatin1String kind, double exposure, const QVector<Pair> &more)
{
    dataset->setCoreImage(EIMAGE_LUMINESCENT, image);
    dataset->setCoreImage(EIMAGE_FLATFIELD, camera.flatField());
    dataset->setCoreImage(EIMAGE_BACKGROUND, camera.background());
    CPLClickInfo *info = dataset->getClickInfo();
    CPLSection *lumin = section(info, SECTION_LUMINESCENT);
    set(lumin, {{KEY_ACQUISITION_DATE, dateOf(dataset->getClickNumber())},
                {KEY_KIND, kind},
                {KEY_BINNING, number(camera.binning)},
                {KEY_FOV, number(camera.fieldOfView)},
                {KEY_EXPOSURE, number(exposure)},
                {KEY_FNUMBER, QStringLiteral("1.2")},
                {KEY_TRANSMISSION, QStringLiteral("0.7")},
                {KEY_IMAGING_ANGLE, QStringLiteral("0")}});
    set(lumin, more);
    set(section(info, SECTION_CAMERA),
        {{KEY_CAMERA_NAME, QStringLiteral("Simulated CCD")},
         {KEY_GAIN, number(Camera::GAIN)},
         {KEY_QUANTUM_EFFICIENCY, number(Camera::QUANTUM_EFFICIENCY)},
         {KEY_PIXEL_PITCH, number(Camera::PIXEL_PITCH)},
         {KEY_MAGNIFICATION, number(Camera::SENSOR * Camera::PIXEL_PITCH * 1e-4 / camera.fieldOfView)}});
    note(lumin, dataset, number(camera.binning));
}

void StudyBuilder::photograph(CVXSDataset *dataset, const Camera &camera)
{
    Camera fine = camera;
    fine.width *= 2;
    fine.height *= 2;
    fine.binning /= 2.0;
    const CILImage expected = fine.expectedCounts([&fine](double x, double y) {
        return 36000.0 * phantom::photograph(x, y) / (fine.binning * fine.binning);
    });
    dataset->setCoreImage(EIMAGE_PHOTOGRAPH, fine.exposure(expected, m_random));
    CPLSection *photo = section(dataset->getClickInfo(), SECTION_PHOTOGRAPH);
    set(photo, {{KEY_ACQUISITION_DATE, dateOf(dataset->getClickNumber())},
                {KEY_BINNING, number(fine.binning)},
                {KEY_FOV, number(fine.fieldOfView)}});
    note(photo, dataset, number(fine.binning));
}

// The note stays the last pair of its section: what a tool adds is found before it.
void StudyBuilder::note(CPLSection *target, const CVXSDataset *dataset, const QString &binning) const
{
    QString index;
    if (const CPLSection *click = (*dataset->getClickInfo())[SECTION_CLICK_NUMBER])
        click->getValue(KEY_CLICK_INDEX, &index);
    target->addKeyValue(KEY_NOTE, QStringLiteral("Sequence ID=%1;ClickNumber Index=%2;Binning Factor=%3;")
                                      .arg(m_sequenceId, index, binning));
}

} // namespace samplestudy
