// SPDX-License-Identifier: MIT
#include "app/import/ImportDialog.h"

#include "app/import/ImageDrop.h"
#include "app/import/ImageImporter.h"
#include "app/import/ImportForm.h"
#include "app/import/ImportTable.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxutils/CVXPreference.h"
#include "host/vxutils/CVXSMessageBox.h"
#include "host/vxutils/CVXUtilityFns.h"

#include <algorithm>
#include <QApplication>
#include <QCollator>
#include <QDialogButtonBox>
#include <QDropEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QPushButton>
#include <QSettings>
#include <QVBoxLayout>

namespace {

constexpr char KEY_FOLDER[] = "ImportImages/folder";

QPushButton *newButton(QVBoxLayout *layout, const QString &text, const char *objectName)
{
    auto *button = new QPushButton(text);
    button->setObjectName(QLatin1String(objectName));
    button->setAutoDefault(false); // Enter in a field imports
    layout->addWidget(button);
    return button;
}

QString tiffFilter()
{
    return ImportDialog::tr("TIFF images (*.tif *.tiff *.TIF *.TIFF);;All files (*)");
}

} // namespace

ImportDialog::ImportDialog(QWidget *parent)
    : QDialog(parent, Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint),
      m_table(new ImportTable),
      m_form(new ImportForm),
      m_cost(new QLabel)
{
    setObjectName(QStringLiteral("ImportDialog"));
    setWindowTitle(tr("Import Images"));
    m_cost->setObjectName(QStringLiteral("importCost"));
    m_cost->setTextFormat(Qt::PlainText);
    m_cost->setWordWrap(true);

    auto *box = new QDialogButtonBox(QDialogButtonBox::Cancel);
    QPushButton *import = box->addButton(tr("&Import"), QDialogButtonBox::AcceptRole);
    import->setObjectName(QStringLiteral("import"));
    auto *intro =
        new QLabel(tr("Each luminescent image becomes a dataset of a new sequence, which is in memory "
                      "until you save it. The images have to be grey TIFF files."));
    intro->setWordWrap(true);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(intro);
    layout->addLayout(newTable(), 1);
    layout->addWidget(m_form);
    layout->addWidget(m_cost);
    layout->addWidget(box);
    // Once it is in the dialog, which else makes the first button the default one.
    box->button(QDialogButtonBox::Cancel)->setAutoDefault(false);
    import->setDefault(true);

    connect(m_form, &ImportForm::changed, this, &ImportDialog::showCost);
    connect(box, &QDialogButtonBox::accepted, this, &ImportDialog::accept);
    connect(box, &QDialogButtonBox::rejected, this, &ImportDialog::reject);
    setAcceptDrops(true);
    showState();
    showCost();
    resize(sizeHint().expandedTo(QSize(1080, 660)));
}

QLayout *ImportDialog::newTable()
{
    m_table->setObjectName(QStringLiteral("importTable"));
    auto *buttons = new QVBoxLayout;
    QPushButton *add = newButton(buttons, tr("&Add Images..."), "addImages");
    m_remove = newButton(buttons, tr("&Remove"), "removeImages");
    buttons->addSpacing(12);
    buttons->addWidget(new QLabel(tr("For the selected rows:")));
    const auto addChoice = [&](const QString &text, const char *name, int column) {
        QPushButton *button = newButton(buttons, text, name);
        button->setToolTip(tr("One file for all of these rows, or as many files as rows: one each, in the "
                              "order of their names"));
        connect(button, &QPushButton::clicked, this, [this, column] { chooseFiles(column); });
        m_choose.append(button);
    };
    addChoice(tr("P&hotograph..."), "choosePhotograph", ImportTable::PHOTOGRAPH);
    addChoice(tr("&Dark Image..."), "chooseDark", ImportTable::DARK);
    addChoice(tr("&Flat Field..."), "chooseFlatField", ImportTable::FLATFIELD);
    addChoice(tr("Excitation Ima&ge..."), "chooseExcitation", ImportTable::EXCITATION);
    m_clear = newButton(buttons, tr("&No File"), "clearFile");
    m_clear->setToolTip(tr("Takes the files of the column that was clicked away again"));
    buttons->addStretch(1);
    connect(add, &QPushButton::clicked, this, &ImportDialog::chooseImages);
    connect(m_remove, &QPushButton::clicked, m_table, &ImportTable::removeSelected);
    connect(m_clear, &QPushButton::clicked, this, &ImportDialog::clearFiles);
    connect(m_table, &QTableWidget::itemSelectionChanged, this, &ImportDialog::showState);
    connect(m_table, &QTableWidget::currentCellChanged, this, &ImportDialog::showState);
    connect(m_table, &QTableWidget::itemChanged, this, &ImportDialog::showCost);
    connect(m_table->model(), &QAbstractItemModel::rowsRemoved, this, &ImportDialog::showCost);
    connect(m_table, &QTableWidget::cellDoubleClicked, this, [this](int, int column) {
        if (ImportTable::isFileChoice(column))
            chooseFiles(column);
    });
    auto *files = new QHBoxLayout;
    files->addWidget(m_table, 1);
    files->addLayout(buttons);
    return files;
}

