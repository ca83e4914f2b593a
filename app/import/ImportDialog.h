// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <QDialog>
#include <QVector>

class CVXSSequenceDataset;
class ImportForm;
class ImportTable;
class QLabel;
class QPushButton;

/// Makes a sequence of TIFF files that come without an instrument's record: which files, and what has to be
/// known about them. TIFF files can be dropped on it. It stays open, with a message, until everything could be imported or the user cancels.
class ImportDialog : public QDialog
{
    Q_OBJECT

public:
    explicit ImportDialog(QWidget *parent = nullptr);
    ~ImportDialog() override;

    /// The new sequence, in memory, after the dialog was accepted; once.
    std::unique_ptr<CVXSSequenceDataset> takeSequence();

    /// Appends rows for these files, as "Add Images..." does.
    void addImages(const QStringList &files);

    void accept() override;

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    QLayout *newTable();
    void chooseImages();
    void chooseFiles(int column);
    void clearFiles();
    void showState();
    void showCost();
    QString lastFolder() const;
    void rememberFolder(const QString &file) const;

    ImportTable *m_table;
    ImportForm *m_form;
    QPushButton *m_remove = nullptr;
    QVector<QPushButton *> m_choose; ///< a file for the selected rows
    QPushButton *m_clear = nullptr;
    QLabel *m_cost; ///< what the empty fields cost
    std::unique_ptr<CVXSSequenceDataset> m_sequence;
};
