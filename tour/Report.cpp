// SPDX-License-Identifier: MIT
#include "tour/Report.h"

#include "host/vxutils/writeWhole.h"
#include "tour/Hand.h"

#include <QSaveFile>

#include <cmath>
#include <cstdio>

void Report::heading(const QString &text)
{
    if (!m_lines.isEmpty())
        tell(QString());
    tell(text);
}

void Report::tell(const QString &line)
{
    m_lines << line;
    std::puts(line.toUtf8().constData());
    std::fflush(stdout); // the user sees how far it is
}

void Report::note(const QString &text)
{
    tell(QStringLiteral("         ") + text);
}

void Report::picture(const QString &name, const QPixmap &pixels, const QString &caption)
{
    const QString file = name + QStringLiteral(".png");
    if (pixels.isNull() || !pixels.save(m_outFolder + QLatin1Char('/') + file))
        hand::giveUp(QStringLiteral("%1 could not be written").arg(file));
    tell(QStringLiteral("  %1  %2").arg(file, -34).arg(caption));
}

void Report::check(bool holds, const QString &what)
{
    tell(QStringLiteral("  %1  %2")
             .arg(holds ? QStringLiteral("holds:") : QStringLiteral("DOES NOT HOLD:"), what));
    m_holds = m_holds && holds;
}

void Report::checkNear(double measured, double truth, double bound, const QString &what)
{
    const auto text = [](double value) { return QString::number(value, 'g', 7); };
    check(std::fabs(measured - truth) <= bound, // false for a NaN
          QStringLiteral("%1: measured %2, true %3, difference %4, bound %5")
              .arg(what, text(measured), text(truth), text(measured - truth), text(bound)));
}

void Report::write(const QString &file)
{
    tell(QString());
    tell(m_holds ? QStringLiteral("Everything that was checked holds.")
                 : QStringLiteral("SOMETHING DOES NOT HOLD, see above."));
    QSaveFile target(m_outFolder + QLatin1Char('/') + file);
    const QByteArray text = m_lines.join(QLatin1Char('\n')).trimmed().toUtf8() + '\n';
    if (!target.open(QIODevice::WriteOnly) || !writeWhole(target, text) || !target.commit())
        hand::giveUp(QStringLiteral("%1: %2").arg(target.fileName(), target.errorString()));
}