ImportDialog::~ImportDialog() = default;

std::unique_ptr<CVXSSequenceDataset> ImportDialog::takeSequence()
{
    return std::move(m_sequence);
}

void ImportDialog::accept()
{
    ImportRequest request;
    QString error;
    ESTATUS status = ESTATUS_BAD_VALUE;
    request.initials = m_form->initials();
    if (m_table->images(&request.images, &error) && m_form->settings(&request.settings, &error)) {
        QApplication::setOverrideCursor(Qt::WaitCursor);
        m_sequence = importSequence(request, QDateTime::currentDateTime(), &status, &error);
        QApplication::restoreOverrideCursor();
    }
    if (!m_sequence) {
        CVXSMessageBox::warning(this, CVXUtilityFns::getAppName(),
                                tr("Nothing was imported.") + QStringLiteral("\n\n") + error, QString(),
                                QString(), QString(), 0, 0);
        return;
    }
    m_form->remember();
    QDialog::accept();
}

void ImportDialog::addImages(const QStringList &files)
{
    if (files.isEmpty())
        return;
    rememberFolder(files.first());
    m_table->addImages(files);
    showState();
    showCost();
}

void ImportDialog::chooseImages()
{
    addImages(QFileDialog::getOpenFileNames(this, tr("Luminescent Images"), lastFolder(), tiffFilter()));
}

void ImportDialog::dragEnterEvent(QDragEnterEvent *event)
{
    if (!droppedImages(event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void ImportDialog::dropEvent(QDropEvent *event)
{
    event->acceptProposedAction();
    addImages(droppedImages(event->mimeData()));
}

void ImportDialog::chooseFiles(int column)
{
    const QString title = m_table->horizontalHeaderItem(column)->text();
    QStringList files = QFileDialog::getOpenFileNames(this, title, lastFolder(), tiffFilter());
    if (files.isEmpty())
        return;
    rememberFolder(files.first());
    QCollator byNumber{QLocale()}; // "dark2" before "dark10"
    byNumber.setNumericMode(true);
    std::sort(files.begin(), files.end(), [&byNumber](const QString &a, const QString &b) {
        return byNumber.compare(QFileInfo(a).fileName(), QFileInfo(b).fileName()) < 0;
    });
    const QList<int> rows = m_table->selectedRows();
    if (files.size() != 1 && files.size() != rows.size()) {
        CVXSMessageBox::warning(this, CVXUtilityFns::getAppName(),
                                tr("%1 files cannot be given to %2 rows. Choose one file for all of them, or "
                                   "as many files as rows are selected.")
                                    .arg(files.size())
                                    .arg(rows.size()),
                                QString(), QString(), QString(), 0, 0);
        return;
    }
    for (int i = 0; i < rows.size(); ++i)
        m_table->setFile(rows.at(i), ImportTable::EColumn(column),
                         files.size() == 1 ? files.first() : files.at(i));
    // So that "No File" takes away what was just chosen.
    if (!rows.isEmpty())
        m_table->setCurrentCell(rows.first(), column, QItemSelectionModel::NoUpdate);
    showState();
}

void ImportDialog::clearFiles()
{
    const QList<int> rows = m_table->selectedRows();
    for (int row : rows)
        m_table->setFile(row, ImportTable::EColumn(m_table->currentColumn()), QString());
}

void ImportDialog::showState()
{
    const bool anySelected = !m_table->selectedRows().isEmpty();
    for (QPushButton *button : qAsConst(m_choose))
        button->setEnabled(anySelected);
    m_clear->setEnabled(anySelected && ImportTable::isFileChoice(m_table->currentColumn()));
    m_remove->setEnabled(anySelected);
}

// What is not known is not made up: each empty field takes something away.
void ImportDialog::showCost()
{
    using S = ImportSettings;
    QStringList lines;
    if (m_form->isEmpty(&S::offset) && !m_table->hasOwnOffsets())
        lines +=
            tr("Without offset or dark image the camera's offset stays in the counts: differences, ratios "
               "and a k from an ROI are wrong by it.");
    QVector<double S::*> constants = {&S::fNumber, &S::pixelPitch, &S::electronsPerCount,
                                      &S::quantumEfficiency, &S::transmission};
    if (!m_table->hasOwnExposures())
        constants.prepend(&S::exposure);
    const QStringList missing = m_form->emptyAmong(constants);
    if (!missing.isEmpty())
        lines += tr("Counts only, no radiance: %1 not entered.").arg(missing.join(QStringLiteral(", ")));
    else if (m_form->isFluorescence() && m_form->isEmpty(&S::excitationIrradiance))
        lines += tr("No radiant efficiency: the excitation is not entered.");
    m_cost->setText(lines.join(QLatin1Char('\n')));
}

QString ImportDialog::lastFolder() const
{
    return CVXPreference::settings()->value(KEY_FOLDER).toString();
}

void ImportDialog::rememberFolder(const QString &file) const
{
    CVXPreference::settings()->setValue(KEY_FOLDER, QFileInfo(file).absolutePath());
}
