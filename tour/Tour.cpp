// SPDX-License-Identifier: MIT
#include "tour/Tour.h"

#include "app/MainWindow.h"
#include "host/vxapi/model/ClickInfoKeys.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxparser/CPLClickInfo.h"
#include "host/vxutils/CVXPreference.h"
#include "tour/Hand.h"
#include "tour/MainJob.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QPixmap>
#include <QSaveFile>
#include <QTest>

namespace {

QString luminescentValue(const CVXSDataset &dataset, const char *key)
{
    QString value;
    if (const CPLSection *section = (*dataset.getClickInfo())[clickinfo::SECTION_LUMINESCENT])
        section->getValue(QString::fromLatin1(key), &value);
    return value;
}

bool hasPhotograph(const CVXSDataset &dataset)
{
    return dataset.getImageList()->isPresent(EIMAGE_PHOTOGRAPH);
}

} // namespace

Tour::Tour(MainWindow &window, CVXSSequenceDataset &sequence, const QString &outFolder)
    : m_window(window), m_sequence(sequence), m_outFolder(outFolder)
{
}

bool Tour::run()
{
    m_summary << QStringLiteral("Vexa %1, sequence %2")
                     .arg(CVXPreference::getAppVersion(), m_sequence.getSequenceID());
    m_summary << QString() << QStringLiteral("Pictures:");
    QTest::qWait(1500); // the sequence window makes its thumbnails one after the other
    picture(QStringLiteral("01-workspace"), QStringLiteral("the workspace with the sequence"));
    m_tool = openImageMath();
    mainJob();
    formulas();
    colorScales();
    pairsThatCannotBeCombined();
    m_summary << QString()
              << (m_holds ? QStringLiteral("Everything that was checked holds.")
                          : QStringLiteral("SOMETHING DOES NOT HOLD, see above."));

    QSaveFile file(m_outFolder + QStringLiteral("/summary.txt"));
    const QByteArray text = m_summary.join(QLatin1Char('\n')).toUtf8() + '\n';
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.commit())
        hand::giveUp(QStringLiteral("%1: %2").arg(file.fileName(), file.errorString()));
    fputs(text.constData(), stdout);
    return m_holds;
}

void Tour::check(bool holds, const QString &what)
{
    m_summary << QStringLiteral("  %1  %2")
                     .arg(holds ? QStringLiteral("holds:") : QStringLiteral("DOES NOT HOLD:"), what);
    m_holds = m_holds && holds;
}

QWidget *Tour::openImageMath()
{
    hand::chooseFromMenu(&m_window, QStringLiteral("Tools"), QStringLiteral("Image Math"));
    const auto find = [this] { return m_window.findChild<QWidget *>(QStringLiteral("Image Math Window")); };
    if (!QTest::qWaitFor([&find] { return find() && find()->isVisible(); }, 10000))
        hand::giveUp(QStringLiteral("the Image Math Window did not appear"));
    return find();
}

void Tour::picture(const QString &name, const QString &caption)
{
    const QString file = name + QStringLiteral(".png");
    QWidget *shown = m_tool ? m_tool->parentWidget() : static_cast<QWidget *>(&m_window);
    const QPixmap whole = hand::photograph(&m_window);
    const QPixmap part = whole.copy(QRect(shown->mapTo(&m_window, QPoint(0, 0)), shown->size()));
    if (part.isNull() || !part.save(m_outFolder + QLatin1Char('/') + file))
        hand::giveUp(QStringLiteral("%1 could not be written").arg(file));
    m_summary << QStringLiteral("  %1  %2").arg(file, -40).arg(caption);
}

void Tour::selectPair(const QString &clickA, const QString &clickB)
{
    hand::chooseFromList(m_tool->findChild<QListWidget *>(QStringLiteral("m_pListBoxA")), clickA);
    hand::chooseFromList(m_tool->findChild<QListWidget *>(QStringLiteral("m_pListBoxB")), clickB);
}

QString Tour::firstClick(const std::function<bool(const CVXSDataset &)> &wanted, const QString &what) const
{
    const QList<CVXSDataset *> datasets = m_sequence.getDatasets();
    for (const CVXSDataset *dataset : datasets) {
        if (dataset->getImageList()->isPresent(EIMAGE_LUMINESCENT) && wanted(*dataset))
            return dataset->getClickNumber();
    }
    hand::giveUp(QStringLiteral("the sequence has no %1").arg(what));
}

