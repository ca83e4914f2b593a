// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/BoundWindow.h"
#include "tests/window/result/RecordText.h"

#include <QTemporaryDir>

/// A bound window over two saved clicks A and B, whose ClickInfo.txt and AnalyzedClickInfo.txt are written
/// out by hand, and a program-data folder of its own. A holds 100 + x + 2 y counts, B 10 everywhere, both
/// binned by 4; k is 2.50, so the result A - B * k runs from 75 to 168. Both have photographs.
class ResultBench
{
public:
    explicit ResultBench(const QString &dataFolder = QStringLiteral("data"));
    ~ResultBench();

    static QString clickA() { return QStringLiteral("AB20260102030406"); }
    static QString clickB() { return QStringLiteral("AB20260102030507"); }
    static QString resultNumber() { return QStringLiteral("AB_M20260102030406"); }

    /// Saves, binds and writes the files; false when one of these failed.
    bool make();
    /// Chooses the photograph with the widgets: "A", "B", or nothing for none.
    void choosePhotograph(const QString &from);

    WindowProbe *window() const { return m_bound->window(); }
    BoundWindow &bound() { return *m_bound; }
    CVXSDataset *datasetA() const { return m_a; }
    CVXSDataset *datasetB() const { return m_b; }

    /// The program-data folder, without "/" at its end.
    QString dataPath() const { return m_dataPath; }
    QString resultFolder() const { return m_dataPath + QLatin1Char('/') + resultNumber() + QLatin1Char('/'); }
    QString resultFile(const char *name) const { return resultFolder() + QLatin1String(name); }
    QString folderOf(const QString &click) const;
    QString clickInfo(const QString &click) const { return folderOf(click) + QLatin1String("ClickInfo.txt"); }
    QString analyzed(const QString &click) const
    {
        return folderOf(click) + QLatin1String("AnalyzedClickInfo.txt");
    }

    ESTATUS writeRecord() { return window()->writeResultClickInfo(clickInfo(clickA()), clickInfo(clickB())); }
    ESTATUS writeAnalyzed()
    {
        return window()->writeAnalyzedClickInfo(analyzed(clickA()), analyzed(clickB()));
    }

private:
    QTemporaryDir m_folder;
    QString m_dataPath;
    std::unique_ptr<BoundWindow> m_bound;
    CVXSDataset *m_a = nullptr;
    CVXSDataset *m_b = nullptr;
};
