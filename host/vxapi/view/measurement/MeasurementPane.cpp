// SPDX-License-Identifier: MIT
#include "host/vxapi/view/measurement/MeasurementPane.h"

#include "host/vxapi/model/CROIManager.h"
#include "host/vxapi/model/CRoiMeasurementManager.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/roi/RoiMimeData.h"
#include "host/vxapi/view/measurement/MeasurementTableModel.h"
#include "host/vxapi/view/measurement/MeasurementText.h"
#include "host/vxapi/view/measurement/RoiMeasurer.h"
#include "host/vxutils/CVXSErrorHandler.h"
#include "host/vxutils/writeWhole.h"

#include <algorithm>
#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMimeData>
#include <QPushButton>
#include <QSaveFile>
#include <QScopedValueRollback>
#include <QTableView>

MeasurementPane::MeasurementPane(CVXSDataset *dataset, RoiMeasurer *measurer, QWidget *parent)
    : QWidget(parent), m_dataset(dataset), m_measurer(measurer), m_model(new MeasurementTableModel(this))
{
    setObjectName(QStringLiteral("MeasurementPane"));
    build();
    m_readTimer.setSingleShot(true);
    m_readTimer.setInterval(0);
    connect(&m_readTimer, &QTimer::timeout, this, [this] { readRecords(); });
    if (!dataset)
        return;
    auto *records = CRoiMeasurementManager::getRoiMeasurementManager();
    connect(records, &CRoiMeasurementManager::recordsChanged, this, [this](const QString &clickNumber) {
        if (m_dataset && m_dataset->getClickNumber() == clickNumber)
            m_readTimer.start();
    });
    connect(dataset->roiManager(), &CROIManager::roisChanged, this, [this] { m_readTimer.start(); });
    connect(dataset->roiManager(), &CROIManager::selectionChanged, this, [this] { showSelection(); });
    connect(m_table->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this] { takeSelection(); });
    readRecords();
}

void MeasurementPane::build()
{
    m_table = new QTableView(this);
    m_table->setObjectName(QStringLiteral("MeasurementTable"));
    m_table->setModel(m_model);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setAlternatingRowColors(true);
    m_table->setWordWrap(false);
    m_table->verticalHeader()->hide();
    m_table->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    m_table->horizontalHeader()->setHighlightSections(false);
    // A header of two lines, three rows and a scroll bar at least.
    m_table->setMinimumHeight(6 * (fontMetrics().height() + 8));
    m_table->installEventFilter(this);
    auto *copyButton = new QPushButton(tr("Copy table"), this);
    copyButton->setObjectName(QStringLiteral("CopyTableButton"));
    copyButton->setToolTip(tr("Copies the whole table with all digits, to be pasted into a spreadsheet"));
    auto *saveButton = new QPushButton(tr("Save table..."), this);
    saveButton->setObjectName(QStringLiteral("SaveTableButton"));
    saveButton->setToolTip(tr("Saves the whole table with all digits as comma-separated values"));
    connect(copyButton, &QPushButton::clicked, this, [this] { copy(false); });
    connect(saveButton, &QPushButton::clicked, this, [this] { askAndSave(); });
    auto *buttons = new QVBoxLayout;
    buttons->addWidget(copyButton);
    buttons->addWidget(saveButton);
    buttons->addStretch(1);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_table, 1);
    layout->addLayout(buttons);
}

void MeasurementPane::readRecords()
{
    m_readTimer.stop();
    if (!m_dataset)
        return;
    tag_edisplayunit unit = EUNIT_COUNTS;
    const QVector<CRoiMeasInfo> records = measurementtext::recordsOf(*m_dataset, &unit);
    {
        // Rows that go take their selection along; what the picture has selected stays.
        const QScopedValueRollback<bool> guard(m_isSelecting, true);
        m_model->setRecords(records, unit);
    }
    m_table->resizeColumnsToContents();
    showSelection();
}

QVector<CRoiMeasInfo> MeasurementPane::selectedRecords() const
{
    QVector<CRoiMeasInfo> records;
    for (int row = 0; row < m_model->rowCount(); ++row) {
        if (m_table->selectionModel()->isRowSelected(row, QModelIndex()))
            records.append(m_model->records()[row]);
    }
    return records;
}

QList<CROIBase *> MeasurementPane::roisOf(const QVector<CRoiMeasInfo> &records) const
{
    QSet<QString> names;
    for (const CRoiMeasInfo &record : records)
        names.insert(record.roiName);
    QList<CROIBase *> found;
    const QList<CROIBase *> rois = m_dataset ? m_dataset->roiManager()->rois() : QList<CROIBase *>();
    for (CROIBase *roi : rois) {
        const QStringList cells = roi->cellNames();
        if (names.contains(roi->name()) || std::any_of(cells.begin(), cells.end(), [&](const QString &cell) {
                return names.contains(cell);
            }))
            found.append(roi);
    }
    return found;
}

