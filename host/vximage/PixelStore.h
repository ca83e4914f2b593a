// SPDX-License-Identifier: MIT
#pragma once

#include "host/vximage/base/PixelBuffer.h"
#include "host/vximage/base/PixelTypes.h"
#include "host/vximage/Expression.h"
#include "host/vximage/kernels/Statistics.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

class CILImage;

namespace il {

using StorePtr = std::shared_ptr<PixelStore>;

/// What pixels become when they are resampled.
struct Resampling
{
    std::uint32_t width, height;
    int mode; ///< of IL_RESAMPLEMODES
    VXSDataTypes type;
    bool addsUp; ///< sums instead of means; of IL_RESAMPLE_BINNING alone

    bool operator==(const Resampling &other) const
    {
        return width == other.width && height == other.height && mode == other.mode && type == other.type &&
               addsUp == other.addsUp;
    }
};

/// The pixels of one or several images: size, type, and the values, there already or as an expression that
/// gives them. They never change while more than one image shares the store. What was found out about them is
/// kept here and dies with them.
class PixelStore
{
public:
    struct AutoRange
    {
        double ceiling;
        int count;
        bool found;
        double low, high;
    };

    /// Pixels with undefined contents. These makers throw std::bad_alloc.
    static StorePtr allocate(VXSDataTypes type, std::uint32_t width, std::uint32_t height);
    /// Pixels that are 0; they are written when they are first read.
    static StorePtr zeros(VXSDataTypes type, std::uint32_t width, std::uint32_t height);
    /// Float pixels, or a mask when the expression is a threshold and `type` says so, evaluated when they are
    /// first read.
    static StorePtr deferred(VXSDataTypes type, std::uint32_t width, std::uint32_t height,
                             Expression expression);
    /// 0 x 0.
    static StorePtr empty(VXSDataTypes type);
    /// The same pixels in memory of their own.
    static StorePtr copyOf(const StorePtr &store);

    std::uint32_t width() const { return m_width; }
    std::uint32_t height() const { return m_height; }
    std::size_t count() const { return std::size_t(m_width) * m_height; }
    VXSDataTypes type() const { return m_type; }
    std::uint64_t id() const { return m_exposed || count() == 0 ? 0 : m_id; }

    bool isPending() const { return m_state == State::Pending; }
    Expression &expression() { return m_expression; }
    const Expression &expression() const { return m_expression; }
    /// To be called after a change of the expression.
    void expressionChanged();

    /// The pixels; evaluates what waits. Null when empty. Throws std::bad_alloc.
    void *data() { return evaluated(false); }
    /// Evaluates, and gathers statistics in the same pass.
    Statistics statistics();

    /// Someone outside may write through a pointer into the pixels: nothing is remembered from now on.
    void setExposed();
    bool isExposed() const { return m_exposed; }
    /// Gives up pixels that cannot be had.
    void becomeEmpty();

    std::optional<AutoRange> rememberedAutoRange(double ceiling, int count) const;
    void rememberAutoRange(const AutoRange &range);
    StorePtr rememberedResampled(const Resampling &wanted) const;
    void rememberResampled(const Resampling &how, const StorePtr &store);
    std::optional<float> rememberedOtsu() const { return m_otsu; }
    void rememberOtsu(float percentage);

    /// The store that an expression best reads `store` through: what a conversion or a threshold that waits
    /// reads itself, else the store, evaluated. Throws std::bad_alloc.
    static Source sourceOf(const StorePtr &store);
    /// The same for readers who want pixels: never a threshold.
    static StorePtr readable(const StorePtr &store);

    /// The store of an image; null for one that never had pixels.
    static StorePtr &of(CILImage &image);
    static const StorePtr &of(const CILImage &image);

private:
    enum class State { Ready, Zeros, Pending };

    PixelStore(VXSDataTypes type, std::uint32_t width, std::uint32_t height);
    void *evaluated(bool withStatistics);
    void evaluateExpression(bool withStatistics);
    bool takeBufferOfOperand();

    VXSDataTypes m_type;
    std::uint32_t m_width;
    std::uint32_t m_height;
    State m_state = State::Ready;
    bool m_exposed = false;
    std::uint64_t m_id;
    PixelBuffer m_buffer;
    Expression m_expression;

    std::optional<Statistics> m_statistics;
    std::optional<float> m_otsu;
    std::vector<AutoRange> m_autoRanges;
    std::vector<std::pair<Resampling, StorePtr>> m_resampled;
};

} // namespace il
