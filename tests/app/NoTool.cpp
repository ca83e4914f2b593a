// SPDX-License-Identifier: MIT
#include <QObject>

/// A plug-in for some other program.
class NoTool : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "vexa.test.NoTool")
};

#include "NoTool.moc"
