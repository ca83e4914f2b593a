// SPDX-License-Identifier: MIT
#include "app/ApplicationSetup.h"

#include "host/vxutils/CVXPreference.h"
#include "host/vxutils/CVXUtilityFns.h"

#include <QGuiApplication>
#include <QIcon>
#include <QLocale>

#include <clocale>

void ApplicationSetup::beforeApplication()
{
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
}

void ApplicationSetup::afterApplication()
{
    // Qt has just taken over the user's locale for the C library as well.
    std::setlocale(LC_NUMERIC, "C");
    QLocale::setDefault(QLocale::c());
    QCoreApplication::setApplicationName(CVXUtilityFns::getAppName());
    QCoreApplication::setApplicationVersion(CVXPreference::getAppVersion());
    if (qobject_cast<QGuiApplication *>(QCoreApplication::instance())) {
        QGuiApplication::setApplicationDisplayName(CVXUtilityFns::getAppName());
        QGuiApplication::setDesktopFileName(QStringLiteral("vexa"));
        QGuiApplication::setWindowIcon(CVXUtilityFns::appIcon());
    }
}
