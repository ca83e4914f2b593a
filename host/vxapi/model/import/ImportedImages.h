// SPDX-License-Identifier: MIT
#pragma once

#include "host/vximage/CILImage.h"
#include "host/vxutils/ESTATUS.h"

#include <QString>

struct ImportFiles;

/// The images of one acquisition; empty where there is none.
struct ImportedImages
{
    CILImage luminescent;
    CILImage photograph;
    CILImage dark;
    CILImage flatField;
    CILImage excitation;
};

/// Reads the files that are named and sees whether they fit each other: dark image and excitation reference
/// have the luminescent image's size, the flat field its aspect ratio. `error` receives "file: reason".
ESTATUS readImages(const ImportFiles &files, ImportedImages *images, QString *error);
