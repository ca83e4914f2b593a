// SPDX-License-Identifier: MIT
#include "host/vximage/PixelStore.h"

#include "host/vximage/base/Parallel.h"
#include "host/vximage/CILImage.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <new>

namespace il {
namespace {

constexpr std::size_t AUTO_RANGES_KEPT = 4;
constexpr std::size_t RESAMPLED_KEPT = 3;
constexpr std::size_t GRAIN = std::size_t(64) << 10;

std::uint64_t newId()
{
    static std::atomic<std::uint64_t> last{0};
    return ++last;
}

std::size_t bytesFor(VXSDataTypes type, std::uint32_t width, std::uint32_t height)
{
    std::size_t bytes = 0;
    if (__builtin_mul_overflow(std::size_t(width) * height, bytesPerPixel(type), &bytes) || bytes >> 62)
        throw std::bad_alloc();
    return bytes;
}

template <typename T>
void keepLast(std::vector<T> &list, T item, std::size_t most)
{
    if (list.size() == most)
        list.erase(list.begin());
    list.push_back(std::move(item));
}

} // namespace

PixelStore::PixelStore(VXSDataTypes type, std::uint32_t width, std::uint32_t height)
    : m_type(type), m_width(width), m_height(height), m_id(newId())
{
}

StorePtr PixelStore::allocate(VXSDataTypes type, std::uint32_t width, std::uint32_t height)
{
    StorePtr store(new PixelStore(type, width, height));
    if (store->count() > 0)
        store->m_buffer = PixelBuffer(bytesFor(type, width, height));
    return store;
}

StorePtr PixelStore::zeros(VXSDataTypes type, std::uint32_t width, std::uint32_t height)
{
    StorePtr store = allocate(type, width, height);
    if (store->count() > 0)
        store->m_state = State::Zeros;
    return store;
}

StorePtr PixelStore::deferred(VXSDataTypes type, std::uint32_t width, std::uint32_t height,
                              Expression expression)
{
    StorePtr store(new PixelStore(type, width, height));
    if (store->count() == 0)
        return store;
    store->m_expression = std::move(expression);
    store->m_state = State::Pending;
    return store;
}

StorePtr PixelStore::empty(VXSDataTypes type)
{
    return StorePtr(new PixelStore(type, 0, 0));
}

StorePtr PixelStore::copyOf(const StorePtr &store)
{
    const void *from = store->data();
    StorePtr copy = allocate(store->type(), store->width(), store->height());
    void *to = copy->m_buffer.data();
    parallelFor(store->count() * bytesPerPixel(store->type()), GRAIN, 2,
                [&](std::size_t begin, std::size_t end) {
                    std::memcpy(static_cast<char *>(to) + begin, static_cast<const char *>(from) + begin,
                                end - begin);
                });
    return copy;
}

void PixelStore::expressionChanged()
{
    m_id = newId();
    m_statistics.reset();
    m_otsu.reset();
    m_autoRanges.clear();
    m_resampled.clear();
}

void *PixelStore::evaluated(bool withStatistics)
{
    if (m_state == State::Zeros) {
        char *to = static_cast<char *>(m_buffer.data());
        parallelFor(count() * bytesPerPixel(m_type), GRAIN, 1,
                    [&](std::size_t begin, std::size_t end) { std::memset(to + begin, 0, end - begin); });
        m_state = State::Ready;
    } else if (m_state == State::Pending) {
        evaluateExpression(withStatistics);
    }
    return m_buffer.data();
}

/// A value that only this expression still knows gives its memory to the result, which overwrites it pixel by
/// pixel.
bool PixelStore::takeBufferOfOperand()
{
    const auto gives = [](const Source &source) {
        return source.store && !source.isThresholded && source.store.use_count() == 1 &&
               source.store->m_type == VXS_FLOAT && source.store->m_state == State::Ready &&
               !source.store->m_exposed;
    };
    if (gives(m_expression.base)) {
        m_buffer = std::move(m_expression.base.store->m_buffer);
        return true;
    }
    for (Step &step : m_expression.steps) {
        if (gives(step.operand)) {
            m_buffer = std::move(step.operand.store->m_buffer);
            return true;
        }
    }
    return false;
}

void PixelStore::evaluateExpression(bool withStatistics)
{
    if (m_type == VXS_MASK) {
        m_buffer = PixelBuffer(bytesFor(m_type, m_width, m_height));
        evaluateMask(m_expression.base, count(), static_cast<std::uint8_t *>(m_buffer.data()));
    } else {
        Statistics found;
        const EvaluationPlan plan(m_expression);
        if (!takeBufferOfOperand())
            m_buffer = PixelBuffer(bytesFor(m_type, m_width, m_height));
        plan.run(count(), static_cast<float *>(m_buffer.data()), withStatistics ? &found : nullptr);
        if (withStatistics)
            m_statistics = found;
    }
    m_expression = Expression();
    m_state = State::Ready;
}

Statistics PixelStore::statistics()
{
    if (m_statistics && !m_exposed)
        return *m_statistics;
    if (count() == 0 || m_state == State::Zeros)
        return {0.0f, 0.0f, count() != 0};
    if (m_state == State::Pending) {
        // Integers that are about to be read as floats have the same extremes, which may be known already.
        const Source &base = m_expression.base;
        if (m_expression.steps.empty() && !base.isThresholded && isSmallInteger(base.store->type())) {
            m_statistics = base.store->statistics();
            return *m_statistics;
        }
        evaluated(true);
    }
    Statistics found = m_statistics ? *m_statistics : statisticsOf(m_buffer.data(), m_type, count());
    if (!m_exposed)
        m_statistics = found;
    return found;
}

void PixelStore::setExposed()
{
    expressionChanged();
    m_exposed = true;
}

void PixelStore::becomeEmpty()
{
    m_width = 0;
    m_height = 0;
    m_buffer = PixelBuffer();
    m_expression = Expression();
    m_state = State::Ready;
    expressionChanged();
}

std::optional<PixelStore::AutoRange> PixelStore::rememberedAutoRange(double ceiling, int count) const
{
    for (const AutoRange &range : m_autoRanges) {
        if (range.ceiling == ceiling && range.count == count)
            return range;
    }
    return std::nullopt;
}

void PixelStore::rememberAutoRange(const AutoRange &range)
{
    if (!m_exposed)
        keepLast(m_autoRanges, range, AUTO_RANGES_KEPT);
}

StorePtr PixelStore::rememberedResampled(const Resampling &wanted) const
{
    for (const auto &[how, store] : m_resampled) {
        if (how == wanted)
            return store;
    }
    return nullptr;
}

void PixelStore::rememberResampled(const Resampling &how, const StorePtr &store)
{
    if (!m_exposed)
        keepLast(m_resampled, {how, store}, RESAMPLED_KEPT);
}

void PixelStore::rememberOtsu(float percentage)
{
    if (!m_exposed)
        m_otsu = percentage;
}

Source PixelStore::sourceOf(const StorePtr &store)
{
    if (store->isPending() && store->m_expression.steps.empty())
        return store->m_expression.base;
    store->data();
    return {store, false, 0.0f};
}

StorePtr PixelStore::readable(const StorePtr &store)
{
    if (store->isPending() && store->m_expression.steps.empty() && !store->m_expression.base.isThresholded &&
        isSmallInteger(store->m_expression.base.store->type()))
        return store->m_expression.base.store;
    store->data();
    return store;
}

StorePtr &PixelStore::of(CILImage &image)
{
    return image.m_pixels;
}

const StorePtr &PixelStore::of(const CILImage &image)
{
    return image.m_pixels;
}

} // namespace il
