// SPDX-License-Identifier: MIT
#include "app/help/WelcomePage.h"

#include "app/datasets/RecentSequences.h"
#include "host/vxutils/CVXUtilityFns.h"

#include <QAction>
#include <QCommandLinkButton>
#include <QDir>
#include <QEvent>
#include <QFileInfo>
#include <QIcon>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr int COLUMN = 460;

QLabel *heading(const QString &text, double size)
{
    auto *label = new QLabel(text);
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() * size);
    font.setBold(true);
    label->setFont(font);
    return label;
}

} // namespace

WelcomePage::WelcomePage(QMdiArea *area, RecentSequences *recent)
    : QWidget(area), m_area(area), m_recent(recent), m_choices(new QVBoxLayout), m_recentPlace(new QWidget)
{
    setObjectName(QStringLiteral("welcome"));
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::Base);

    auto *title = new QHBoxLayout;
    auto *icon = new QLabel;
    icon->setPixmap(CVXUtilityFns::appIcon().pixmap(48, 48));
    title->addWidget(icon);
    title->addWidget(heading(CVXUtilityFns::getAppName(), 2.0));
    title->addStretch(1);
    auto *hint = new QLabel(tr("A sequence's folder can also be dropped here."));
    hint->setForegroundRole(QPalette::Text);

    m_choices->setSpacing(2);
    auto *column = new QVBoxLayout;
    column->addStretch(1);
    column->addLayout(title);
    column->addSpacing(12);
    column->addLayout(m_choices);
    column->addSpacing(12);
    column->addWidget(m_recentPlace);
    column->addSpacing(12);
    column->addWidget(hint);
    column->addStretch(2);
    auto *row = new QHBoxLayout(this);
    row->addStretch(1);
    row->addLayout(column);
    row->addStretch(1);
    m_recentPlace->setFixedWidth(COLUMN);

    area->installEventFilter(this);
    connect(area, &QMdiArea::subWindowActivated, this, &WelcomePage::follow);
    follow();
}

void WelcomePage::addChoice(QAction *action, const QString &title, const QString &description)
{
    auto *button = new QCommandLinkButton(title, description, this);
    button->setObjectName(QStringLiteral("welcome_") + action->objectName());
    button->setFixedWidth(COLUMN);
    button->setEnabled(action->isEnabled());
    connect(button, &QCommandLinkButton::clicked, action, &QAction::trigger);
    connect(action, &QAction::changed, button, [button, action] { button->setEnabled(action->isEnabled()); });
    m_choices->addWidget(button);
}

bool WelcomePage::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize || event->type() == QEvent::Show)
        setGeometry(m_area->rect());
    return QWidget::eventFilter(watched, event);
}

void WelcomePage::follow()
{
    const QList<QMdiSubWindow *> windows = m_area->subWindowList();
    const bool isEmpty = std::none_of(windows.begin(), windows.end(),
                                      [](const QMdiSubWindow *window) { return window->isVisible(); });
    if (isEmpty && isHidden())
        fillRecent();
    setVisible(isEmpty);
    if (isEmpty) {
        setGeometry(m_area->rect());
        raise();
    }
}

void WelcomePage::fillRecent()
{
    delete m_recentPlace->layout();
    qDeleteAll(m_recentPlace->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly));
    const QStringList folders = m_recent->folders().mid(0, MAX_RECENT);
    m_recentPlace->setVisible(!folders.isEmpty());
    if (folders.isEmpty())
        return;
    auto *layout = new QVBoxLayout(m_recentPlace);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(heading(tr("Open before"), 1.1));
    for (const QString &folder : folders) {
        // The name is what tells them apart; where it lies may be long.
        auto *link = new QLabel(
            QStringLiteral("<a href=\"open\">%1</a>").arg(QFileInfo(folder).fileName().toHtmlEscaped()));
        link->setObjectName(QStringLiteral("welcomeRecent"));
        link->setToolTip(QStringLiteral("<qt>%1</qt>").arg(QDir::toNativeSeparators(folder).toHtmlEscaped()));
        link->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
        connect(link, &QLabel::linkActivated, m_recent, [this, folder] { m_recent->choose(folder); });
        layout->addWidget(link);
    }
}
