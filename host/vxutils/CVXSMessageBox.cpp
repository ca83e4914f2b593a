// SPDX-License-Identifier: MIT
#include "host/vxutils/CVXSMessageBox.h"

#include <QCoreApplication>
#include <QMessageBox>
#include <QPushButton>

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(CVXSMessageBox)
};

int askWithTexts(QMessageBox::Icon icon, QWidget *parent, const QString &title, const QString &text,
                 QStringList texts, int defaultButton, int escapeButton)
{
    if (texts.join(QString()).isEmpty())
        texts = QStringList{Text::tr("OK")};

    QMessageBox box(icon, title, text, QMessageBox::NoButton, parent);
    QList<QPushButton *> buttons;
    for (const QString &buttonText : qAsConst(texts)) {
        // One role for all: the order stays the caller's, and Qt guesses no escape button among several.
        buttons += buttonText.isEmpty() ? nullptr : box.addButton(buttonText, QMessageBox::ActionRole);
    }
    if (QPushButton *button = buttons.value(defaultButton))
        box.setDefaultButton(button);
    if (QPushButton *button = buttons.value(escapeButton))
        box.setEscapeButton(button);
    box.exec();

    for (int i = 0; i < buttons.size(); ++i) {
        if (buttons.at(i) && buttons.at(i) == box.clickedButton())
            return i;
    }
    return escapeButton;
}

int askWithStandardButtons(QMessageBox::Icon icon, QWidget *parent, const QString &title, const QString &text,
                           int button0, int button1, int button2)
{
    QMessageBox box(icon, title, text, QMessageBox::NoButton, parent);
    for (int code : {button0, button1, button2}) {
        if (code != 0)
            box.addButton(QMessageBox::StandardButton(code));
    }
    if (button0 == 0 && button1 == 0 && button2 == 0)
        box.addButton(QMessageBox::Ok);
    return box.exec();
}

} // namespace

int CVXSMessageBox::information(QWidget *parent, const QString &title, const QString &text,
                                const QString &button0Text, const QString &button1Text,
                                const QString &button2Text, int defaultButton, int escapeButton)
{
    return askWithTexts(QMessageBox::Information, parent, title, text,
                        {button0Text, button1Text, button2Text}, defaultButton, escapeButton);
}

int CVXSMessageBox::warning(QWidget *parent, const QString &title, const QString &text,
                            const QString &button0Text, const QString &button1Text,
                            const QString &button2Text, int defaultButton, int escapeButton)
{
    return askWithTexts(QMessageBox::Warning, parent, title, text, {button0Text, button1Text, button2Text},
                        defaultButton, escapeButton);
}

int CVXSMessageBox::warning(QWidget *parent, const QString &title, const QString &text,
                            const QStringList &buttonTexts, int defaultButton, int escapeButton)
{
    return askWithTexts(QMessageBox::Warning, parent, title, text, buttonTexts, defaultButton, escapeButton);
}

int CVXSMessageBox::warning(QWidget *parent, const QString &title, const QString &text, int button0,
                            int button1, int button2)
{
    return askWithStandardButtons(QMessageBox::Warning, parent, title, text, button0, button1, button2);
}

int CVXSMessageBox::question(QWidget *parent, const QString &title, const QString &text, int button0,
                             int button1, int button2)
{
    return askWithStandardButtons(QMessageBox::Question, parent, title, text, button0, button1, button2);
}
