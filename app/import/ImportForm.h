// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/import/ImageImport.h"

#include <QVector>
#include <QWidget>

class QComboBox;
class QFormLayout;
class QLineEdit;

/// What has to be known about imported images, the same for all of them. The texts are remembered for the
/// next time with remember().
class ImportForm : public QWidget
{
    Q_OBJECT

public:
    explicit ImportForm(QWidget *parent = nullptr);

    /// False when a field holds no number; `error` receives "field: reason", and the field the focus.
    bool settings(ImportSettings *settings, QString *error);
    QString initials() const;
    void remember() const;

private:
    struct Field
    {
        const char *name; ///< in the settings and as object name
        QString label;
        QLineEdit *edit;
        double ImportSettings::*number; ///< null: a text
    };
    void addNumber(QFormLayout *form, const char *name, const QString &label, const QString &unit,
                   const QString &start, double ImportSettings::*number, const QString &toolTip);
    QLineEdit *addText(QFormLayout *form, const char *name, const QString &label, const QString &toolTip);
    void recall();

    QVector<Field> m_fields;
    QComboBox *m_kind = nullptr;
    QLineEdit *m_initials = nullptr;
    QLineEdit *m_angle = nullptr;
};
