// SPDX-License-Identifier: MIT
#pragma once

#include <QTextEdit>

/// Plain text that the user can select and copy, as wide as its place and as high as it needs. Unlike a label's
/// it also breaks within a word: a path is a word of any length, and cut off it tells nothing.
class WrappedText : public QTextEdit
{
    Q_OBJECT

public:
    explicit WrappedText(const QString &text = QString(), QWidget *parent = nullptr);

    void setText(const QString &text);
    QString text() const { return toPlainText(); }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;

protected:
    /// Scrolls what it stands in.
    void wheelEvent(QWheelEvent *event) override;
};
