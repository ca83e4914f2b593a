// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/import/ImageImport.h"

#include <QVector>
#include <QWidget>

class QComboBox;
class QFormLayout;
class QLineEdit;

/// What has to be known about imported images, the same for all of them. Every field starts empty, and what
/// is not entered is not known. The texts are remembered for the next time with remember().
class ImportForm : public QWidget
{
    Q_OBJECT

public:
    explicit ImportForm(QWidget *parent = nullptr);

    /// False when a field holds no number, or nothing where a number is needed; `error` receives "field:
    /// reason", and the field the focus.
    bool settings(ImportSettings *settings, QString *error);
    QString initials() const;
    void remember() const;

    bool isFluorescence() const;
    /// Whether nothing is entered for that number.
    bool isEmpty(double ImportSettings::*number) const;
    /// The labels of those of these numbers for which nothing is entered.
    QStringList emptyAmong(const QVector<double ImportSettings::*> &numbers) const;

Q_SIGNALS:
    void changed();

private:
    struct Field
    {
        const char *name; ///< in the settings and as object name
        QString label;
        QLineEdit *edit;
        double ImportSettings::*number; ///< null: a text
        bool isNeeded;
    };
    void addAllImages(QFormLayout *form);
    void addCamera(QFormLayout *form);
    Field &addNumber(QFormLayout *form, const char *name, const QString &label, const QString &unit,
                     double ImportSettings::*number, const QString &toolTip);
    QLineEdit *addText(QFormLayout *form, const char *name, const QString &label, const QString &toolTip);
    void recall();

    QVector<Field> m_fields;
    QComboBox *m_kind = nullptr;
    QLineEdit *m_initials = nullptr;
    QLineEdit *m_angle = nullptr;
};
