// SPDX-License-Identifier: MIT
#include "host/vxapi/view/windows/ColorLimitsPanel.h"

#include <cmath>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace {

QString number(double value)
{
    return QString::number(value, 'g', 6);
}

} // namespace

ColorLimitsPanel::ColorLimitsPanel(QWidget *parent) : QWidget(parent)
{
    m_mode = new QComboBox(this);
    m_mode->setObjectName(QStringLiteral("LimitsMode"));
    m_mode->addItem(tr("Auto"), ELIMITS_AUTO);
    m_mode->addItem(tr("Full"), ELIMITS_FULL);
    m_mode->addItem(tr("Manual"), ELIMITS_MANUAL);
    m_mode->setToolTip(tr("Limits of the colours: automatic, smallest to largest pixel, or as typed"));
    m_high = makeField("LimitsMax", tr("Pixels at or above this have the last colour"));
    m_low = makeField("LimitsMin", tr("Pixels at or below this have the first colour"));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 0, 0, 0);
    layout->addWidget(new QLabel(tr("Max"), this));
    layout->addWidget(m_high);
    layout->addStretch(1);
    layout->addWidget(new QLabel(tr("Color limits"), this));
    layout->addWidget(m_mode);
    layout->addSpacing(12);
    layout->addLayout(m_middle = new QVBoxLayout);
    layout->addStretch(1);
    layout->addWidget(new QLabel(tr("Min"), this));
    layout->addWidget(m_low);
    connect(m_mode, QOverload<int>::of(&QComboBox::activated), this, [this] { chooseMode(); });
}

QLineEdit *ColorLimitsPanel::makeField(const char *name, const QString &tip)
{
    auto *field = new QLineEdit(this);
    field->setObjectName(QLatin1String(name));
    field->setToolTip(tip);
    field->setFixedWidth(field->fontMetrics().boundingRect(QStringLiteral("-0.00000e+00")).width() + 16);
    connect(field, &QLineEdit::editingFinished, this, [this] { readNumbers(); });
    return field;
}

void ColorLimitsPanel::addToMiddle(QWidget *widget)
{
    m_middle->addWidget(widget);
}

void ColorLimitsPanel::setLimits(const ColorLimits &limits)
{
    m_limits = limits;
    m_mode->setCurrentIndex(m_mode->findData(limits.mode));
    if (!m_high->isModified() || !m_high->hasFocus())
        m_high->setText(number(limits.high));
    if (!m_low->isModified() || !m_low->hasFocus())
        m_low->setText(number(limits.low));
}

void ColorLimitsPanel::chooseMode()
{
    m_limits.mode = ELIMITMODE(m_mode->currentData().toInt());
    Q_EMIT limitsChosen(m_limits);
}

void ColorLimitsPanel::readNumbers()
{
    if (!m_high->isModified() && !m_low->isModified())
        return;
    ColorLimits typed = m_limits;
    typed.mode = ELIMITS_MANUAL;
    const bool isHighTyped = m_high->isModified();
    bool isHighRead = true;
    bool isLowRead = true;
    // A field that nobody touched keeps all its digits, not the six that it shows.
    if (isHighTyped)
        typed.high = m_high->text().trimmed().toDouble(&isHighRead);
    if (m_low->isModified())
        typed.low = m_low->text().trimmed().toDouble(&isLowRead);
    const QString text = (isHighTyped ? m_high : m_low)->text().trimmed();
    m_high->setModified(false);
    m_low->setModified(false);
    QString reason;
    if (!isHighRead || !isLowRead || !std::isfinite(typed.high) || !std::isfinite(typed.low))
        reason = tr("\"%1\" is not taken as a color limit: it is no number (the decimal sign is a point).")
                     .arg(text);
    else if (typed.low > typed.high && isHighTyped)
        reason =
            tr("Max stays %1: %2 is below Min, %3.").arg(number(m_limits.high), text, number(m_limits.low));
    else if (typed.low > typed.high)
        reason =
            tr("Min stays %1: %2 is above Max, %3.").arg(number(m_limits.low), text, number(m_limits.high));
    if (!reason.isEmpty()) {
        // Back to what is shown: neither limit changes because of the other.
        setLimits(m_limits);
        Q_EMIT refused(reason);
        return;
    }
    setLimits(typed);
    Q_EMIT limitsChosen(typed);
}
