// SPDX-License-Identifier: MIT
#include "app/provenance/WrappedText.h"

#include <QTextDocument>
#include <QWheelEvent>

#include <cmath>

WrappedText::WrappedText(const QString &text, QWidget *parent) : QTextEdit(parent)
{
    setReadOnly(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setUndoRedoEnabled(false);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    setTabChangesFocus(true);
    document()->setDocumentMargin(0);
    viewport()->setAutoFillBackground(false);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    setText(text);
}

void WrappedText::setText(const QString &text)
{
    setPlainText(text); // what a file says is no markup
    updateGeometry();
}

int WrappedText::heightForWidth(int width) const
{
    QTextDocument copy;
    copy.setDocumentMargin(0);
    copy.setDefaultFont(font());
    QTextOption option = copy.defaultTextOption();
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    copy.setDefaultTextOption(option);
    copy.setPlainText(toPlainText());
    copy.setTextWidth(width);
    return int(std::ceil(copy.size().height()));
}

QSize WrappedText::minimumSizeHint() const
{
    const int width = fontMetrics().averageCharWidth() * 8;
    return QSize(width, fontMetrics().lineSpacing());
}

QSize WrappedText::sizeHint() const
{
    const int width = fontMetrics().averageCharWidth() * 20;
    return QSize(width, heightForWidth(width));
}

void WrappedText::wheelEvent(QWheelEvent *event)
{
    event->ignore();
}
