// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxutils/vxutils_global.h"

#include <QString>

/// Status of a host operation. 0 is success; everything else is a failure. The numbers are part of the
/// interface (log lines and callers name them), so none is ever reused.
enum tag_estatus {
    ESTATUS_SUCCESS = 0,
    ESTATUS_FAILURE = 1,           ///< failed for a reason that the accompanying text tells
    ESTATUS_FILE_NOT_FOUND = 2,    ///< no such file or folder
    ESTATUS_FILE_NOT_READABLE = 3, ///< there, but cannot be read
    ESTATUS_FILE_NOT_WRITABLE = 4, ///< cannot be created or written
    ESTATUS_BAD_SYNTAX = 5,        ///< a text file breaks its syntax
    ESTATUS_KEY_NOT_FOUND = 6,     ///< a section has no such key
    ESTATUS_SECTION_NOT_FOUND = 7, ///< a record has no such section
    ESTATUS_BAD_VALUE = 8,         ///< a value is missing, not a number, or out of its range
    ESTATUS_BAD_IMAGE = 9,         ///< an image file is damaged or of a kind that is not read here
    ESTATUS_IMAGE_TOO_LARGE = 10,  ///< an image file declares more pixels than the limit allows
    ESTATUS_BAD_NAME = 11,         ///< a name from a file would leave its folder
    ESTATUS_NO_IMAGE = 12,         ///< the dataset holds no such image
    ESTATUS_NO_RANGE = 13,         ///< an image has no finite pixel to take a range from
    ESTATUS_NOT_SEQUENCE = 14,     ///< a folder is not a sequence
    ESTATUS_NOT_COMPLETE = 15,     ///< a dataset folder lacks a file that its sections call for
    ESTATUS_RESULT_FOLDER = 31,    ///< the result folder could not be prepared
    ESTATUS_TOOL_WINDOW = 34,      ///< a tool's window could not be created
    ESTATUS_IMAGING_ANGLES = 46,   ///< the user refused to combine datasets of different imaging angles
};
using ESTATUS = tag_estatus;

/// A sentence for the user that says what the status means.
VXUTILS_EXPORT QString statusText(ESTATUS status);
