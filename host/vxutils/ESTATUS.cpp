// SPDX-License-Identifier: MIT
#include "host/vxutils/ESTATUS.h"

#include <QCoreApplication>

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(ESTATUS)
};

struct StatusSentence
{
    ESTATUS status;
    const char *sentence;
};

const StatusSentence SENTENCES[] = {
    {ESTATUS_SUCCESS, QT_TRANSLATE_NOOP("ESTATUS", "The operation succeeded.")},
    {ESTATUS_FAILURE, QT_TRANSLATE_NOOP("ESTATUS", "The operation failed.")},
    {ESTATUS_FILE_NOT_FOUND, QT_TRANSLATE_NOOP("ESTATUS", "The file or folder does not exist.")},
    {ESTATUS_FILE_NOT_READABLE, QT_TRANSLATE_NOOP("ESTATUS", "The file cannot be read.")},
    {ESTATUS_FILE_NOT_WRITABLE, QT_TRANSLATE_NOOP("ESTATUS", "The file cannot be written.")},
    {ESTATUS_BAD_SYNTAX, QT_TRANSLATE_NOOP("ESTATUS", "The text file is damaged.")},
    {ESTATUS_KEY_NOT_FOUND, QT_TRANSLATE_NOOP("ESTATUS", "A key is missing from the record.")},
    {ESTATUS_SECTION_NOT_FOUND, QT_TRANSLATE_NOOP("ESTATUS", "A section is missing from the record.")},
    {ESTATUS_BAD_VALUE,
     QT_TRANSLATE_NOOP("ESTATUS", "A value is missing, is not a number, or is out of its range.")},
    {ESTATUS_BAD_IMAGE,
     QT_TRANSLATE_NOOP("ESTATUS", "The image file is damaged or of a kind that is not read here.")},
    {ESTATUS_IMAGE_TOO_LARGE,
     QT_TRANSLATE_NOOP("ESTATUS", "The image has more pixels than the limit allows.")},
    {ESTATUS_BAD_NAME, QT_TRANSLATE_NOOP("ESTATUS", "The name cannot be used as a file name.")},
    {ESTATUS_NO_IMAGE, QT_TRANSLATE_NOOP("ESTATUS", "The dataset holds no such image.")},
    {ESTATUS_NO_RANGE, QT_TRANSLATE_NOOP("ESTATUS", "The image has no finite pixel.")},
    {ESTATUS_NOT_SEQUENCE, QT_TRANSLATE_NOOP("ESTATUS", "The folder is not a sequence.")},
    {ESTATUS_NOT_COMPLETE, QT_TRANSLATE_NOOP("ESTATUS", "The dataset folder is not complete.")},
    {ESTATUS_RESULT_FOLDER, QT_TRANSLATE_NOOP("ESTATUS", "The folder for the result could not be prepared.")},
    {ESTATUS_TOOL_WINDOW, QT_TRANSLATE_NOOP("ESTATUS", "The tool's window could not be created.")},
    {ESTATUS_IMAGING_ANGLES,
     QT_TRANSLATE_NOOP("ESTATUS", "Datasets of different imaging angles were not combined.")},
};

} // namespace

QString statusText(ESTATUS status)
{
    for (const StatusSentence &entry : SENTENCES) {
        if (entry.status == status)
            return Text::tr(entry.sentence);
    }
    return Text::tr("The operation failed with status %1.").arg(int(status));
}
