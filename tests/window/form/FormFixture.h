// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/WindowProbe.h"

#include <memory>
#include <QLocale>
#include <QObject>

/// A window that is not bound to a sequence, whose slots are counted and do nothing.
class FormFixture : public QObject
{
protected:
    void setUp()
    {
        m_window = std::make_unique<WindowProbe>();
        m_window->runSlots = false;
        m_window->forgetCalls();
    }
    void tearDown()
    {
        m_window.reset();
        QLocale::setDefault(QLocale::c());
    }

    /// A widget or layout by its object name; an empty name is the window itself.
    QObject *named(const QString &name) const
    {
        return name.isEmpty() ? static_cast<QObject *>(m_window.get()) : m_window->findChild<QObject *>(name);
    }

    std::unique_ptr<WindowProbe> m_window;
};
