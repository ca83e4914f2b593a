// SPDX-License-Identifier: MIT
#pragma once

#include "app/import/ImageImporter.h"

#include <QTableWidget>

/// The image files to import, a row each: luminescent image, photograph, and an exposure time of its own.
class ImportTable : public QTableWidget
{
    Q_OBJECT

public:
    enum EColumn { LUMINESCENT, PHOTOGRAPH, EXPOSURE, COLUMN_COUNT };

    explicit ImportTable(QWidget *parent = nullptr);

    /// Appends files that are not in the table yet.
    void addImages(const QStringList &paths);
    /// An empty path takes the photograph away.
    void setPhotograph(int row, const QString &path);
    void removeSelected();
    /// The rows that are selected, from top to bottom.
    QList<int> selectedRows() const;

    /// False when an exposure time is no number; `error` receives "file: reason".
    bool images(QVector<ImportImage> *images, QString *error) const;

private:
    QString pathAt(int row, EColumn column) const;
    void setPath(int row, EColumn column, const QString &path);
};
