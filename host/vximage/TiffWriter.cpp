// SPDX-License-Identifier: MIT
#include "host/vximage/TiffWriter.h"

#include "host/vximage/base/Messages.h"
#include "host/vximage/kernels/Conversion.h"
#include "host/vximage/TiffHandle.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <new>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace il {
namespace {

constexpr std::size_t STRIP_BYTES = std::size_t(256) << 10;
// Classic TIFF counts in 32 bits; the directory and the strip table need some room as well.
constexpr std::uint64_t CLASSIC_LIMIT = (std::uint64_t(1) << 32) - (std::uint64_t(64) << 20);

/// A file under a name of its own in the target's folder, removed unless it was renamed to the target. The
/// name is not hidden: what a killed program leaves behind is seen by those who clear the folder.
class FileBeside
{
public:
    explicit FileBeside(const char *target) : m_target(resolved(target))
    {
        const std::size_t slash = m_target.rfind('/');
        m_folder = slash == std::string::npos ? "." : m_target.substr(0, slash + 1);
        const std::string stem = m_target + ".part-" + std::to_string(getpid()) + "-";
        for (unsigned attempt = 0; attempt < 1000 && m_descriptor < 0; ++attempt) {
            m_path = stem + std::to_string(attempt);
            m_descriptor = ::open(m_path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
            if (m_descriptor < 0 && errno != EEXIST)
                break;
        }
        m_exists = m_descriptor >= 0;
        struct stat old;
        if (m_exists && stat(m_target.c_str(), &old) == 0 && fchmod(m_descriptor, old.st_mode & 0777) != 0)
            errno = 0; // the old rights cannot be given: those of a new file do
    }
    ~FileBeside()
    {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
        if (m_exists)
            unlink(m_path.c_str());
    }
    FileBeside(const FileBeside &) = delete;
    FileBeside &operator=(const FileBeside &) = delete;

    bool isOpen() const { return m_descriptor >= 0; }
    const std::string &path() const { return m_path; }
    int duplicate() const { return fcntl(m_descriptor, F_DUPFD_CLOEXEC, 0); }

    /// False with errno set.
    bool commit()
    {
        struct stat target;
        if (stat(m_target.c_str(), &target) == 0 && S_ISDIR(target.st_mode)) {
            errno = EISDIR;
            return false;
        }
        if (fsync(m_descriptor) != 0 || rename(m_path.c_str(), m_target.c_str()) != 0)
            return false;
        m_exists = false;
        // The new name survives a power cut only when the folder is on the disk too; not every file system
        // can do that.
        const int folder = ::open(m_folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        if (folder >= 0) {
            (void)fsync(folder);
            ::close(folder);
        }
        return true;
    }

private:
    /// Writing to a link writes to the file that it points at.
    static std::string resolved(const char *target)
    {
        struct stat info;
        if (lstat(target, &info) == 0 && S_ISLNK(info.st_mode)) {
            char *real = realpath(target, nullptr);
            const std::string path = real ? real : target;
            std::free(real);
            return path;
        }
        return target;
    }

    std::string m_target;
    std::string m_folder;
    std::string m_path;
    int m_descriptor = -1;
    bool m_exists = false;
};

void setTags(TIFF *tiff, const PixelStore &pixels, VXSDataTypes type, std::uint32_t rowsPerStrip,
             const std::string &description)
{
    TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, pixels.width());
    TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, pixels.height());
    TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, int(8 * bytesPerPixel(type)));
    TIFFSetField(tiff, TIFFTAG_SAMPLEFORMAT, type == VXS_FLOAT ? SAMPLEFORMAT_IEEEFP : SAMPLEFORMAT_UINT);
    TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, 1);
    TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISBLACK);
    TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    TIFFSetField(tiff, TIFFTAG_COMPRESSION, COMPRESSION_NONE);
    TIFFSetField(tiff, TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT);
    TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, rowsPerStrip);
    if (!description.empty())
        TIFFSetField(tiff, TIFFTAG_IMAGEDESCRIPTION, description.c_str());
}

bool writeStrips(TIFF *tiff, PixelStore &pixels, VXSDataTypes type, std::uint32_t rowsPerStrip)
{
    const std::size_t width = pixels.width();
    const auto *from = static_cast<const char *>(pixels.data());
    const std::size_t pixelBytes = bytesPerPixel(pixels.type());
    std::vector<float> asFloat(pixels.type() == VXS_DOUBLE ? width * rowsPerStrip : 0);
    std::uint32_t strip = 0;
    for (std::size_t row = 0; row < pixels.height(); row += rowsPerStrip, ++strip) {
        const std::size_t count = width * std::min<std::size_t>(rowsPerStrip, pixels.height() - row);
        const void *data = from + row * width * pixelBytes;
        if (pixels.type() == VXS_DOUBLE) {
            toFloat(data, VXS_DOUBLE, asFloat.data(), count);
            data = asFloat.data();
        }
        const auto bytes = tmsize_t(count * bytesPerPixel(type));
        // In the machine's own byte order and uncompressed the library only reads from the pointer.
        if (TIFFWriteEncodedStrip(tiff, strip, const_cast<void *>(data), bytes) != bytes)
            return false;
    }
    return true;
}

} // namespace

EILSTATUS writeTiff(const char *path, PixelStore &pixels, const std::string &description)
{
    const std::string name = path ? path : "";
    if (name.empty())
        return fileError(EIL_FILE_NOT_WRITABLE, name, "no file name");
    if (pixels.count() == 0)
        return fileError(EIL_BAD_SIZE, name, "the image is empty");
    try {
        FileBeside file(path);
        if (!file.isOpen())
            return fileError(EIL_FILE_NOT_WRITABLE, name, std::strerror(errno));
        const VXSDataTypes type = pixels.type() == VXS_DOUBLE ? VXS_FLOAT : pixels.type();
        const std::size_t rowBytes = pixels.width() * bytesPerPixel(type);
        const auto rowsPerStrip =
            std::uint32_t(std::clamp<std::size_t>(STRIP_BYTES / rowBytes, 1, pixels.height()));
        const bool big = rowBytes * pixels.height() + description.size() > CLASSIC_LIMIT;
        TiffHandle tiff;
        const auto because = [] {
            return errno ? std::string(" (") + std::strerror(errno) + ")" : std::string();
        };
        errno = 0;
        const int descriptor = file.duplicate();
        if (descriptor < 0 || !tiff.openDescriptor(descriptor, file.path().c_str(), big ? "w8" : "w")) {
            const std::string system = because();
            if (descriptor >= 0)
                ::close(descriptor);
            return fileError(EIL_FILE_NOT_WRITABLE, name, tiff.error("it cannot be created") + system);
        }
        setTags(tiff.get(), pixels, type, rowsPerStrip, description);
        errno = 0;
        if (!writeStrips(tiff.get(), pixels, type, rowsPerStrip) || !TIFFWriteDirectory(tiff.get())) {
            const std::string system = because();
            return fileError(EIL_FILE_NOT_WRITABLE, name, tiff.error("it cannot be written") + system);
        }
        tiff.close();
        if (!file.commit())
            return fileError(EIL_FILE_NOT_WRITABLE, name, std::strerror(errno));
        return EIL_SUCCESS;
    } catch (const std::bad_alloc &) {
        return fileError(EIL_NO_MEMORY, name, "there is not enough memory to write it");
    }
}

} // namespace il
