// SPDX-License-Identifier: MIT
#pragma once

namespace il {

/// What a file is by its first bytes, whatever its name says. The formats are those that images of
/// cameras and microscopes come in.
enum class EFileFormat {
    Unknown, ///< also a file that cannot be read
    Tiff,
    Png,
    Jpeg,
    Jpeg2000,
    Gif,
    Bmp,
    WebP,
    Dicom,
    Fits,
    Hdf5,
    Pdf,
    Zip
};

/// Reads the first bytes of the file.
EFileFormat fileFormat(const char *path);
/// "a PNG picture"; for a format that has no name, "a file of another format".
const char *formatName(EFileFormat format);

} // namespace il