QSet<CROIBase *> MeasurementPane::roisOfSelectedRows() const
{
    QSet<CROIBase *> found;
    for (CROIBase *roi : roisOf(selectedRecords()))
        found.insert(roi);
    return found;
}

void MeasurementPane::showSelection()
{
    if (m_isSelecting || !m_dataset)
        return;
    const QList<CROIBase *> selected = m_dataset->roiManager()->selectedROIs();
    QSet<CROIBase *> inPicture;
    for (CROIBase *roi : selected)
        inPicture.insert(roi);
    // A selected cell stays selected, and not its grid instead.
    if (inPicture == roisOfSelectedRows())
        return;
    const QScopedValueRollback<bool> guard(m_isSelecting, true);
    QItemSelection wanted;
    for (const CROIBase *roi : selected) {
        const int row = m_model->rowOf(roi->name());
        if (row >= 0)
            wanted.select(m_model->index(row, 0), m_model->index(row, m_model->columnCount() - 1));
    }
    m_table->selectionModel()->select(wanted, QItemSelectionModel::ClearAndSelect);
    if (!wanted.isEmpty())
        m_table->scrollTo(m_model->index(wanted.last().top(), 0));
}

void MeasurementPane::takeSelection()
{
    if (m_isSelecting || !m_dataset)
        return;
    const QScopedValueRollback<bool> guard(m_isSelecting, true);
    CROIManager *manager = m_dataset->roiManager();
    const QSet<CROIBase *> wanted = roisOfSelectedRows();
    const QList<CROIBase *> rois = manager->rois();
    bool isFirst = true;
    for (CROIBase *roi : rois) {
        if (!wanted.contains(roi))
            continue;
        manager->selectROI(roi, !isFirst);
        isFirst = false;
    }
    if (isFirst)
        manager->selectROI(nullptr, false);
}

bool MeasurementPane::eventFilter(QObject *watched, QEvent *event)
{
    const bool isPressed = event->type() == QEvent::KeyPress;
    if ((isPressed || event->type() == QEvent::ShortcutOverride) &&
        takeKey(*static_cast<QKeyEvent *>(event), isPressed)) {
        event->accept();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

/// Whether the key is one of the table's; does what it means once it is pressed.
bool MeasurementPane::takeKey(const QKeyEvent &event, bool isPressed)
{
    const bool isCopy = event.matches(QKeySequence::Copy);
    const bool isDelete = event.key() == Qt::Key_Delete && event.modifiers() == Qt::NoModifier;
    const bool isRename = event.key() == Qt::Key_F2 && event.modifiers() == Qt::NoModifier;
    if (isPressed && isCopy)
        copy(true);
    if (isPressed && isDelete)
        Q_EMIT deleteRequested();
    if (isPressed && isRename)
        Q_EMIT renameRequested();
    return isCopy || isDelete || isRename;
}

void MeasurementPane::copy(bool selectedOnly)
{
    m_measurer->measureIfPending();
    if (m_readTimer.isActive())
        readRecords();
    QVector<CRoiMeasInfo> records = selectedOnly ? selectedRecords() : QVector<CRoiMeasInfo>();
    // Nothing selected means everything.
    if (records.isEmpty())
        records = m_model->records();
    std::vector<CROIBase> rois;
    for (const CROIBase *roi : roisOf(records))
        rois.push_back(*roi);
    auto *data = new QMimeData;
    data->setText(measurementtext::asTabbed(records, m_model->unit()));
    if (!rois.empty())
        roimime::write(rois, data);
    QApplication::clipboard()->setMimeData(data);
}

bool MeasurementPane::saveTable(const QString &path, QString *error)
{
    m_measurer->measureIfPending();
    if (m_readTimer.isActive())
        readRecords();
    const QByteArray csv = measurementtext::asCsv(m_model->records(), m_model->unit()).toUtf8();
    QSaveFile file(path);
    const bool isSaved = file.open(QIODevice::WriteOnly) && writeWhole(file, csv) && file.commit();
    if (!isSaved)
        *error = QDir::toNativeSeparators(path) + QStringLiteral(": ") + file.errorString();
    return isSaved;
}

void MeasurementPane::askAndSave()
{
    // The dataset may be closed while the dialog is open, and this window with its dialog.
    const QPointer<QFileDialog> dialog = new QFileDialog(this, tr("Save table"));
    dialog->setObjectName(QStringLiteral("SaveTableDialog"));
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setNameFilter(tr("Comma-separated values (*.csv)"));
    dialog->setDefaultSuffix(QStringLiteral("csv"));
    if (m_dataset)
        dialog->selectFile(m_dataset->getClickNumber() + QStringLiteral("_ROIs.csv"));
    const bool isChosen = dialog->exec() == QDialog::Accepted;
    if (!dialog)
        return;
    const QString path = dialog->selectedFiles().value(0);
    delete dialog.data();
    if (!isChosen)
        return;
    QString error;
    if (!saveTable(path, &error))
        CVXSErrorHandler::errorMessage(this, ESTATUS_FILE_NOT_WRITABLE,
                                       tr("The table is not saved. %1").arg(error));
}
