// SPDX-License-Identifier: MIT
#include "app/provenance/VerdictStrip.h"

#include "app/provenance/WrappedText.h"

#include <QGridLayout>
#include <QLabel>

namespace {

/// How a verdict looks. The mark tells it without the colours, too.
struct Look
{
    QChar mark;
    const char *background;
    const char *border;
    const char *text;
};

Look lookOf(ResultCheck::Verdict verdict)
{
    switch (verdict) {
    case ResultCheck::Verdict::Same:
        return {QChar(0x2713), "#e3f3e1", "#4d9a47", "#123a0f"};
    case ResultCheck::Verdict::Different:
    case ResultCheck::Verdict::DifferentAsChanged:
    case ResultCheck::Verdict::Failed:
        return {QChar(0x2717), "#fbe3e0", "#c0392b", "#4a0f08"};
    default:
        return {QLatin1Char('!'), "#fdf0d5", "#d9a441", "#3a2a05"};
    }
}

WrappedText *newText(QWidget *parent, const char *objectName)
{
    auto *text = new WrappedText(QString(), parent);
    text->setObjectName(QString::fromLatin1(objectName));
    return text;
}

} // namespace

VerdictStrip::VerdictStrip(QWidget *parent)
    : QFrame(parent),
      m_mark(new QLabel(this)),
      m_headline(newText(this, "outcomeHeadline")),
      m_lines(newText(this, "outcomeLines"))
{
    setObjectName(QStringLiteral("outcome"));
    setAccessibleName(tr("Outcome of the check"));
    QFont bold = font();
    bold.setBold(true);
    m_headline->setFont(bold);
    bold.setPointSizeF(bold.pointSizeF() * 1.5);
    m_mark->setFont(bold);
    m_mark->setObjectName(QStringLiteral("outcomeMark"));

    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(10, 8, 10, 8);
    grid->setHorizontalSpacing(8);
    grid->setVerticalSpacing(4);
    grid->addWidget(m_mark, 0, 0, Qt::AlignTop);
    grid->addWidget(m_headline, 0, 1);
    grid->addWidget(m_lines, 1, 1);
    grid->setColumnStretch(1, 1);
    hide();
}

void VerdictStrip::tell(const ResultCheck &check)
{
    const Look look = lookOf(check.verdict);
    m_mark->setText(look.mark);
    m_headline->setText(check.headline);
    m_lines->setText(check.lines.join(QLatin1Char('\n')));
    m_lines->setVisible(!check.lines.isEmpty());
    // Its own colours, legible on light and dark desktops alike.
    setStyleSheet(
        QStringLiteral("#outcome { background: %1; border: 1px solid %2; border-radius: 3px; }"
                       "#outcome QLabel, #outcome QTextEdit { color: %3; background: transparent; }")
            .arg(QLatin1String(look.background), QLatin1String(look.border), QLatin1String(look.text)));
    show();
}
