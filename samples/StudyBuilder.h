// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "samples/Camera.h"

#include <cstdint>
#include <memory>
#include <QLatin1String>
#include <QString>
#include <QVector>

class CPLClickInfo;
class CPLSection;
class CVXSDataset;

/// What the sample study's sequences are built of: clicks with their records, and simulated images in them.
///
///     StudyBuilder study("AB20240511101000_SEQ", 1);
///     CVXSDataset *click = study.click("AB20240511101500", "Reporter");
///     study.luminescent(click, camera, expected, clickinfo::KIND_LUMINESCENT, 60.0, {});
///     study.photograph(click, camera);
///     study.add(click);
///     study.sequence().save(folder);
namespace samplestudy {

/// A pair of a ClickInfo section.
struct Pair
{
    QLatin1String key;
    QString value;
};

QString number(double value);
/// The section of that key, made when it is not there; a name that is not null is set.
CPLSection *section(CPLClickInfo *info, QLatin1String key, const QString &name = QString());
void set(CPLSection *target, const QVector<Pair> &pairs);
/// Filters, irradiance and fluorescence level.
QVector<Pair> fluorescence(const QString &excitation, const QString &emission, const QString &level);

/// A sequence in the making. All images draw their noise from one row of random numbers, so that every byte
/// follows from seed and order.
class StudyBuilder
{
public:
    StudyBuilder(const QString &sequenceId, std::uint64_t seed);

    /// Made when it is first asked for.
    CVXSSequenceDataset &sequence();

    /// A click with what every click has, in no sequence yet: to be added, or the caller's.
    CVXSDataset *click(const QString &number, const QString &label);
    /// One exposure of the expected counts, with flat field and background, and what is recorded of it; the
    /// exposure in seconds, further pairs of the section in `more`.
    void luminescent(CVXSDataset *dataset, const Camera &camera, const CILImage &expected, QLatin1String kind,
                     double exposure, const QVector<Pair> &more);
    /// The same of an image that is made already, in counts with the camera's offset.
    void luminescentImage(CVXSDataset *dataset, const Camera &camera, const CILImage &image,
                          QLatin1String kind, double exposure, const QVector<Pair> &more);
    /// Twice as many pixels an axis as the camera's luminescent images.
    void photograph(CVXSDataset *dataset, const Camera &camera);
    void add(CVXSDataset *dataset) { sequence().addDataset(dataset); }

    Random &random() { return m_random; }

private:
    void note(CPLSection *target, const CVXSDataset *dataset, const QString &binning) const;

    QString m_sequenceId;
    Random m_random;
    std::unique_ptr<CVXSSequenceDataset> m_sequence;
};

} // namespace samplestudy
