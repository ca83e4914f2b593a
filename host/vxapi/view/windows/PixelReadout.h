// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>

class CVXSMultiImageView;

/// Tells the value of the pixel under the mouse in a view.
class PixelReadout : public QObject
{
    Q_OBJECT

public:
    explicit PixelReadout(CVXSMultiImageView *view);

Q_SIGNALS:
    /// "x 12, y 7: 1034.5"; empty when the mouse is over no pixel.
    void textChanged(const QString &text);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    CVXSMultiImageView *m_view;
};
