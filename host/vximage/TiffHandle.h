// SPDX-License-Identifier: MIT
#pragma once

#include <cstdarg>
#include <memory>
#include <string>
#include <tiffio.h>

namespace il {

/// An open TIFF file whose errors come here, not to the console and not to another user of the library.
class TiffHandle
{
public:
    TiffHandle() = default;
    TiffHandle(const TiffHandle &) = delete;
    TiffHandle &operator=(const TiffHandle &) = delete;
    ~TiffHandle() { close(); }

    bool open(const char *path, const char *mode);
    /// Takes the descriptor over when it succeeds.
    bool openDescriptor(int descriptor, const char *path, const char *mode);
    void close();

    TIFF *get() const { return m_tiff; }
    /// What the library said first, or `otherwise`.
    std::string error(const char *otherwise) const { return m_error.empty() ? otherwise : m_error; }

private:
    static int onError(TIFF *tiff, void *user, const char *module, const char *format, va_list arguments);
    static int onWarning(TIFF *tiff, void *user, const char *module, const char *format, va_list arguments);
    using Options = std::unique_ptr<TIFFOpenOptions, void (*)(TIFFOpenOptions *)>;
    Options options();

    TIFF *m_tiff = nullptr;
    std::string m_error;
};

} // namespace il
