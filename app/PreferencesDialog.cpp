// SPDX-License-Identifier: MIT
#include "app/PreferencesDialog.h"

#include "app/PluginManager.h"
#include "host/vxapi/plugin/CVXToolPluginBase.h"
#include "host/vxutils/CVXSLog.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QTabWidget>
#include <QVBoxLayout>

PreferencesDialog::PreferencesDialog(PluginManager *plugins, QWidget *parent)
    : QDialog(parent), m_plugins(plugins), m_pages(new QTabWidget(this))
{
    setObjectName(QStringLiteral("PreferencesDialog"));
    setWindowTitle(tr("Preferences"));
    m_pages->setObjectName(QStringLiteral("PreferencesPages"));
    m_pages->addTab(commonPage(), tr("Tools"));
    addToolPages();
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_pages);
    layout->addWidget(buttons);
    resize(sizeHint().expandedTo(QSize(420, 260)));
}

QWidget *PreferencesDialog::commonPage()
{
    auto *page = new QWidget(this);
    auto *advanced = new QCheckBox(tr("&Advanced options of tools"), page);
    advanced->setObjectName(QStringLiteral("AdvancedOptions"));
    advanced->setChecked(m_plugins->areAdvancedOptionsOn());
    connect(advanced, &QCheckBox::toggled, m_plugins, &PluginManager::setAdvancedOptions);
    auto *note = new QLabel(tr("Tools that have further settings for experts show them then."), page);
    note->setWordWrap(true);
    auto *layout = new QVBoxLayout(page);
    layout->addWidget(advanced);
    layout->addWidget(note);
    layout->addStretch(1);
    return page;
}

void PreferencesDialog::addToolPages()
{
    const QList<CVXToolPluginBase *> tools = m_plugins->plugins();
    for (CVXToolPluginBase *tool : tools) {
        if (!tool->hasPreferenceWidget())
            continue;
        if (QWidget *page = tool->getPreferenceWidget())
            m_pages->addTab(page, tool->getIcon(), tool->getToolName());
        else
            vxLog(ELOG_WARNING, tr("The tool %1 gave no page for its preferences").arg(tool->getToolName()));
    }
}