void Tour::mainJob()
{
    picture(QStringLiteral("02-image-math-window"),
            QStringLiteral("as it opens: A - B * k of the first two clicks"));
    auto *sub = m_tool->parentWidget();
    sub->move(4, 4);
    sub->resize(900, 800);
    auto *k = m_tool->findChild<QLineEdit *>(QStringLiteral("m_pKLineEdit"));
    hand::type(k, QStringLiteral("0.5"));
    check(k->text() == QLatin1String("5.00e-1"),
          QStringLiteral("a typed k of 0.5 is shown as %1").arg(k->text()));
    picture(QStringLiteral("03-k-0.5"), QStringLiteral("A - B * k with k = 0.5: background is left"));
    hand::type(k, QStringLiteral("1.25"));
    picture(QStringLiteral("04-k-1.25"),
            QStringLiteral("A - B * k with the true k = 1.25: the reporter alone"));
    const MainJob job = checkMainJob(m_sequence);
    for (const QString &line : job.lines)
        m_summary << QStringLiteral("         ") + line;
    check(job.holds, QStringLiteral("A - B * k with the true k is the reporter and camera noise alone"));
}

void Tour::formulas()
{
    auto *operation = m_tool->findChild<QComboBox *>(QStringLiteral("m_pOperationCB"));
    const char *const names[] = {"plus", "minus", "times", "ratio", "thresholded-ratio"};
    for (int index = 0; index < operation->count(); ++index) {
        if (index == 4) {
            const auto isHigh = [](const CVXSDataset &dataset) {
                return hasPhotograph(dataset) &&
                       luminescentValue(dataset, clickinfo::KEY_FLUORESCENCE_LEVEL).toLower() ==
                           QLatin1String("high");
            };
            const QString b =
                firstClick(isHigh, QStringLiteral("click of fluorescence level High with photograph"));
            const QStringList clicks = m_sequence.getClickNumbers();
            selectPair(clicks.at(qMax(0, clicks.indexOf(b) - 1)), b);
            hand::type(m_tool->findChild<QLineEdit *>(QStringLiteral("m_pKLineEdit")), QStringLiteral("600"));
        }
        hand::chooseFromCombo(operation, index);
        picture(QStringLiteral("1%1-%2").arg(index).arg(QString::fromLatin1(names[index])),
                operation->currentText());
    }
}

void Tour::colorScales()
{
    const auto button = [this](const char *name) {
        return m_tool->findChild<QAbstractButton *>(QString::fromLatin1(name));
    };
    hand::chooseFromCombo(m_tool->findChild<QComboBox *>(QStringLiteral("m_pOperationCB")), 1);
    const QStringList clicks = m_sequence.getClickNumbers();
    selectPair(clicks.at(0), clicks.at(1));
    hand::type(m_tool->findChild<QLineEdit *>(QStringLiteral("m_pKLineEdit")), QStringLiteral("1.2"));
    picture(QStringLiteral("20-full"), QStringLiteral("Full limits for A and B and for the result"));
    hand::click(button("m_pAutoABRadioBtn"));
    hand::click(button("m_pAutoResultRadioBtn"));
    check(button("m_pAutoABRadioBtn")->isChecked() && button("m_pAutoResultRadioBtn")->isChecked(),
          QStringLiteral("Auto is chosen by a click"));
    picture(QStringLiteral("21-auto"), QStringLiteral("Auto limits"));
    hand::click(button("m_pMinChkBox"));
    check(button("m_pMinChkBox")->isChecked(), QStringLiteral("Min = 0 is chosen by a click"));
    picture(QStringLiteral("22-auto-min-0"), QStringLiteral("Auto limits, Min = 0"));
    hand::click(button("m_pMinChkBox"));
    hand::click(button("m_pFullABRadioBtn"));
    hand::click(button("m_pFullResultRadioBtn"));
}

void Tour::pairsThatCannotBeCombined()
{
    const QString a = m_sequence.getClickNumbers().at(0);
    const double fieldOfView = m_sequence.getDataset(a)->getFOVForImage(EIMAGE_LUMINESCENT);
    const auto hasOtherField = [fieldOfView](const CVXSDataset &dataset) {
        return dataset.getFOVForImage(EIMAGE_LUMINESCENT) != fieldOfView;
    };
    selectPair(a, firstClick(hasOtherField, QStringLiteral("click of another field of view")));
    picture(QStringLiteral("30-different-field-of-view"),
            QStringLiteral("a pair that cannot be combined, and why"));
    auto *display = m_tool->findChild<QAbstractButton *>(QStringLiteral("m_pDisplayBtn"));
    check(!display->isEnabled(), QStringLiteral("\"%1\" is disabled for it").arg(display->text()));
}
