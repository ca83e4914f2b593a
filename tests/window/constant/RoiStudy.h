// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/CROIManager.h"
#include "host/vxapi/model/CRoiMeasurementManager.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxutils/CVXUtilityFns.h"
#include "tests/support/BoundWindow.h"

#include <QAction>
#include <QMenu>
#include <QtTest>

#include <cmath>

/// A bound window over two clicks A ("A1") and B ("A2") whose counts are known functions of the pixel, with
/// ROIs. The field of view is 16 cm, so that a pixel of 32 is half a centimetre wide.
class RoiStudy : public QObject
{
protected:
    using Counts = std::function<double(int x, int y)>;

    static double countsOfA(int x, int y) { return 100.0 + x + 2.0 * y; }
    static double countsOfB(int x, int) { return 40.0 + 3.0 * x; }

    static ClickSpec click(const QString &number, const Counts &counts)
    {
        ClickSpec spec;
        spec.clickNumber = number;
        spec.fieldOfView = 16.0;
        spec.counts = [counts](int x, int y) { return float(counts(x, y)); };
        return spec;
    }

    /// Saves and binds; k is 7, and no calls are counted yet.
    void make(const QList<ClickSpec> &clicks)
    {
        CVXUtilityFns::setkValue(QStringLiteral("7.00"));
        m_bound = std::make_unique<BoundWindow>();
        for (const ClickSpec &spec : clicks)
            QVERIFY(m_bound->study().add(spec));
        QVERIFY(m_bound->saveAndBind());
        window()->forgetCalls();
    }
    void makeDefault() { make({click("A1", countsOfA), click("A2", countsOfB)}); }

    WindowProbe *window() const { return m_bound->window(); }
    CVXSDataset *dataset(const char *number) const
    {
        return m_bound->sequence()->getDataset(QString::fromLatin1(number));
    }
    CROIManager *rois(const char *number) const { return dataset(number)->roiManager(); }
    static QStringList names(const CROIManager *manager)
    {
        QStringList all;
        for (const CROIBase *roi : manager->rois())
            all << roi->name();
        return all;
    }
    CROIBase *addBox(const char *number, const QString &name, const QRectF &box,
                     EROIKIND kind = EROI_MEASUREMENT) const
    {
        CROIBase roi(EROI_RECTANGLE, kind, box);
        roi.setName(name);
        return rois(number)->addROI(roi);
    }

    /// Shows the button's menu as the user does, and leaves it.
    QMenu *shownMenu() const
    {
        QMenu *menu = window()->m_pROIListButton->menu();
        menu->popup(window()->mapToGlobal(QPoint(20, 20)));
        QCoreApplication::processEvents();
        menu->hide();
        return menu;
    }
    /// "title: item, item" of each submenu.
    QStringList menuTexts() const
    {
        QStringList found;
        for (const QAction *entry : shownMenu()->actions()) {
            QStringList items;
            if (entry->menu())
                for (const QAction *item : entry->menu()->actions())
                    items << item->text();
            found << entry->text() + QStringLiteral(": ") + items.join(QStringLiteral(", "));
        }
        return found;
    }
    /// Chooses an item of the submenu of that title.
    void choose(const QString &title, const QString &item) const
    {
        for (QAction *entry : shownMenu()->actions()) {
            if (entry->text() != title || !entry->menu())
                continue;
            for (QAction *action : entry->menu()->actions()) {
                if (action->text() == item) {
                    action->trigger();
                    return;
                }
            }
        }
        QFAIL(qPrintable(title + ": " + item + " is not in the menu"));
    }

    /// The sum over the pixels of a size x size image of 16 cm whose centres lie in the box.
    static double sum(const Counts &counts, const QRectF &box, int size = 32)
    {
        const double pixel = 16.0 / size;
        double total = 0.0;
        for (int y = 0; y < size; ++y)
            for (int x = 0; x < size; ++x) {
                const double cx = (x + 0.5) * pixel;
                const double cy = (y + 0.5) * pixel;
                if (cx >= box.left() && cx < box.right() && cy >= box.top() && cy < box.bottom())
                    total += counts(x, y);
            }
        return total;
    }
    static bool isClose(float k, double expected)
    {
        return std::abs(double(k) - expected) <= 2e-6 * std::abs(expected);
    }

    std::unique_ptr<BoundWindow> m_bound;
};
