// SPDX-License-Identifier: MIT
#pragma once

#include <QEvent>
#include <QTest>
#include <QWidget>

/// Counts how often a widget, or one inside it, paints.
///
///     PaintCounter paints(view);
///     QVERIFY(paints.comesToRest()); // and count is 0
///     window.refreshImages();
///     QTRY_VERIFY(paints.count > 0);
///
/// That nothing paints is told by another widget: it is asked later and has painted.
class PaintCounter : public QObject
{
public:
    explicit PaintCounter(QWidget *widget)
    {
        widget->installEventFilter(this);
        const auto inner = widget->findChildren<QWidget *>();
        for (QWidget *one : inner)
            one->installEventFilter(this);
        m_other.installEventFilter(this);
    }

    /// False when it goes on painting however often another widget has painted meanwhile.
    bool comesToRest()
    {
        for (int round = 0; round < 100; ++round) {
            count = 0;
            if (!anotherWidgetPaints())
                return false;
            if (count == 0)
                return true;
        }
        return false;
    }
    /// Waits until a widget that is asked to paint now has painted; false guards against hanging.
    bool anotherWidgetPaints()
    {
        m_other.show();
        m_otherCount = 0;
        m_other.update();
        return QTest::qWaitFor([this] { return m_otherCount > 0; });
    }

    int count = 0;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            ++(watched == &m_other ? m_otherCount : count);
        return false;
    }

private:
    QWidget m_other;
    int m_otherCount = 0;
};
