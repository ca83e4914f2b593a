// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <QDialog>
#include <QList>
#include <QMessageBox>
#include <QPointer>
#include <QString>
#include <QStringList>

/// One answer to a modal dialog.
class DialogAnswer
{
public:
    static constexpr int FIRST_BUTTON = 0; ///< press the first button
    static constexpr int ESCAPE_KEY = -1;  ///< press Escape on the keyboard

    /// FIRST_BUTTON, ESCAPE_KEY or the code of a standard button. Not explicit, so that a list of codes is a
    /// list of answers.
    DialogAnswer(int code) : m_code(code) {}
    /// The button of that text; with an empty text the key.
    static DialogAnswer press(const QString &button, int key = Qt::Key_Escape);
    /// Into a dialog that asks for a file or folder: the path, and the button that accepts it. Escape with an
    /// empty path.
    static DialogAnswer choose(const QString &path);
    /// Whatever the function does to the dialog.
    static DialogAnswer call(std::function<void(QDialog *)> function);

private:
    friend class DialogAnswerer;
    int m_code = ESCAPE_KEY;
    int m_key = 0;
    QString m_button;
    QString m_path;
    std::function<void(QDialog *)> m_function;
};

/// Answers modal dialogs as the user would, with mouse and keyboard, one answer a dialog in the order in
/// which they come, and notes what each of them showed.
///
///     const DialogAnswerer user({DialogAnswer::press("&Save"), DialogAnswer::choose(folder)});
///     window.close();
///     QCOMPARE(user.count(), 2);
///     QVERIFY(user.shown(0).text.contains("not saved") && user.shown(1).closed);
///
/// A dialog for which no answer is planned is closed with Escape or its first button, and one that its answer
/// leaves open is closed as well, with `closed` false, so that a test never hangs. Of several of these
/// objects the newest answers.
class DialogAnswerer
{
public:
    struct Shown
    {
        QString className;
        QString objectName;
        QString title;
        QString text;               ///< of a message box; of any other dialog its class name
        QStringList buttons;        ///< texts, in the box's order
        QList<int> standardButtons; ///< their codes, 0 for a button that is not a standard one
        QString defaultButton;
        QMessageBox::Icon icon = QMessageBox::NoIcon;
        bool hasParent = false;
        bool modal = false;
        QString startFolder;  ///< of a file dialog
        QString proposedFile; ///< of a file dialog
        bool closed = false;  ///< the answer closed the dialog
    };

    explicit DialogAnswerer(const QList<DialogAnswer> &answers = {});
    ~DialogAnswerer();
    DialogAnswerer(const DialogAnswerer &) = delete;
    DialogAnswerer &operator=(const DialogAnswerer &) = delete;

    const QList<Shown> &shown() const { return m_shown; }
    /// Nothing of anything when there was no such dialog.
    Shown shown(int index) const { return m_shown.value(index); }
    int count() const { return m_shown.size(); }

private:
    void lookSoon();
    void look();
    void answer(QDialog *dialog);

    QObject m_context; ///< ends the looking
    QList<DialogAnswer> m_answers;
    QList<Shown> m_shown;
    QPointer<QWidget> m_inHand; ///< a dialog is answered once
};
