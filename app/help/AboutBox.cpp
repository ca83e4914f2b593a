// SPDX-License-Identifier: MIT
#include "app/help/AboutBox.h"

#include "host/vxutils/CVXPreference.h"
#include "host/vxutils/CVXUtilityFns.h"

#include <QCoreApplication>
#include <QIcon>
#include <QMessageBox>

#include <tbb/version.h>
#include <tiffvers.h>

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(AboutBox)
};

} // namespace

QString aboutText()
{
    // The header's text is "LIBTIFF, Version 4.5.0" and a copyright line.
    const QString tiff = QString::fromLatin1(TIFFLIB_VERSION_STR)
                             .section(QLatin1Char('\n'), 0, 0)
                             .section(QLatin1Char(' '), -1);
    return Text::tr("<h3>%1 %2</h3>"
                    "<p>A workspace for optical in-vivo images: it opens sequences, shows and measures "
                    "their images, and computes with them through its tools.</p>"
                    "<p>Licence: MIT</p>"
                    "<p>Qt %3 (built with %4), LibTIFF %5, oneTBB %6</p>")
        .arg(CVXUtilityFns::getAppName(), CVXPreference::getAppVersion(), QString::fromLatin1(qVersion()),
             QStringLiteral(QT_VERSION_STR), tiff, QStringLiteral(TBB_VERSION_STRING));
}

void showAboutBox(QWidget *parent)
{
    QMessageBox box(parent);
    box.setWindowTitle(Text::tr("About %1").arg(CVXUtilityFns::getAppName()));
    box.setIconPixmap(CVXUtilityFns::appIcon().pixmap(64, 64));
    box.setTextFormat(Qt::RichText);
    box.setText(aboutText());
    box.exec();
}
