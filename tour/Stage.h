// SPDX-License-Identifier: MIT
#pragma once

#include "tour/Hand.h"
#include "tour/Report.h"

#include <QStringList>
#include <QWidget>

class CILImage;
class CVXSImageWindow;
class CVXSSequenceDataset;
class MainWindow;

/// Where a tour plays: the workspace with its windows, and what the user does there again and again.
///
///     Stage stage(mainWindow, sequence, report);
///     stage.openImageMath();
///     stage.selectPair(FLUORESCENCE_A, FLUORESCENCE_B);
///     stage.typeK("1.25");
///     stage.pressDisplay(); // a result dataset is made, loaded and shown
///
/// All of it goes through real mouse and key events (Hand.h). What does not react ends the tour with a
/// message; what does not hold is written into the report, which decides the exit status.
class Stage
{
public:
    Stage(MainWindow &window, CVXSSequenceDataset *sequence, Report &report)
        : window(window), sequence(sequence), report(report)
    {
    }

    /// Opens the Image Math Window from the menu, where the workspace places it.
    void showImageMath();
    /// The same, and lays it out.
    void openImageMath();
    /// Brings a window to the front by the beginning of its title.
    void activate(const QString &title);
    /// Opens the image window of a click from its thumbnail, or brings it to the front.
    CVXSImageWindow *openImage(const QString &clickNumber);
    void chooseUnit(const QString &text);

    void selectPair(const QString &clickA, const QString &clickB);
    void chooseFormula(int index);
    void typeK(const QString &text);
    QString shownK() const;
    /// Presses "Display Result For Measuring".
    void pressDisplay();
    /// What the tool shows as the result now.
    const CILImage *shownResult() const;
    /// Click numbers that lie under the program-data path.
    static QStringList storedResults();
    static QString resultFolder(const QString &clickNumber);

    /// A picture of a window of the workspace (null: of the workspace).
    void picture(const QString &name, const QString &caption, QWidget *shown = nullptr);
    /// A widget by its object name.
    template <typename T>
    T *find(QWidget *parent, const char *name) const
    {
        auto *widget = parent ? parent->findChild<T *>(QString::fromLatin1(name)) : nullptr;
        if (!widget)
            hand::giveUp(QStringLiteral("there is no %1").arg(QString::fromLatin1(name)));
        return widget;
    }

    MainWindow &window;
    CVXSSequenceDataset *sequence; ///< null: none is open
    Report &report;
    QWidget *tool = nullptr; ///< the Image Math Window
};
