// SPDX-License-Identifier: MIT
#pragma once

/// Pixel types.
enum VXSDataTypes {
    VXS_UINT8 = 0,  ///< 8-bit unsigned integer
    VXS_MASK = 1,   ///< binary mask, one byte a pixel, 0 or 1
    VXS_UINT16 = 2, ///< 16-bit unsigned integer
    VXS_UINT32 = 3, ///< 32-bit unsigned integer
    VXS_FLOAT = 4,  ///< 32-bit float: what every formula computes in
    VXS_DOUBLE = 5, ///< 64-bit float
};

/// Kinds of image that a dataset holds.
enum tag_eimagetype {
    EIMAGE_PHOTOGRAPH = 0,
    EIMAGE_LUMINESCENT = 1, ///< luminescence or fluorescence, as the camera counted it
    EIMAGE_XRAY = 2,
    EIMAGE_FLATFIELD = 3,  ///< flat-field reference of the luminescent image, 1.0 at the centre
    EIMAGE_BACKGROUND = 4, ///< dark background of the luminescent image, in counts
    EIMAGE_EXCITATION = 5, ///< excitation reference of a transillumination image, in counts
};

/// Status of an image operation; 0 is success. CILImage::lastError() has the reason of those that concern a
/// file.
enum EILSTATUS {
    EIL_SUCCESS = 0,
    EIL_FAILURE = 1,
    EIL_BAD_SIZE = 2, ///< a width or height of 0, or sizes that do not fit
    EIL_BAD_TYPE = 3, ///< the operation does not know that pixel type or mode
    EIL_NO_MEMORY = 4,
    EIL_FILE_NOT_FOUND = 5,
    EIL_FILE_NOT_READABLE = 6,
    EIL_FILE_DAMAGED = 7,
    EIL_FILE_NOT_GREY = 8,
    EIL_FILE_TOO_LARGE = 9,
    EIL_FILE_NOT_WRITABLE = 10,
};

/// How downSample() and upSample() find the value of new pixel i on an axis of `old` pixels that gets `new`
/// ones. Each axis goes its own way: one may grow while the other shrinks. The codes are stored nowhere, but
/// tools pass them as numbers; every other code is refused.
enum IL_RESAMPLEMODES {
    /// Area average: the mean of the old pixels from i * old / new to (i + 1) * old / new, each weighed by
    /// how much of it lies between. An axis that grows goes like IL_RESAMPLE_NEAREST_MASK.
    IL_RESAMPLE_AREA = 1,
    /// Software binning: of the old pixels i * f to i * f + f - 1, f = old / new truncated, what remains at
    /// the right and bottom edge dropped. It adds up values of an image that says CILImage::valuesAddUp(), as
    /// the camera does, and takes the mean of all others. An axis that grows goes like
    /// IL_RESAMPLE_NEAREST_MASK.
    IL_RESAMPLE_BINNING = 3,
    /// Nearest, aligned to pixel centres: old pixel (i + 1/2) * old / new truncated. For masks, which have
    /// nothing between 0 and 1.
    IL_RESAMPLE_NEAREST_MASK = 4,
};

/// Colour tables. The codes are those of the stored colour-table names.
enum VXS_COLORTABLE_TYPES {
    VXS_CT_GRAYS = 0,
    VXS_CT_RAINBOW = 1,
    VXS_CT_YELLOWHOT = 2,
    VXS_CT_BLUEHOT = 3,
    VXS_CT_BLUEREDGREEN = 4,
    VXS_CT_PLANETEARTH = 5,
    VXS_CT_TERRAIN = 6,
    VXS_CT_RAINBOW2 = 7,
    VXS_CT_RED = 8,
    VXS_CT_GREEN = 9,
    VXS_CT_BLUE = 10,
    VXS_CT_COUNT = 11
};
