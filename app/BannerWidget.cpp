// SPDX-License-Identifier: MIT
#include "app/BannerWidget.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStyle>

namespace {

/// Longer messages are read in the log; the strip must not push the windows off the screen.
constexpr int MAX_SHOWN = 600;

} // namespace

BannerWidget::BannerWidget(QWidget *parent)
    : QFrame(parent), m_label(new QLabel(this)), m_moreLabel(new QLabel(this))
{
    setObjectName(QStringLiteral("banner"));
    // Its own colours, legible on light and dark desktops alike.
    setStyleSheet(QStringLiteral("#banner { background: #fdf0d5; border-bottom: 1px solid #d9a441; }"
                                 "#banner QLabel { color: #3a2a05; }"));
    setAccessibleName(tr("Message"));

    auto *icon = new QLabel(this);
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize);
    icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(size, size));

    m_label->setObjectName(QStringLiteral("bannerText"));
    m_label->setWordWrap(true);
    m_label->setTextFormat(Qt::PlainText); // file names and reasons are no markup
    m_label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_moreLabel->setObjectName(QStringLiteral("bannerMore"));

    auto *showLog = new QPushButton(tr("Show Log"), this);
    showLog->setObjectName(QStringLiteral("bannerShowLog"));
    connect(showLog, &QPushButton::clicked, this, &BannerWidget::showLogRequested);
    auto *dismissButton = new QPushButton(tr("Dismiss"), this);
    dismissButton->setObjectName(QStringLiteral("bannerDismiss"));
    connect(dismissButton, &QPushButton::clicked, this, &BannerWidget::dismiss);

    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(10, 5, 8, 5);
    layout->setSpacing(8);
    layout->addWidget(icon);
    layout->addWidget(m_label, 1);
    layout->addWidget(m_moreLabel);
    layout->addWidget(showLog);
    layout->addWidget(dismissButton);
    hide();
}

void BannerWidget::tell(const QString &text)
{
    // A line that repeats the last one with more around it is no further failure: who found it and who was
    // told of it both log.
    if (!m_text.isNull() && !text.contains(m_text))
        ++m_more;
    m_text = text;
    m_label->setText(text.size() > MAX_SHOWN ? text.left(MAX_SHOWN) + QChar(0x2026) : text);
    m_moreLabel->setText(tr("and %1 more").arg(m_more));
    m_moreLabel->setVisible(m_more > 0);
    show();
}

void BannerWidget::dismiss()
{
    m_text = QString();
    m_more = 0;
    hide();
}
