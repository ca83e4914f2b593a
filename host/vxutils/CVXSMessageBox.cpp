// SPDX-License-Identifier: MIT
#include "host/vxutils/CVXSMessageBox.h"

#include <QCoreApplication>
#include <QMessageBox>
#include <QPushButton>

#include <array>

namespace {

using Texts = std::array<QString, 3>;

int askWithTexts(QMessageBox::Icon icon, QWidget *parent, const QString &title, const QString &text,
                 Texts texts, int defaultButton, int escapeButton)
{
    if (texts[0].isEmpty() && texts[1].isEmpty() && texts[2].isEmpty())
        texts[0] = QCoreApplication::translate("CVXSMessageBox", "OK");

    QMessageBox box(icon, title, text, QMessageBox::NoButton, parent);
    std::array<QPushButton *, 3> buttons{};
    for (std::size_t i = 0; i < texts.size(); ++i) {
        // One role for all: the order stays the caller's, and Qt guesses no escape button among several.
        if (!texts[i].isEmpty())
            buttons[i] = box.addButton(texts[i], QMessageBox::ActionRole);
    }
    const auto buttonAt = [&buttons](int index) {
        return index >= 0 && index < int(buttons.size()) ? buttons[std::size_t(index)] : nullptr;
    };
    if (QPushButton *button = buttonAt(defaultButton))
        box.setDefaultButton(button);
    if (QPushButton *button = buttonAt(escapeButton))
        box.setEscapeButton(button);
    box.exec();

    for (int i = 0; i < int(buttons.size()); ++i) {
        if (buttonAt(i) && buttonAt(i) == box.clickedButton())
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
