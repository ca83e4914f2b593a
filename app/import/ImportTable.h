// SPDX-License-Identifier: MIT
#pragma once

#include "app/import/ImageImporter.h"

#include <QTableWidget>

/// The image files to import, a row each: luminescent image, what belongs to it, and an exposure time and an
/// offset of its own. A comma in a number becomes a point.
class ImportTable : public QTableWidget
{
    Q_OBJECT

public:
    enum EColumn { LUMINESCENT, PHOTOGRAPH, DARK, FLATFIELD, EXCITATION, EXPOSURE, OFFSET, COLUMN_COUNT };

    explicit ImportTable(QWidget *parent = nullptr);

    /// A file that may be chosen for a row: photograph, dark image, flat field, excitation reference.
    static bool isFileChoice(int column) { return column > LUMINESCENT && column < EXPOSURE; }

    /// Appends files that are not in the table yet, and selects them.
    void addImages(const QStringList &paths);
    /// The file of a column that holds files; an empty path takes it away.
    void setFile(int row, EColumn column, const QString &path);
    void removeSelected();
    /// The rows that are selected, from top to bottom.
    QList<int> selectedRows() const;

    /// False when a number is none; `error` receives "file: reason".
    bool images(QVector<ImportImage> *images, QString *error) const;
    /// Whether every row, of which there is one at least, has an exposure time of its own.
    bool hasOwnExposures() const;
    /// Whether every row, of which there is one at least, has a dark image or an offset of its own.
    bool hasOwnOffsets() const;

private:
    QString pathAt(int row, int column) const;
    QString textAt(int row, int column) const;
    bool number(int row, EColumn column, QLatin1String key, const QString &name, double *value,
                QString *error) const;
    void addNumberCell(int row, EColumn column, const QString &toolTip);
};
