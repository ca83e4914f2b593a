// SPDX-License-Identifier: MIT
#pragma once

#include "check/ResultCheck.h"

#include <QFrame>

class QLabel;
class WrappedText;

/// The strip that shows what came of checking a result: a mark, one sentence, and the facts behind it.
class VerdictStrip : public QFrame
{
    Q_OBJECT

public:
    explicit VerdictStrip(QWidget *parent = nullptr);

    void tell(const ResultCheck &check);

private:
    QLabel *m_mark;
    WrappedText *m_headline;
    WrappedText *m_lines;
};
