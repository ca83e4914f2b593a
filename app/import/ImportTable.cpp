// SPDX-License-Identifier: MIT
#include "app/import/ImportTable.h"

#include "app/import/DecimalPoint.h"
#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/clickinfo/ConstantRanges.h"

#include <QDir>
#include <QFileInfo>
#include <QHeaderView>

#include <algorithm>

namespace {

constexpr int FILE_WIDTH = 15; // letters; a column can be made wider

} // namespace

ImportTable::ImportTable(QWidget *parent) : QTableWidget(0, COLUMN_COUNT, parent)
{
    setHorizontalHeaderLabels({tr("Luminescent image"), tr("Photograph"), tr("Dark image"), tr("Flat field"),
                               tr("Excitation"), tr("Own exposure\n[s]"), tr("Own offset\n[counts]")});
    // By their names the luminescent images are told apart.
    horizontalHeader()->setSectionResizeMode(LUMINESCENT, QHeaderView::Stretch);
    for (int column = PHOTOGRAPH; column < EXPOSURE; ++column)
        setColumnWidth(column, fontMetrics().averageCharWidth() * FILE_WIDTH);
    horizontalHeader()->setSectionResizeMode(EXPOSURE, QHeaderView::ResizeToContents);
    horizontalHeader()->setSectionResizeMode(OFFSET, QHeaderView::ResizeToContents);
    horizontalHeader()->setHighlightSections(false);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents); // a remark below the name is seen
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setTextElideMode(Qt::ElideMiddle);
    setTabKeyNavigation(false); // Tab leaves the table for the fields below
    connect(this, &QTableWidget::itemChanged, this, [](QTableWidgetItem *cell) {
        if (cell->column() >= EXPOSURE && cell->text().contains(QLatin1Char(',')))
            cell->setText(withDecimalPoint(cell->text()));
    });
}

void ImportTable::addImages(const QStringList &paths)
{
    const int before = rowCount();
    for (const QString &path : paths) {
        const QString absolute = QFileInfo(path).absoluteFilePath();
        bool isListed = false;
        for (int row = 0; row < rowCount(); ++row)
            isListed = isListed || pathAt(row, LUMINESCENT) == absolute;
        if (isListed)
            continue;
        const int row = rowCount();
        insertRow(row);
        setFile(row, LUMINESCENT, absolute);
        for (const EColumn column : {PHOTOGRAPH, DARK, FLATFIELD, EXCITATION})
            setFile(row, column, QString());
        addNumberCell(row, EXPOSURE, tr("Where this image was exposed for another time than the one below"));
        addNumberCell(row, OFFSET,
                      tr("Where the camera's offset in this image is another than the one below"));
    }
    if (rowCount() == before)
        return;
    selectionModel()->setCurrentIndex(model()->index(before, LUMINESCENT), QItemSelectionModel::NoUpdate);
    selectionModel()->select(
        QItemSelection(model()->index(before, 0), model()->index(rowCount() - 1, COLUMN_COUNT - 1)),
        QItemSelectionModel::ClearAndSelect);
}

void ImportTable::addNumberCell(int row, EColumn column, const QString &toolTip)
{
    auto *cell = new QTableWidgetItem;
    cell->setToolTip(toolTip);
    setItem(row, column, cell);
}

// The name is what tells the files apart; the folder is in the tool tip.
void ImportTable::setFile(int row, EColumn column, const QString &path)
{
    const QString absolute = path.isEmpty() ? QString() : QFileInfo(path).absoluteFilePath();
    QString text = QFileInfo(absolute).fileName();
    const QString left = path.isEmpty() ? QString() : notImported(absolute);
    if (!left.isEmpty())
        text += QLatin1Char('\n') + left;
    auto *cell = new QTableWidgetItem(text);
    cell->setData(Qt::UserRole, absolute);
    cell->setToolTip(QDir::toNativeSeparators(absolute));
    cell->setFlags(cell->flags() & ~Qt::ItemIsEditable);
    setItem(row, column, cell);
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

bool ImportTable::number(int row, EColumn column, QLatin1String key, const QString &name, double *value,
                         QString *error) const
{
    const QString text = textAt(row, column);
    if (text.isEmpty())
        return true;
    const clickinfo::ConstantRange range = clickinfo::constantRange(key);
    bool isNumber = false;
    *value = text.toDouble(&isNumber); // of the C locale
    if (isNumber && range.holds(*value))
        return true;
    *error = tr("%1: the %2 \"%3\" is no number %4; write it like 0.5")
                 .arg(QDir::toNativeSeparators(pathAt(row, LUMINESCENT)), name, text, range.text());
    return false;
}

bool ImportTable::images(QVector<ImportImage> *images, QString *error) const
{
    for (int row = 0; row < rowCount(); ++row) {
        ImportImage image;
        image.files = {pathAt(row, LUMINESCENT), pathAt(row, PHOTOGRAPH), pathAt(row, DARK),
                       pathAt(row, FLATFIELD), pathAt(row, EXCITATION)};
        if (!number(row, EXPOSURE, clickinfo::KEY_EXPOSURE, tr("exposure time"), &image.exposure, error) ||
            !number(row, OFFSET, clickinfo::KEY_OFFSET, tr("offset"), &image.offset, error))
            return false;
        images->append(image);
    }
    return true;
}

bool ImportTable::hasOwnExposures() const
{
    for (int row = 0; row < rowCount(); ++row) {
        if (textAt(row, EXPOSURE).isEmpty())
            return false;
    }
    return rowCount() > 0;
}

bool ImportTable::hasOwnOffsets() const
{
    for (int row = 0; row < rowCount(); ++row) {
        if (textAt(row, OFFSET).isEmpty() && pathAt(row, DARK).isEmpty())
            return false;
    }
    return rowCount() > 0;
}

QString ImportTable::pathAt(int row, int column) const
{
    const QTableWidgetItem *cell = item(row, column);
    return cell ? cell->data(Qt::UserRole).toString() : QString();
}

QString ImportTable::textAt(int row, int column) const
{
    const QTableWidgetItem *cell = item(row, column);
    return cell ? cell->text().trimmed() : QString();
}
