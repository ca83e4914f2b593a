// SPDX-License-Identifier: MIT
#include "tests/support/DialogAnswerer.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>

namespace {

QList<DialogAnswerer *> &living()
{
    static QList<DialogAnswerer *> all;
    return all;
}

DialogAnswerer::Shown factsOf(const QDialog *dialog)
{
    DialogAnswerer::Shown seen;
    seen.className = seen.text = QString::fromLatin1(dialog->metaObject()->className());
    seen.objectName = dialog->objectName();
    seen.title = dialog->windowTitle();
    seen.hasParent = dialog->parentWidget() != nullptr;
    seen.modal = dialog->isModal();
    for (const QPushButton *button : dialog->findChildren<QPushButton *>()) {
        if (button->isDefault())
            seen.defaultButton = button->text();
    }
    if (const auto *box = qobject_cast<const QMessageBox *>(dialog)) {
        seen.text = box->text();
        seen.icon = box->icon();
        for (QAbstractButton *button : box->buttons()) {
            seen.buttons << button->text();
            seen.standardButtons << int(box->standardButton(button));
        }
    }
    if (const auto *files = qobject_cast<const QFileDialog *>(dialog)) {
        seen.startFolder = files->directory().path();
        seen.proposedFile = files->selectedFiles().value(0);
    }
    return seen;
}

void click(QAbstractButton *button)
{
    if (button)
        QTest::mouseClick(button, Qt::LeftButton);
}

void pressCode(QDialog *dialog, int code)
{
    const auto *box = qobject_cast<QMessageBox *>(dialog);
    if (code == DialogAnswer::ESCAPE_KEY || !box)
        QTest::keyClick(dialog, Qt::Key_Escape);
    else
        click(code == DialogAnswer::FIRST_BUTTON ? box->buttons().value(0)
                                                 : box->button(QMessageBox::StandardButton(code)));
}

void pressText(const QDialog *dialog, const QString &text)
{
    for (QAbstractButton *button : dialog->findChildren<QAbstractButton *>()) {
        if (button->text() == text) {
            click(button);
            return;
        }
    }
}

void chooseFile(const QDialog *dialog, const QString &path)
{
    auto *field = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
    const auto *box = dialog->findChild<QDialogButtonBox *>();
    if (!field || !box)
        return;
    field->setText(path);
    QPushButton *accept = box->button(QDialogButtonBox::Open);
    click(accept ? accept : box->button(QDialogButtonBox::Save));
}

/// Closes what its answer left open.
void putAway(QDialog *dialog)
{
    if (const auto *box = qobject_cast<QMessageBox *>(dialog)) {
        if (!box->buttons().isEmpty()) {
            box->buttons().first()->click();
            return;
        }
    }
    dialog->done(QDialog::Rejected);
}

} // namespace

DialogAnswer DialogAnswer::press(const QString &button, int key)
{
    DialogAnswer answer(ESCAPE_KEY);
    answer.m_button = button;
    answer.m_key = key;
    return answer;
}

DialogAnswer DialogAnswer::choose(const QString &path)
{
    DialogAnswer answer(ESCAPE_KEY);
    answer.m_path = path;
    return answer;
}

DialogAnswer DialogAnswer::call(std::function<void(QDialog *)> function)
{
    DialogAnswer answer(ESCAPE_KEY);
    answer.m_function = std::move(function);
    return answer;
}

DialogAnswerer::DialogAnswerer(const QList<DialogAnswer> &answers) : m_answers(answers)
{
    living() << this;
    lookSoon();
}

DialogAnswerer::~DialogAnswerer()
{
    living().removeOne(this);
}

void DialogAnswerer::lookSoon()
{
    QTimer::singleShot(5, &m_context, [this] { look(); });
}

void DialogAnswerer::look()
{
    // Before anything else: an answer may open the next dialog, and it comes back only when that is answered.
    lookSoon();
    QWidget *modal = QApplication::activeModalWidget();
    if (!modal || !modal->isVisible() || modal == m_inHand || living().last() != this)
        return;
    m_inHand = modal;
    if (auto *dialog = qobject_cast<QDialog *>(modal)) {
        answer(dialog);
    } else {
        Shown other;
        other.title = modal->windowTitle();
        other.className = other.text = QString::fromLatin1(modal->metaObject()->className());
        m_shown << other;
        modal->close();
    }
    if (m_inHand == modal)
        m_inHand = nullptr;
}

void DialogAnswerer::answer(QDialog *dialog)
{
    const QPointer<QDialog> guard(dialog);
    const int index = m_shown.size();
    m_shown << factsOf(dialog);
    const DialogAnswer wanted =
        m_answers.isEmpty() ? DialogAnswer(DialogAnswer::ESCAPE_KEY) : m_answers.takeFirst();
    if (wanted.m_function)
        wanted.m_function(dialog);
    else if (!wanted.m_path.isEmpty())
        chooseFile(dialog, wanted.m_path);
    else if (!wanted.m_button.isEmpty())
        pressText(dialog, wanted.m_button);
    else if (wanted.m_key)
        QTest::keyClick(dialog, Qt::Key(wanted.m_key));
    else
        pressCode(dialog, wanted.m_code);
    m_shown[index].closed = !guard || !guard->isVisible();
    if (!m_shown[index].closed)
        putAway(guard);
}
