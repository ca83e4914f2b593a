// SPDX-License-Identifier: MIT
#pragma once

#include <QApplication>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>

/// Answers the next dialog that asks for a file or folder: types the path and presses the button that accepts
/// it, or presses Escape when the path is empty.
class CFolderAnswer
{
public:
    explicit CFolderAnswer(const QString &path) : m_path(path)
    {
        QObject::connect(&m_timer, &QTimer::timeout, [this] { tryToAnswer(); });
        m_timer.start(10);
    }
    bool seen() const { return m_seen; }
    QString title() const { return m_title; }
    QString startFolder() const { return m_start; }

private:
    void tryToAnswer()
    {
        auto *dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
        if (!dialog || !dialog->isVisible())
            return;
        m_timer.stop();
        m_seen = true;
        m_title = dialog->windowTitle();
        m_start = dialog->directory().path();
        if (m_path.isEmpty()) {
            QTest::keyClick(dialog, Qt::Key_Escape);
        } else {
            dialog->findChild<QLineEdit *>("fileNameEdit")->setText(m_path);
            auto *box = dialog->findChild<QDialogButtonBox *>();
            QPushButton *accept = box->button(QDialogButtonBox::Open);
            QTest::mouseClick(accept ? accept : box->button(QDialogButtonBox::Save), Qt::LeftButton);
        }
        if (dialog->isVisible()) // so that the test goes on and fails by its own check
            static_cast<QDialog *>(dialog)->reject();
    }

    QTimer m_timer;
    QString m_path;
    QString m_title;
    QString m_start;
    bool m_seen = false;
};
