// SPDX-License-Identifier: MIT
#include "app/import/ImportForm.h"

#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/clickinfo/ConstantRanges.h"
#include "host/vxutils/CVXPreference.h"

#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSettings>

namespace {

constexpr char GROUP[] = "ImportImages";

QString keyOf(const char *name)
{
    return QLatin1String(GROUP) + QLatin1Char('/') + QLatin1String(name);
}

QString rangeOf(QLatin1String key)
{
    return clickinfo::constantRange(key).text();
}

QFormLayout *newGroup(QHBoxLayout *row, const QString &title)
{
    auto *box = new QGroupBox(title);
    row->addWidget(box, 1);
    return new QFormLayout(box);
}

} // namespace

ImportForm::ImportForm(QWidget *parent) : QWidget(parent)
{
    using S = ImportSettings;
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);

    QFormLayout *images = newGroup(row, tr("All images"));
    m_initials = addText(images, "initials", tr("&User initials"),
                         tr("Letters that the names of the datasets begin with, such as ZB"));
    m_kind = new QComboBox;
    m_kind->setObjectName(QStringLiteral("kind"));
    m_kind->addItem(tr("Luminescence"), clickinfo::KIND_LUMINESCENT);
    m_kind->addItem(tr("Fluorescence"), clickinfo::KIND_FLUORESCENT);
    m_kind->addItem(tr("Transfluorescence"), clickinfo::KIND_TRANSFLUORESCENT);
    m_kind->addItem(tr("Transillumination"), clickinfo::KIND_TRANSILLUMINATION);
    images->addRow(tr("&Kind"), m_kind);
    addNumber(images, "fieldOfView", tr("Field of &view"), tr("cm"), QString(), &S::fieldOfView,
              tr("Width of what the whole image shows"));
    addNumber(images, "binning", tr("&Binning"), QString(), QStringLiteral("1"), &S::binning,
              tr("Sensor pixels a pixel, along one side"));
    addNumber(images, "exposure", tr("&Exposure time"), tr("s"), QStringLiteral("1"), &S::exposure,
              tr("Of every image that has no exposure of its own in the table"));
    addNumber(images, "fNumber", tr("&f-number"), QString(), QStringLiteral("1"), &S::fNumber,
              tr("Focal length over aperture"));
    m_angle = addText(images, "imagingAngle", tr("Imaging ang&le"),
                      tr("In degrees, or a name such as Left; may stay empty"));

    QFormLayout *camera = newGroup(row, tr("Camera, for radiance and radiant efficiency only"));
    addNumber(camera, "pixelPitch", tr("&Pixel pitch"), tr("\xc2\xb5m"), QStringLiteral("13"), &S::pixelPitch,
              tr("Of the sensor, before binning"));
    addNumber(camera, "electronsPerCount", tr("Electrons per &count"), QString(), QStringLiteral("1"),
              &S::electronsPerCount, tr("The camera's gain"));
    addNumber(camera, "quantumEfficiency", tr("&Quantum efficiency"), QString(), QStringLiteral("1"),
              &S::quantumEfficiency,
              tr("Electrons a photon: %1").arg(rangeOf(clickinfo::KEY_QUANTUM_EFFICIENCY)));
    addNumber(camera, "transmission", tr("&Transmission"), QString(), QStringLiteral("1"), &S::transmission,
              tr("Of lens and filter: %1").arg(rangeOf(clickinfo::KEY_TRANSMISSION)));
    addNumber(camera, "excitationIrradiance", tr("E&xcitation"), tr("\xc2\xb5W/cm\xc2\xb2"),
              QStringLiteral("0"), &S::excitationIrradiance,
              tr("Irradiance of the excitation light; 0 when it is not known or there is none"));
    recall();
    // A text with an underlined letter is drawn a little wider than it is measured.
    for (QLabel *label : findChildren<QLabel *>())
        label->setMinimumWidth(label->sizeHint().width() + 4);
}

void ImportForm::addNumber(QFormLayout *form, const char *name, const QString &label, const QString &unit,
                           const QString &start, double ImportSettings::*number, const QString &toolTip)
{
    auto *edit = new QLineEdit(start);
    edit->setObjectName(QLatin1String(name));
    edit->setToolTip(toolTip);
    const QString shown = unit.isEmpty() ? label : QStringLiteral("%1 [%2]").arg(label, unit);
    form->addRow(shown, edit);
    m_fields.append({name, QString(label).remove(QLatin1Char('&')), edit, number});
}

QLineEdit *ImportForm::addText(QFormLayout *form, const char *name, const QString &label,
                               const QString &toolTip)
{
    addNumber(form, name, label, QString(), QString(), nullptr, toolTip);
    return m_fields.last().edit;
}

bool ImportForm::settings(ImportSettings *settings, QString *error)
{
    settings->kind = m_kind->currentData().toString();
    settings->imagingAngle = m_angle->text().trimmed();
    for (const Field &field : qAsConst(m_fields)) {
        if (!field.number)
            continue;
        const QString text = field.edit->text().trimmed();
        bool isNumber = false;
        settings->*field.number = text.toDouble(&isNumber); // of the C locale
        if (isNumber)
            continue;
        *error = field.label + QStringLiteral(": ") +
                 (text.isEmpty() ? tr("a number is needed")
                                 : tr("\"%1\" is no number; write it like 12.5").arg(text));
        field.edit->setFocus();
        field.edit->selectAll();
        return false;
    }
    return true;
}

QString ImportForm::initials() const
{
    return m_initials->text().trimmed();
}

void ImportForm::recall()
{
    const auto stored = CVXPreference::settings();
    for (const Field &field : qAsConst(m_fields)) {
        const QVariant text = stored->value(keyOf(field.name));
        if (text.isValid())
            field.edit->setText(text.toString());
    }
    const int kind = m_kind->findData(stored->value(keyOf("kind")).toString());
    m_kind->setCurrentIndex(kind < 0 ? 0 : kind);
}

void ImportForm::remember() const
{
    const auto stored = CVXPreference::settings();
    for (const Field &field : m_fields)
        stored->setValue(keyOf(field.name), field.edit->text());
    stored->setValue(keyOf("kind"), m_kind->currentData());
}
