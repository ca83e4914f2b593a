// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/plugin/CVXToolPluginBase.h"
#include "host/vxapi/view/windows/CVXSMdiSubWindow.h"
#include "host/vxapi/view/windows/CVXSWorkspace.h"
#include "tests/support/TestStudy.h"

#include <memory>
#include <QList>
#include <QObject>
#include <QPluginLoader>

/// The plug-in as the host has it: loaded from its library, in a shown workspace, with a saved sequence of
/// two clicks. Its window is met only as a widget with a meta-object.
class PluginFixture : public QObject
{
protected:
    void setUp();
    void tearDown();

    static QString windowName() { return QStringLiteral("Image Math Window"); }
    QList<QWidget *> windows() const;
    QWidget *window() const { return windows().value(0); }
    QString boundID(QWidget *window) const;
    CVXSMdiSubWindow *sub() const
    {
        return window() ? qobject_cast<CVXSMdiSubWindow *>(window()->parentWidget()) : nullptr;
    }
    /// A saved sequence of the clicks <prefix>1 and <prefix>2.
    static void makeStudy(std::unique_ptr<TestStudy> &study, const QString &id, const QString &prefix);
    /// A sequence of two clicks that was never saved, in a window.
    void showUnsavedSequence();
    bool launchAndShow();
    /// Has the window emit its load request.
    static bool requestLoad(QWidget *window, const QString &path, bool flag, ESTATUS *status,
                            downloaded_save_data *data);

    QPluginLoader m_loader{QStringLiteral(VEXA_IMAGEMATH_PLUGIN)};
    CVXToolPluginBase *m_plugin = nullptr;
    std::unique_ptr<CVXSWorkspace> m_workspace;
    std::unique_ptr<TestStudy> m_study;
    std::unique_ptr<TestStudy> m_second; ///< made by tests that need one
};
