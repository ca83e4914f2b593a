// SPDX-License-Identifier: MIT
#include "host/vximage/base/Messages.h"
#include "host/vximage/CILImage.h"
#include "host/vximage/PixelStore.h"

#include <cmath>
#include <cstring>
#include <new>

using il::Op;
using il::PixelStore;
using il::Source;
using il::Step;
using il::StorePtr;

namespace {

/// Whether an expression that waits may keep this store: not when someone may write into it meanwhile.
bool mayWait(const Source &source)
{
    return !source.store || !source.store->isExposed();
}

/// The value of `store` with one more step, as a new store that waits.
StorePtr extended(const StorePtr &store, Step step)
{
    il::Expression expression;
    if (store->isPending() && store->type() == VXS_FLOAT && store->expression().steps.size() < il::MAX_STEPS)
        expression = store->expression();
    else
        expression.base = PixelStore::sourceOf(store);
    const bool waits = mayWait(expression.base) && mayWait(step.operand);
    expression.steps.push_back(std::move(step));
    StorePtr result = PixelStore::deferred(VXS_FLOAT, store->width(), store->height(), std::move(expression));
    if (!waits)
        result->data();
    return result;
}

/// Evaluates into the pixels that someone outside has a pointer to.
void applyToExposed(const StorePtr &store, Step step)
{
    il::Expression expression;
    expression.base.store = store;
    expression.steps.push_back(std::move(step));
    const il::EvaluationPlan plan(expression);
    plan.run(store->count(), static_cast<float *>(store->data()), nullptr);
}

/// One more step on the pixels of an image.
void apply(StorePtr &pixels, Step step)
{
    if (pixels->isExposed() && pixels->type() == VXS_FLOAT)
        return applyToExposed(pixels, std::move(step));
    if (pixels->isPending() && pixels->type() == VXS_FLOAT) {
        if (pixels.use_count() == 1 && pixels->expression().steps.size() < il::MAX_STEPS) {
            const bool waits = mayWait(step.operand);
            pixels->expression().steps.push_back(std::move(step));
            pixels->expressionChanged();
            if (!waits)
                pixels->data();
            return;
        }
        if (!pixels->expression().steps.empty())
            pixels->data(); // once for all who share it
    }
    pixels = extended(pixels, std::move(step));
}

bool sameSize(const CILImage &a, const CILImage &b)
{
    if (a.getWidth() == b.getWidth() && a.getHeight() == b.getHeight())
        return true;
    const auto size = [](const CILImage &i) {
        return std::to_string(i.getWidth()) + " x " + std::to_string(i.getHeight());
    };
    il::message(il::MESSAGE_ERROR, "Images of unequal size (" + size(a) + " and " + size(b) +
                                       ") cannot be combined; the result is empty.");
    return false;
}

/// Runs f on the pixels of an image that is not empty; without memory the image becomes empty.
template <typename F>
void guarded(StorePtr &pixels, F &&f)
{
    try {
        f();
    } catch (const std::bad_alloc &) {
        pixels = PixelStore::empty(VXS_FLOAT);
        il::message(il::MESSAGE_ERROR, "There is not enough memory to combine images; the result is empty.");
    }
}

void combine(CILImage &target, Op op, const CILImage &other)
{
    StorePtr &pixels = PixelStore::of(target);
    if (!sameSize(target, other)) {
        pixels = PixelStore::empty(VXS_FLOAT);
        return;
    }
    if (target.isEmpty())
        return;
    guarded(pixels, [&] {
        // Looked up first: with the image itself as operand this evaluates what waits in it.
        Source operand = PixelStore::sourceOf(PixelStore::of(other));
        apply(pixels, Step{op, 0.0, std::move(operand)});
    });
}

void combine(CILImage &target, Op single, Op precise, double number)
{
    if (target.isEmpty())
        return;
    StorePtr &pixels = PixelStore::of(target);
    guarded(pixels, [&] {
        const bool isFloat = double(float(number)) == number || std::isnan(number);
        apply(pixels, Step{isFloat ? single : precise, number, Source()});
    });
}

} // namespace

CILImage &CILImage::operator+=(const CILImage &other)
{
    combine(*this, Op::Add, other);
    return *this;
}

CILImage &CILImage::operator-=(const CILImage &other)
{
    combine(*this, Op::Subtract, other);
    return *this;
}

CILImage &CILImage::operator*=(const CILImage &other)
{
    combine(*this, Op::Multiply, other);
    return *this;
}

CILImage &CILImage::operator/=(const CILImage &other)
{
    combine(*this, Op::Divide, other);
    return *this;
}

CILImage &CILImage::operator*=(double factor)
{
    combine(*this, Op::Scale, Op::ScaleDouble, factor);
    return *this;
}

CILImage &CILImage::operator-=(double value)
{
    combine(*this, Op::SubtractValue, Op::SubtractValueDouble, value);
    return *this;
}

CILImage CILImage::operator-(const CILImage &other) const
{
    CILImage result(*this);
    const StorePtr &waiting = other.m_pixels;
    const bool rightWaits = waiting && waiting->isPending() && waiting->type() == VXS_FLOAT &&
                            !waiting->expression().steps.empty() && waiting != m_pixels;
    if (!rightWaits || isEmpty() || getWidth() != other.getWidth() || getHeight() != other.getHeight()) {
        result -= other;
        return result;
    }
    // What waits on the right goes on as this minus it, still in one pass.
    guarded(result.m_pixels, [&] {
        Source left = PixelStore::sourceOf(m_pixels);
        result.m_pixels = extended(waiting, {Op::SubtractFrom, 0.0, std::move(left)});
    });
    return result;
}

CILImage CILImage::operator*(const CILImage &other) const
{
    CILImage result(*this);
    result *= other;
    return result;
}
