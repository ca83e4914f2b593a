// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <QDialog>

class CVXSSequenceDataset;
class ImportForm;
class ImportTable;
class QPushButton;

/// Makes a sequence of TIFF files that come without an instrument's record: which files, and what has to be
/// known about them. It stays open, with a message, until everything could be imported or the user cancels.
class ImportDialog : public QDialog
{
    Q_OBJECT

public:
    explicit ImportDialog(QWidget *parent = nullptr);
    ~ImportDialog() override;

    /// The new sequence, in memory, after the dialog was accepted; once.
    std::unique_ptr<CVXSSequenceDataset> takeSequence();

    void accept() override;

private:
    void chooseImages();
    void choosePhotograph();
    void showState();
    QString lastFolder() const;
    void rememberFolder(const QString &file) const;

    ImportTable *m_table;
    ImportForm *m_form;
    QPushButton *m_choosePhotograph;
    QPushButton *m_clearPhotograph;
    QPushButton *m_remove;
    std::unique_ptr<CVXSSequenceDataset> m_sequence;
};
