// SPDX-License-Identifier: MIT
#include "app/import/ImportTable.h"

#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/clickinfo/ConstantRanges.h"

#include <QDir>
#include <QFileInfo>
#include <QHeaderView>

#include <algorithm>

ImportTable::ImportTable(QWidget *parent) : QTableWidget(0, COLUMN_COUNT, parent)
{
    setHorizontalHeaderLabels(
        {tr("Luminescent image"), tr("Photograph (optional)"), tr("Own exposure [s] (optional)")});
    horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    horizontalHeader()->setSectionResizeMode(EXPOSURE, QHeaderView::ResizeToContents);
    horizontalHeader()->setHighlightSections(false);
    verticalHeader()->hide();
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setTextElideMode(Qt::ElideMiddle);
    setTabKeyNavigation(false); // Tab leaves the table for the fields below
}

void ImportTable::addImages(const QStringList &paths)
{
    for (const QString &path : paths) {
        const QString absolute = QFileInfo(path).absoluteFilePath();
        bool isListed = false;
        for (int row = 0; row < rowCount(); ++row)
            isListed = isListed || pathAt(row, LUMINESCENT) == absolute;
        if (isListed)
            continue;
        const int row = rowCount();
        insertRow(row);
        setPath(row, LUMINESCENT, absolute);
        setPath(row, PHOTOGRAPH, QString());
        auto *exposure = new QTableWidgetItem;
        exposure->setToolTip(tr("Where this image was exposed for another time than the one below"));
        setItem(row, EXPOSURE, exposure);
    }
    if (currentRow() < 0 && rowCount() > 0)
        setCurrentCell(0, LUMINESCENT);
}

void ImportTable::setPhotograph(int row, const QString &path)
{
    setPath(row, PHOTOGRAPH, path.isEmpty() ? QString() : QFileInfo(path).absoluteFilePath());
}

void ImportTable::removeSelected()
{
    QList<int> rows = selectedRows();
    while (!rows.isEmpty())
        removeRow(rows.takeLast());
}

QList<int> ImportTable::selectedRows() const
{
    QList<int> rows;
    const QModelIndexList selected = selectionModel()->selectedRows();
    for (const QModelIndex &index : selected)
        rows += index.row();
    std::sort(rows.begin(), rows.end());
    return rows;
}

bool ImportTable::images(QVector<ImportImage> *images, QString *error) const
{
    const clickinfo::ConstantRange range = clickinfo::constantRange(clickinfo::KEY_EXPOSURE);
    for (int row = 0; row < rowCount(); ++row) {
        ImportImage image;
        image.luminescent = pathAt(row, LUMINESCENT);
        image.photograph = pathAt(row, PHOTOGRAPH);
        const QString exposure = item(row, EXPOSURE)->text().trimmed();
        bool isNumber = true;
        if (!exposure.isEmpty())
            image.exposure = exposure.toDouble(&isNumber);
        if (!isNumber || (!exposure.isEmpty() && !range.holds(image.exposure))) {
            *error = tr("%1: the exposure time \"%2\" is no number %3; write it like 0.5")
                         .arg(QDir::toNativeSeparators(image.luminescent), exposure, range.text());
            return false;
        }
        images->append(image);
    }
    return true;
}

QString ImportTable::pathAt(int row, EColumn column) const
{
    return item(row, column)->data(Qt::UserRole).toString();
}

// The name is what tells the files apart; the folder is in the tool tip.
void ImportTable::setPath(int row, EColumn column, const QString &path)
{
    auto *cell = new QTableWidgetItem(QFileInfo(path).fileName());
    cell->setData(Qt::UserRole, path);
    cell->setToolTip(QDir::toNativeSeparators(path));
    cell->setFlags(cell->flags() & ~Qt::ItemIsEditable);
    setItem(row, column, cell);
}
