// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

class PluginManager;
class QTabWidget;

/// The preferences: a page for all tools, then one for each tool that has preferences. What is set holds at
/// once.
class PreferencesDialog : public QDialog
{
    Q_OBJECT

public:
    explicit PreferencesDialog(PluginManager *plugins, QWidget *parent = nullptr);

private:
    QWidget *commonPage();
    void addToolPages();

    PluginManager *m_plugins;
    QTabWidget *m_pages;
};
