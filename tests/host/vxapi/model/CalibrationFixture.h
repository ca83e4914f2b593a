// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/clickinfo/ClickInfoValues.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/VXCalibration.h"
#include "tests/support/TestStudy.h"

#include <memory>
#include <QObject>

namespace calibration {

constexpr float OFFSET = 100.0f;

inline float background(int x, int)
{
    return OFFSET + float(x % 3);
}

inline float flatField(int x, int)
{
    return x < 16 ? 0.5f : 1.0f;
}

inline float counts(int x, int y)
{
    return 300.0f + float(x + 2 * y);
}

inline void setKey(CVXSDataset *dataset, QLatin1String section, QLatin1String key, const QString &value)
{
    clickinfo::ensureSection(dataset->getClickInfo(), section)->setValue(key, value);
}

inline CILImage calibrated(const CVXSDataset *dataset, tag_edisplayunit unit)
{
    CILImage image;
    dataset->getCalibratedLuminImage(unit, &image, QStringLiteral("test"));
    return image;
}

inline double radianceFactor(CVXSDataset *dataset)
{
    return VX_CalibrateIntensityWithFilterTrans(EIMAGE_LUMINESCENT, dataset, "counts", "Radiance (Photons)");
}

} // namespace calibration

/// A sequence of datasets whose pixels and corrections are known.
class CalibrationFixture : public QObject
{
protected:
    void setUp() { m_study = std::make_unique<TestStudy>(); }
    void tearDown() { m_study.reset(); }

    CVXSDataset *add(const ClickSpec &spec = ClickSpec())
    {
        ClickSpec named = spec;
        named.clickNumber = QStringLiteral("AB%1").arg(20260102030405 + m_next++);
        return m_study->add(named);
    }
    CVXSDataset *addWithCorrections()
    {
        ClickSpec spec;
        spec.counts = calibration::counts;
        spec.flatField = calibration::flatField;
        CVXSDataset *dataset = add(spec);
        dataset->setCoreImage(EIMAGE_BACKGROUND, TestStudy::image(32, 32, calibration::background));
        return dataset;
    }

    std::unique_ptr<TestStudy> m_study;

private:
    int m_next = 0;
};
