// SPDX-License-Identifier: MIT
#include "host/vximage/TiffHandle.h"

#include <cstdio>

namespace il {

TiffHandle::Options TiffHandle::options()
{
    Options options(TIFFOpenOptionsAlloc(), TIFFOpenOptionsFree);
    if (options) {
        TIFFOpenOptionsSetErrorHandlerExtR(options.get(), &TiffHandle::onError, this);
        TIFFOpenOptionsSetWarningHandlerExtR(options.get(), &TiffHandle::onWarning, this);
    }
    return options;
}

bool TiffHandle::open(const char *path, const char *mode)
{
    close();
    const Options with = options();
    m_tiff = with ? TIFFOpenExt(path, mode, with.get()) : nullptr;
    return m_tiff != nullptr;
}

bool TiffHandle::openDescriptor(int descriptor, const char *path, const char *mode)
{
    close();
    const Options with = options();
    m_tiff = with ? TIFFFdOpenExt(descriptor, path, mode, with.get()) : nullptr;
    return m_tiff != nullptr;
}

void TiffHandle::close()
{
    if (m_tiff)
        TIFFClose(m_tiff);
    m_tiff = nullptr;
}

int TiffHandle::onError(TIFF *, void *user, const char *, const char *format, va_list arguments)
{
    auto *handle = static_cast<TiffHandle *>(user);
    if (handle->m_error.empty()) {
        char text[512];
        std::vsnprintf(text, sizeof text, format, arguments);
        handle->m_error = text;
    }
    return 1; // dealt with
}

int TiffHandle::onWarning(TIFF *, void *, const char *, const char *, va_list)
{
    return 1; // unknown tags and the like: nothing that the user could act on
}

} // namespace il
