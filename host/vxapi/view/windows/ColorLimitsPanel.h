// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/view/windows/DatasetPicture.h"

#include <QWidget>

class QComboBox;
class QLineEdit;
class QVBoxLayout;

/// The limits of a colour bar, to stand beside it: automatic, full or by hand, and both as numbers. Who edits
/// a number means limits by hand.
class VXAPI_EXPORT ColorLimitsPanel : public QWidget
{
    Q_OBJECT

public:
    explicit ColorLimitsPanel(QWidget *parent = nullptr);
    /// Shows these; sends no signal. A number that is being typed is left alone.
    void setLimits(const ColorLimits &limits);
    /// A further widget of the colours, below the mode.
    void addToMiddle(QWidget *widget);

Q_SIGNALS:
    /// The user chose; low and high count only for ELIMITS_MANUAL.
    void limitsChosen(const ColorLimits &limits);
    /// What was typed is not taken and the limits stay; why, for the user.
    void refused(const QString &reason);

private:
    void chooseMode();
    void readNumbers();
    QLineEdit *makeField(const char *name, const QString &tip);

    QVBoxLayout *m_middle = nullptr;
    QComboBox *m_mode;
    QLineEdit *m_high;
    QLineEdit *m_low;
    ColorLimits m_limits;
};
