// SPDX-License-Identifier: MIT
#include "app/import/ImportForm.h"

#include "app/import/DecimalPoint.h"
#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/clickinfo/ConstantRanges.h"
#include "host/vxutils/CVXPreference.h"

#include <cmath>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSettings>

namespace {

// Not the group of version 1.0, which kept numbers that the form had brought along and nobody had entered.
constexpr char GROUP[] = "ImportForm";

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
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    addAllImages(newGroup(row, tr("All images")));
    addCamera(newGroup(row, tr("Camera, for radiance and radiant efficiency only")));
    recall();
    // A text with an underlined letter is drawn a little wider than it is measured.
    for (QLabel *label : findChildren<QLabel *>())
        label->setMinimumWidth(label->sizeHint().width() + 4);
    const auto explainEmpty = [](const Field &field) {
        return field.isNeeded ? tr("needed") : field.number ? tr("not known") : tr("none");
    };
    for (const Field &field : qAsConst(m_fields))
        field.edit->setPlaceholderText(explainEmpty(field));
    for (const Field &field : qAsConst(m_fields))
        connect(field.edit, &QLineEdit::textChanged, this, &ImportForm::changed);
    connect(m_kind, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &ImportForm::changed);
}

void ImportForm::addAllImages(QFormLayout *form)
{
    using S = ImportSettings;
    m_initials = addText(form, "initials", tr("&User initials"),
                         tr("Letters that the names of the datasets begin with, such as ZB"));
    m_fields.last().isNeeded = true;
    m_kind = new QComboBox;
    m_kind->setObjectName(QStringLiteral("kind"));
    m_kind->addItem(tr("Luminescence"), clickinfo::KIND_LUMINESCENT);
    m_kind->addItem(tr("Fluorescence"), clickinfo::KIND_FLUORESCENT);
    m_kind->addItem(tr("Transfluorescence"), clickinfo::KIND_TRANSFLUORESCENT);
    m_kind->addItem(tr("Transillumination"), clickinfo::KIND_TRANSILLUMINATION);
    form->addRow(tr("&Kind"), m_kind);
    addNumber(form, "fieldOfView", tr("Field of &view"), tr("cm"), &S::fieldOfView,
              tr("Width of what the whole image shows"))
        .isNeeded = true;
    addNumber(form, "binning", tr("&Binning"), QString(), &S::binning,
              tr("Sensor pixels a pixel, along one side; 1 without binning"))
        .isNeeded = true;
    addNumber(form, "offset", tr("&Offset"), tr("counts"), &S::offset,
              tr("What the camera counts without light, in every image that has neither a dark image nor an "
                 "offset of its own; it is subtracted"));
    addNumber(form, "exposure", tr("&Exposure time"), tr("s"), &S::exposure,
              tr("Of every image that has no exposure of its own in the table"));
    m_angle = addText(form, "imagingAngle", tr("Imaging ang&le"),
                      tr("In degrees, or a name such as Left; may stay empty"));
}

void ImportForm::addCamera(QFormLayout *form)
{
    using S = ImportSettings;
    addNumber(form, "fNumber", tr("f-nu&mber"), QString(), &S::fNumber, tr("Focal length over aperture"));
    addNumber(form, "pixelPitch", tr("&Pixel pitch"), tr("\xc2\xb5m"), &S::pixelPitch,
              tr("Of the sensor, before binning"));
    addNumber(form, "electronsPerCount", tr("Electrons per &count"), QString(), &S::electronsPerCount,
              tr("The camera's gain"));
    addNumber(form, "quantumEfficiency", tr("&Quantum efficiency"), QString(), &S::quantumEfficiency,
              tr("Electrons a photon: %1").arg(rangeOf(clickinfo::KEY_QUANTUM_EFFICIENCY)));
    addNumber(form, "transmission", tr("&Transmission"), QString(), &S::transmission,
              tr("Of lens and filter: %1").arg(rangeOf(clickinfo::KEY_TRANSMISSION)));
    addNumber(form, "excitationIrradiance", tr("E&xcitation"), tr("\xc2\xb5W/cm\xc2\xb2"),
              &S::excitationIrradiance,
              tr("Irradiance of the excitation light; may stay empty when there is none"));
}

ImportForm::Field &ImportForm::addNumber(QFormLayout *form, const char *name, const QString &label,
                                         const QString &unit, double ImportSettings::*number,
                                         const QString &toolTip)
{
    auto *edit = new QLineEdit;
    edit->setObjectName(QLatin1String(name));
    edit->setToolTip(toolTip);
    if (number)
        takeCommaForPoint(edit);
    const QString shown = unit.isEmpty() ? label : QStringLiteral("%1 [%2]").arg(label, unit);
    form->addRow(shown, edit);
    m_fields.append({name, QString(label).remove(QLatin1Char('&')), edit, number, false});
    return m_fields.last();
}

QLineEdit *ImportForm::addText(QFormLayout *form, const char *name, const QString &label,
                               const QString &toolTip)
{
    return addNumber(form, name, label, QString(), nullptr, toolTip).edit;
}

bool ImportForm::settings(ImportSettings *settings, QString *error)
{
    settings->kind = m_kind->currentData().toString();
    settings->imagingAngle = m_angle->text().trimmed();
    for (const Field &field : qAsConst(m_fields)) {
        if (!field.number)
            continue;
        const QString text = field.edit->text().trimmed();
        settings->*field.number = NOT_KNOWN;
        if (text.isEmpty() && !field.isNeeded)
            continue;
        bool isNumber = false;
        settings->*field.number = text.toDouble(&isNumber); // of the C locale
        if (isNumber && !std::isnan(settings->*field.number))
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

bool ImportForm::isFluorescence() const
{
    return m_kind->currentData().toString() != clickinfo::KIND_LUMINESCENT;
}

bool ImportForm::isEmpty(double ImportSettings::*number) const
{
    return !emptyAmong({number}).isEmpty();
}

QStringList ImportForm::emptyAmong(const QVector<double ImportSettings::*> &numbers) const
{
    QStringList labels;
    for (const Field &field : m_fields) {
        if (field.number && numbers.contains(field.number) && field.edit->text().trimmed().isEmpty())
            labels += field.label;
    }
    return labels;
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
