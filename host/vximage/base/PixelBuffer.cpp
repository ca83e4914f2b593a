// SPDX-License-Identifier: MIT
#include "host/vximage/base/PixelBuffer.h"

#include <cstdlib>
#include <limits>
#include <mutex>
#include <new>
#include <vector>

#ifdef __linux__
#include <sys/mman.h>
#endif

namespace il {
namespace {

constexpr std::size_t CACHE_LINE = 64;
constexpr std::size_t HUGE_PAGE = std::size_t(2) << 20;
constexpr std::size_t POOLED_FROM_BYTES = std::size_t(64) << 10; // below this malloc is as good
constexpr std::size_t POOL_SLOTS = 4;
constexpr int PATIENCE = 12; // takings of other sizes after which a free buffer is given back to the system

std::size_t roundedUp(std::size_t bytes, std::size_t unit)
{
    if (bytes > std::numeric_limits<std::size_t>::max() - unit)
        throw std::bad_alloc();
    return (bytes + unit - 1) / unit * unit;
}

void *allocate(std::size_t bytes)
{
    const bool large = bytes >= 2 * HUGE_PAGE;
    const std::size_t alignment = large ? HUGE_PAGE : CACHE_LINE;
    void *data = std::aligned_alloc(alignment, roundedUp(bytes, alignment));
    if (!data)
        throw std::bad_alloc();
#ifdef MADV_HUGEPAGE
    if (large)
        madvise(data, bytes, MADV_HUGEPAGE); // fewer page faults and TLB misses; without it all works as well
#endif
    return data;
}

/// Free buffers, the one given back last at the end.
class Pool
{
public:
    void *take(std::size_t bytes)
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        void *found = nullptr;
        for (std::size_t i = m_free.size(); i-- > 0;) {
            if (!found && m_free[i].bytes == bytes) {
                found = m_free[i].data;
                m_free.erase(m_free.begin() + std::ptrdiff_t(i));
            } else if (m_free[i].bytes != bytes && ++m_free[i].passedOver > PATIENCE) {
                std::free(m_free[i].data);
                m_free.erase(m_free.begin() + std::ptrdiff_t(i));
            }
        }
        return found;
    }

    void giveBack(void *data, std::size_t bytes)
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        if (m_free.size() == POOL_SLOTS) {
            std::free(m_free.front().data);
            m_free.erase(m_free.begin());
        }
        m_free.push_back({data, bytes, 0});
    }

    void clear()
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        for (const Free &free : m_free)
            std::free(free.data);
        m_free.clear();
    }

private:
    struct Free
    {
        void *data;
        std::size_t bytes;
        int passedOver;
    };
    std::mutex m_mutex;
    std::vector<Free> m_free;
};

/// Never destroyed: images with static storage may outlive anything that is.
Pool &pool()
{
    static Pool *instance = new Pool;
    return *instance;
}

} // namespace

PixelBuffer::PixelBuffer(std::size_t bytes) : m_bytes(roundedUp(bytes ? bytes : 1, CACHE_LINE))
{
    if (m_bytes >= POOLED_FROM_BYTES)
        m_data = pool().take(m_bytes);
    if (m_data)
        return;
    try {
        m_data = allocate(m_bytes);
    } catch (const std::bad_alloc &) {
        pool().clear(); // what lies idle may be what is missing
        m_data = allocate(m_bytes);
    }
}

PixelBuffer::~PixelBuffer()
{
    if (!m_data)
        return;
    if (m_bytes >= POOLED_FROM_BYTES)
        pool().giveBack(m_data, m_bytes);
    else
        std::free(m_data);
}

} // namespace il
