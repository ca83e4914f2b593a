// SPDX-License-Identifier: MIT
#pragma once

#include "host/vximage/base/VXImageTypes.h"

#include <cstddef>
#include <cstdint>

namespace il {

inline bool isKnownType(VXSDataTypes type)
{
    return type >= VXS_UINT8 && type <= VXS_DOUBLE;
}

inline std::size_t bytesPerPixel(VXSDataTypes type)
{
    switch (type) {
    case VXS_UINT8:
    case VXS_MASK:
        return 1;
    case VXS_UINT16:
        return 2;
    case VXS_UINT32:
    case VXS_FLOAT:
        return 4;
    case VXS_DOUBLE:
        return 8;
    }
    return 0;
}

/// Whether a pixel is one byte.
inline bool isByte(VXSDataTypes type)
{
    return type == VXS_UINT8 || type == VXS_MASK;
}

/// Whether every value of that type is a float exactly, so that reading it as float changes nothing.
inline bool isSmallInteger(VXSDataTypes type)
{
    return isByte(type) || type == VXS_UINT16;
}

/// Calls f with a null pointer to the C++ type of the pixels.
template <typename F>
auto withPixelType(VXSDataTypes type, F &&f)
{
    switch (type) {
    case VXS_UINT8:
    case VXS_MASK:
        return f(static_cast<const std::uint8_t *>(nullptr));
    case VXS_UINT16:
        return f(static_cast<const std::uint16_t *>(nullptr));
    case VXS_UINT32:
        return f(static_cast<const std::uint32_t *>(nullptr));
    case VXS_DOUBLE:
        return f(static_cast<const double *>(nullptr));
    case VXS_FLOAT:
        break;
    }
    return f(static_cast<const float *>(nullptr));
}

} // namespace il
