// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/CVXSDataset.h"

#include "host/vxapi/model/CVXSSequenceDataset.h"

#include <memory>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QWidget>

class MainWindow;
class QAbstractButton;
class QComboBox;
class QLineEdit;
class QListWidget;

/// The workspace with the tool of the build tree, worked through its menus and widgets as the user does. It
/// uses the profile folder that VEXA_PROFILE_DIR names when it is made. What cannot be done gives false, and
/// why() says what.
class ShownTool
{
public:
    ShownTool();
    ~ShownTool();

    /// Opens the sequence.
    bool openSequence(const QString &folder);
    /// Chooses "Image Math" from the Tools menu, for the sequence that is active.
    bool openImageMath();
    bool select(const QString &clickA, const QString &clickB);
    /// "A" or "B"; an empty text for none.
    bool choosePhotograph(const QString &from);
    /// Presses the button. True when a result came of it: result() tells which.
    bool pressDisplayResult();

    /// Closes the result's window, saving nothing: the files stay, the dataset is not open any more.
    bool closeResult();

    MainWindow &window() { return *m_window; }
    CVXSSequenceDataset *sequence() const { return m_sequence; }
    QString why() const { return m_why; }
    /// The dataset that the last press made; null when it made none.
    CVXSDataset *result() const { return m_result; }

    QListWidget *listA() const;
    QListWidget *listB() const;
    QAbstractButton *button(const char *name) const;
    QComboBox *combo(const char *name) const;
    QLineEdit *k() const;
    QWidget *tool() const { return m_tool; }

private:
    bool fail(const QString &why);

    std::unique_ptr<MainWindow> m_window;
    QPointer<CVXSSequenceDataset> m_sequence;
    QPointer<QWidget> m_tool;
    QPointer<CVXSDataset> m_result;
    QString m_why;
};

/// Click numbers of the complete datasets in the program-data folder that the host knows.
QStringList knownResults();
/// The total of an image's pixels, summed in double precision, row after row.
double totalOf(const CILImage &image);
