// SPDX-License-Identifier: MIT
#include "window/CVXSImageMathWnd.h"

void CVXSImageMathWnd::appendNoteEntry(QString &, const QString &, const QString &) {}

void CVXSImageMathWnd::removeNoteEntry(QString &, const QString &) {}

void CVXSImageMathWnd::replaceNoteEntry(QString &, const QString &, const QString &) {}

QString CVXSImageMathWnd::makeResultClickNumber(QString)
{
    return {};
}

QString CVXSImageMathWnd::clickNumberStem(const QString &)
{
    return {};
}

QString CVXSImageMathWnd::userInitials(const QString &)
{
    return {};
}

int CVXSImageMathWnd::letterSuffixValue(const QString &)
{
    return 0;
}

QString CVXSImageMathWnd::letterSuffixFromValue(int)
{
    return {};
}

ESTATUS CVXSImageMathWnd::prepareResultFolder()
{
    return ESTATUS_RESULT_FOLDER;
}

ESTATUS CVXSImageMathWnd::writeResultClickInfo(const QString &, const QString &)
{
    return ESTATUS_FAILURE;
}

ESTATUS CVXSImageMathWnd::writeAnalyzedClickInfo(const QString &, const QString &)
{
    return ESTATUS_FAILURE;
}

void CVXSImageMathWnd::onClickDisplayResultForMeasuring() {}
