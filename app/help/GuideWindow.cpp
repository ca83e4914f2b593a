// SPDX-License-Identifier: MIT
#include "app/help/GuideWindow.h"

#include "app/help/GuideText.h"
#include "host/vxutils/CVXSLog.h"
#include "host/vxutils/CVXUtilityFns.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QScreen>
#include <QTextBrowser>
#include <QToolBar>
#include <QVBoxLayout>

namespace {

QString pageFile(const QString &name)
{
    return guide::folder() + QLatin1Char('/') + name + QStringLiteral(".md");
}

/// Reads pages as HTML, and pictures no wider than the text.
class GuideBrowser : public QTextBrowser
{
public:
    using QTextBrowser::QTextBrowser;

    QVariant loadResource(int type, const QUrl &url) override
    {
        // Pages and pictures lie in one folder; nothing else is read.
        const QString path = QDir::cleanPath(QDir(guide::folder()).absoluteFilePath(url.path()));
        if (type == QTextDocument::HtmlResource) {
            QFile page(pageFile(QFileInfo(path).completeBaseName()));
            return page.open(QIODevice::ReadOnly) ? guide::toHtml(page.readAll()) : QString();
        }
        if (type == QTextDocument::ImageResource && path.startsWith(guide::folder())) {
            const QImage image(path);
            const int room = width() - 80;
            return image.width() > room ? image.scaledToWidth(room, Qt::SmoothTransformation) : image;
        }
        return QVariant();
    }
};

} // namespace

GuideWindow::GuideWindow(QWidget *parent) : QWidget(parent, Qt::Window), m_browser(new GuideBrowser(this))
{
    setObjectName(QStringLiteral("guideWindow"));
    setWindowTitle(tr("User's Guide"));
    setWindowIcon(CVXUtilityFns::appIcon());
    m_browser->setObjectName(QStringLiteral("guideBrowser"));
    m_browser->setOpenExternalLinks(true);
    m_browser->document()->setDocumentMargin(16);

    auto *bar = new QToolBar(this);
    QAction *back = bar->addAction(tr("Back"), m_browser, &QTextBrowser::backward);
    back->setEnabled(false);
    connect(m_browser, &QTextBrowser::backwardAvailable, back, &QAction::setEnabled);
    bar->addSeparator();
    bar->addAction(tr("Image Math"), this, [this] { showPage(QStringLiteral("image-math")); });
    bar->addAction(tr("The Workspace"), this, [this] { showPage(QStringLiteral("workspace")); });

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(bar);
    layout->addWidget(m_browser, 1);
    resize(QSize(900, 820).boundedTo(QGuiApplication::primaryScreen()->availableSize()));
}

bool GuideWindow::showPage(const QString &name)
{
    if (!QFileInfo(pageFile(name)).isFile()) {
        vxLog(ELOG_FAILURE, tr("The user's guide cannot be shown. %1: there is no such file")
                                .arg(QDir::toNativeSeparators(pageFile(name))));
        return false;
    }
    show();
    raise();
    activateWindow();
    m_browser->setSource(QUrl(name + QStringLiteral(".html")));
    return true;
}
