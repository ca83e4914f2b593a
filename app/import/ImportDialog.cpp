// SPDX-License-Identifier: MIT
#include "app/import/ImportDialog.h"

#include "app/import/ImageImporter.h"
#include "app/import/ImportForm.h"
#include "app/import/ImportTable.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxutils/CVXPreference.h"
#include "host/vxutils/CVXSMessageBox.h"
#include "host/vxutils/CVXUtilityFns.h"

#include <QApplication>
#include <QDialogButtonBox>
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
      m_form(new ImportForm)
{
    setObjectName(QStringLiteral("ImportDialog"));
    setWindowTitle(tr("Import Images"));
    m_table->setObjectName(QStringLiteral("importTable"));

    auto *buttons = new QVBoxLayout;
    QPushButton *add = newButton(buttons, tr("&Add Images..."), "addImages");
    m_choosePhotograph = newButton(buttons, tr("Choose P&hotograph..."), "choosePhotograph");
    m_clearPhotograph = newButton(buttons, tr("&No Photograph"), "clearPhotograph");
    m_remove = newButton(buttons, tr("&Remove"), "removeImages");
    buttons->addStretch(1);
    auto *files = new QHBoxLayout;
    files->addWidget(m_table, 1);
    files->addLayout(buttons);

    auto *box = new QDialogButtonBox(QDialogButtonBox::Cancel);
    QPushButton *import = box->addButton(tr("&Import"), QDialogButtonBox::AcceptRole);
    import->setObjectName(QStringLiteral("import"));
    auto *intro =
        new QLabel(tr("Each luminescent image becomes a dataset of a new sequence, which is in memory "
                      "until you save it. The images have to be grey."));
    intro->setWordWrap(true);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(intro);
    layout->addLayout(files, 1);
    layout->addWidget(m_form);
    layout->addWidget(box);
    // Once it is in the dialog, which else makes the first button the default one.
    box->button(QDialogButtonBox::Cancel)->setAutoDefault(false);
    import->setDefault(true);

    connect(add, &QPushButton::clicked, this, &ImportDialog::chooseImages);
    connect(m_choosePhotograph, &QPushButton::clicked, this, &ImportDialog::choosePhotograph);
    connect(m_clearPhotograph, &QPushButton::clicked, this, [this] {
        const QList<int> rows = m_table->selectedRows();
        for (int row : rows)
            m_table->setPhotograph(row, QString());
    });
    connect(m_remove, &QPushButton::clicked, m_table, &ImportTable::removeSelected);
    connect(m_table, &QTableWidget::itemSelectionChanged, this, &ImportDialog::showState);
    connect(box, &QDialogButtonBox::accepted, this, &ImportDialog::accept);
    connect(box, &QDialogButtonBox::rejected, this, &ImportDialog::reject);
    showState();
    resize(sizeHint().expandedTo(QSize(780, 560)));
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

void ImportDialog::chooseImages()
{
    const QStringList files =
        QFileDialog::getOpenFileNames(this, tr("Luminescent Images"), lastFolder(), tiffFilter());
    if (files.isEmpty())
        return;
    rememberFolder(files.first());
    m_table->addImages(files);
    showState();
}

void ImportDialog::choosePhotograph()
{
    const QString file = QFileDialog::getOpenFileName(this, tr("Photograph"), lastFolder(), tiffFilter());
    if (file.isEmpty())
        return;
    rememberFolder(file);
    const QList<int> rows = m_table->selectedRows();
    for (int row : rows)
        m_table->setPhotograph(row, file);
}

void ImportDialog::showState()
{
    const bool anySelected = !m_table->selectedRows().isEmpty();
    m_choosePhotograph->setEnabled(anySelected);
    m_clearPhotograph->setEnabled(anySelected);
    m_remove->setEnabled(anySelected);
}

QString ImportDialog::lastFolder() const
{
    return CVXPreference::settings()->value(KEY_FOLDER).toString();
}

void ImportDialog::rememberFolder(const QString &file) const
{
    CVXPreference::settings()->setValue(KEY_FOLDER, QFileInfo(file).absolutePath());
}
