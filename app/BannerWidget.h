// SPDX-License-Identifier: MIT
#pragma once

#include <QFrame>

class QLabel;

/// A strip above the windows that tells the newest failure (or what else the user has to see) and how many
/// stand behind it, until the user
/// dismisses it. Hidden while there is nothing to tell.
class BannerWidget : public QFrame
{
    Q_OBJECT

public:
    explicit BannerWidget(QWidget *parent = nullptr);

    /// Shows the text; those told before and not dismissed are counted.
    void tell(const QString &text);
    void dismiss();

    /// What is shown; empty when nothing is.
    QString text() const { return m_text; }
    /// Failures told since the last dismissal, besides the one shown.
    int moreCount() const { return m_more; }

Q_SIGNALS:
    void showLogRequested();

private:
    QLabel *m_label;
    QLabel *m_moreLabel;
    QString m_text;
    int m_more = 0;
};
