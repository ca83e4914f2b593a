// SPDX-License-Identifier: MIT
#include "tests/support/TestStudy.h"

#include "host/vxapi/model/clickinfo/ClickInfoValues.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxparser/CPLClickInfo.h"

namespace {

// A section without the keys that a test wants missing has to be made anew: pairs are never removed from one.
void setKeys(CPLClickInfo *info, QLatin1String sectionKey, const QMap<QString, QString> &defaults,
             const QMap<QString, QString> &changes)
{
    CPLSection *target = clickinfo::ensureSection(info, sectionKey);
    for (auto it = defaults.begin(); it != defaults.end(); ++it) {
        if (!changes.contains(it.key()))
            target->setValue(it.key(), it.value());
    }
    for (auto it = changes.begin(); it != changes.end(); ++it) {
        if (!it.value().isNull())
            target->setValue(it.key(), it.value());
    }
}

} // namespace

TestStudy::TestStudy(const QString &id) : m_sequence(new CVXSSequenceDataset(id)) {}

TestStudy::~TestStudy()
{
    close();
}

void TestStudy::close()
{
    delete m_sequence;
    m_sequence = nullptr;
}

CVXSDataset *TestStudy::add(const ClickSpec &spec)
{
    using namespace clickinfo;
    auto *dataset = new CVXSDataset(spec.clickNumber);
    CPLClickInfo *info = dataset->getClickInfo();
    const auto text = [](double value) { return QString::number(value, 'g', 17); };
    if (spec.counts) {
        setKeys(info, SECTION_LUMINESCENT,
                {{KEY_KIND, spec.kind},
                 {KEY_FOV, text(spec.fieldOfView)},
                 {KEY_EXPOSURE, "60"},
                 {KEY_FNUMBER, "1"},
                 {KEY_TRANSMISSION, "0.5"},
                 {KEY_EXCITATION_IRRADIANCE, "20"}},
                spec.luminescentKeys);
        setKeys(info, SECTION_CAMERA,
                {{KEY_GAIN, "2"},
                 {KEY_QUANTUM_EFFICIENCY, "0.8"},
                 {KEY_PIXEL_PITCH, "13.5"},
                 {KEY_MAGNIFICATION, "0.2"}},
                spec.cameraKeys);
        CILImage counts = image(spec.width, spec.height, spec.counts);
        counts.setBinningFactor(spec.binning);
        dataset->setCoreImage(EIMAGE_LUMINESCENT, counts);
    }
    if (spec.photograph) {
        setKeys(info, SECTION_PHOTOGRAPH, {{KEY_FOV, text(spec.fieldOfView)}}, {});
        dataset->setCoreImage(EIMAGE_PHOTOGRAPH,
                              image(spec.photographWidth, spec.photographHeight, spec.photograph));
    }
    if (spec.flatField)
        dataset->setCoreImage(EIMAGE_FLATFIELD, image(spec.width, spec.height, spec.flatField));
    if (!m_sequence->addDataset(dataset)) {
        delete dataset;
        return nullptr;
    }
    return dataset;
}

bool TestStudy::save()
{
    return m_sequence->save(m_folder.path()) == ESTATUS_SUCCESS;
}

CILImage TestStudy::image(int width, int height, const std::function<float(int, int)> &pixels)
{
    CILImage written;
    written.InitWithType(VXS_FLOAT, std::uint32_t(width), std::uint32_t(height));
    auto *data = static_cast<float *>(written.get_data());
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            data[std::size_t(y) * std::size_t(width) + std::size_t(x)] = pixels(x, y);
    // A copy is an image of its own: nobody holds a pointer into its pixels, so what it is like may be
    // remembered.
    return CILImage(static_cast<const CILImage &>(written));
}
