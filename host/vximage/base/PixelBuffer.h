// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <utility>

namespace il {

/// Memory for the pixels of one image, aligned to a cache line, contents undefined at first. Large buffers
/// come from a small pool: pages that are new to the process cost more than the arithmetic done on them.
class PixelBuffer
{
public:
    PixelBuffer() = default;
    /// Throws std::bad_alloc.
    explicit PixelBuffer(std::size_t bytes);
    PixelBuffer(PixelBuffer &&other) noexcept
        : m_data(std::exchange(other.m_data, nullptr)), m_bytes(std::exchange(other.m_bytes, 0))
    {
    }
    PixelBuffer &operator=(PixelBuffer &&other) noexcept
    {
        std::swap(m_data, other.m_data);
        std::swap(m_bytes, other.m_bytes);
        return *this;
    }
    ~PixelBuffer();

    void *data() const { return m_data; }
    explicit operator bool() const { return m_data != nullptr; }

private:
    void *m_data = nullptr;
    std::size_t m_bytes = 0;
};

} // namespace il
