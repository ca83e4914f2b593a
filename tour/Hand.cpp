// SPDX-License-Identifier: MIT
#include "tour/Hand.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QScreen>
#include <QTest>
#include <QTimer>
#include <QWindow>

#include <cstdio>
#include <cstdlib>

namespace hand {

namespace {

constexpr int PATIENCE = 10000; // ms
constexpr int GLANCE = 20;      // ms
constexpr int AGAIN = 300;      // ms
constexpr int DRAG_STEPS = 8;
constexpr int PAINTINGS = 3;

QString plain(QString text)
{
    return text.remove(QLatin1Char('&'));
}

/// Counts how often a window brings to the screen what was asked to be painted.
class Paintings : public QObject
{
public:
    explicit Paintings(QWidget *window) { window->installEventFilter(this); }
    int count() const { return m_count; }

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        m_count += event->type() == QEvent::UpdateRequest;
        return false;
    }

private:
    int m_count = 0;
};

} // namespace

void giveUp(const QString &message)
{
    std::fprintf(stderr, "vexa-tour: %s\n", qPrintable(message));
    std::fflush(nullptr);
    std::_Exit(1); // from the middle of an event: nothing can be unwound
}

bool waitFor(const std::function<bool()> &holds)
{
    return QTest::qWaitFor(holds, PATIENCE);
}

void settle(QWidget *widget)
{
    Paintings paintings(widget->window());
    for (int round = 1; round <= PAINTINGS; ++round) {
        widget->update();
        if (!waitFor([&] { return paintings.count() >= round; }))
            giveUp(QStringLiteral("%1 does not paint").arg(widget->objectName()));
    }
}

void waitUntilSeen(QWidget *window)
{
    if (!QTest::qWaitForWindowExposed(window, PATIENCE))
        giveUp(QStringLiteral("%1 does not come to the screen").arg(window->objectName()));
}

void chooseFromList(QListWidget *list, const QString &text)
{
    const QList<QListWidgetItem *> items = list->findItems(text, Qt::MatchExactly);
    if (items.isEmpty())
        giveUp(QStringLiteral("no item \"%1\" in %2").arg(text, list->objectName()));
    list->scrollToItem(items.first());
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier,
                      list->visualItemRect(items.first()).center());
    if (list->currentItem() != items.first())
        giveUp(QStringLiteral("item \"%1\" of %2 did not take the click").arg(text, list->objectName()));
}

void openFromList(QListWidget *list, const QString &text)
{
    const QList<QListWidgetItem *> items = list->findItems(text, Qt::MatchContains);
    if (items.isEmpty())
        giveUp(QStringLiteral("no item \"%1\" in %2").arg(text, list->objectName()));
    list->scrollToItem(items.first());
    const QPoint place = list->visualItemRect(items.first()).center();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, place);
}

// With the arrow keys: what an open list takes a click for depends on where the pointer of the display
// happens to be.
void chooseFromCombo(QComboBox *combo, int index)
{
    combo->setFocus(Qt::TabFocusReason);
    while (combo->currentIndex() != index) {
        const int before = combo->currentIndex();
        QTest::keyClick(combo, before < index ? Qt::Key_Down : Qt::Key_Up);
        if (combo->currentIndex() == before)
            giveUp(QStringLiteral("%1 did not take the key").arg(combo->objectName()));
    }
}

void click(QAbstractButton *button)
{
    if (!button->isEnabled() || !button->isVisible())
        giveUp(QStringLiteral("%1 cannot be clicked").arg(button->objectName()));
    // Radio buttons and check boxes take clicks on indicator and text only, not on the space beside them.
    QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, QPoint(8, button->height() / 2));
}

void type(QLineEdit *field, const QString &text)
{
    QTest::mouseDClick(field, Qt::LeftButton);
    QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(field, text);
    QTest::keyClick(field, Qt::Key_Return);
}

void drag(QWidget *widget, const QPoint &from, const QPoint &to)
{
    // QTest's mouseMove() knows no pressed button; the widget is told of it as the window system tells.
    const auto tell = [widget](QEvent::Type type, const QPoint &at, Qt::MouseButton button,
                               Qt::MouseButtons buttons) {
        QMouseEvent event(type, at, widget->mapToGlobal(at), button, buttons, Qt::NoModifier);
        QApplication::sendEvent(widget, &event);
    };
    tell(QEvent::MouseMove, from, Qt::NoButton, Qt::NoButton);
    tell(QEvent::MouseButtonPress, from, Qt::LeftButton, Qt::LeftButton);
    for (int step = 1; step <= DRAG_STEPS; ++step) {
        tell(QEvent::MouseMove, from + (to - from) * step / DRAG_STEPS, Qt::NoButton, Qt::LeftButton);
        QApplication::processEvents();
    }
    tell(QEvent::MouseButtonRelease, to, Qt::LeftButton, Qt::NoButton);
}

Answer::Answer(const QString &button, const std::function<void()> &seen)
{
    auto *timer = new QTimer(qApp);
    const std::shared_ptr<State> state = m_state;
    QObject::connect(timer, &QTimer::timeout, timer, [timer, state, button, seen] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!box || !box->isVisible())
            return;
        timer->stop();
        timer->deleteLater();
        state->asked = true;
        state->text = box->text();
        if (seen)
            seen();
        const QList<QAbstractButton *> buttons = box->buttons();
        for (QAbstractButton *candidate : buttons) {
            if (plain(candidate->text()) == button) {
                QTest::mouseClick(candidate, Qt::LeftButton);
                return;
            }
        }
        giveUp(QStringLiteral("no button \"%1\" in \"%2\"").arg(button, box->text()));
    });
    timer->start(GLANCE);
}

void useDialog(const char *className, const std::function<void(QWidget *)> &use)
{
    auto *timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, className, use] {
        QWidget *dialog = QApplication::activeModalWidget();
        if (!dialog || !dialog->isVisible() || !dialog->inherits(className))
            return;
        timer->stop();
        timer->deleteLater();
        use(dialog);
    });
    timer->start(GLANCE);
}

void lookAtDialog(const std::function<void()> &seen)
{
    useDialog("QDialog", [seen](QWidget *dialog) {
        seen();
        QTest::keyClick(dialog, Qt::Key_Escape);
    });
}

void chooseFiles(const QStringList &paths)
{
    useDialog("QFileDialog", [paths](QWidget *dialog) {
        auto *field = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
        if (!field)
            giveUp(QStringLiteral("the file dialog has no field for names"));
        const QString text = QLatin1Char('"') + paths.join(QStringLiteral("\" \"")) + QLatin1Char('"');
        // A dialog that is still reading its folder may empty the field once more.
        auto *again = new QTimer(dialog);
        QObject::connect(again, &QTimer::timeout, dialog, [field, text] { type(field, text); });
        again->start(AGAIN);
    });
}

QPixmap photograph(QWidget *window)
{
    settle(window);
    const QPoint corner = window->mapToGlobal(QPoint(0, 0));
    return window->window()->windowHandle()->screen()->grabWindow(0, corner.x(), corner.y(), window->width(),
                                                                  window->height());
}

} // namespace hand
