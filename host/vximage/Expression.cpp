// SPDX-License-Identifier: MIT
#include "host/vximage/Expression.h"

#include "host/vximage/base/Parallel.h"
#include "host/vximage/kernels/BlockKernels.h"
#include "host/vximage/kernels/Conversion.h"
#include "host/vximage/PixelStore.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <mutex>

namespace il {
namespace {

// Block, operand and intermediate value together stay in the first-level cache.
constexpr std::size_t BLOCK_PIXELS = 2048;
// Short enough that reading goes on while the block before it is still being written to memory.
constexpr std::size_t STREAM_BLOCK_PIXELS = 512;
// A result so large leaves no room in the caches for the operands of the next evaluation, and its lines need
// not be fetched before they are written.
constexpr std::size_t STREAM_FROM_BYTES = std::size_t(12) << 20;

} // namespace

EvaluationPlan::Input::Input(const Source &source) : isThresholded(source.isThresholded), t(source.t)
{
    if (!source.store)
        return;
    pixels = source.store->data();
    type = source.store->type();
}

/// n values from pixel i on: where they lie when they are floats already, else in `scratch`.
const float *EvaluationPlan::Input::read(const BlockKernels &kernels, std::size_t i, std::size_t n,
                                         float *scratch) const
{
    const float *values = scratch;
    if (type == VXS_FLOAT)
        values = static_cast<const float *>(pixels) + i;
    else
        toFloat(static_cast<const char *>(pixels) + i * bytesPerPixel(type), type, scratch, n);
    if (!isThresholded)
        return values;
    kernels.above(values, t, scratch, n);
    return scratch;
}

bool EvaluationPlan::fuses(const Instruction &first, const Instruction &second)
{
    if (first.op == Op::Scale)
        return second.op == Op::Add || second.op == Op::Subtract || second.op == Op::SubtractFrom ||
               second.op == Op::Multiply;
    return first.op == Op::Divide && second.op == Op::Scale;
}

void EvaluationPlan::runPair(const BlockKernels &kernels, const Instruction &first, const Instruction &second,
                             const float *value, const float *operand, float *out, std::size_t n)
{
    const float k = float(first.op == Op::Scale ? first.number : second.number);
    switch (second.op) {
    case Op::Add:
        return kernels.scaleAdd(value, k, operand, out, n);
    case Op::Subtract:
        return kernels.scaleSubtract(value, k, operand, out, n);
    case Op::SubtractFrom:
        return kernels.scaleSubtractFrom(value, k, operand, out, n);
    case Op::Multiply:
        return kernels.scaleMultiply(value, k, operand, out, n);
    default:
        return kernels.divideScale(value, k, operand, out, n);
    }
}

void EvaluationPlan::runOne(const BlockKernels &kernels, const Instruction &step, const float *value,
                            const float *operand, float *out, std::size_t n)
{
    switch (step.op) {
    case Op::Scale:
        return kernels.scale(value, float(step.number), out, n);
    case Op::ScaleDouble:
        return kernels.scaleDouble(value, step.number, out, n);
    case Op::SubtractValue:
        return kernels.subtractValue(value, float(step.number), out, n);
    case Op::SubtractValueDouble:
        return kernels.subtractValueDouble(value, step.number, out, n);
    case Op::Add:
        return kernels.add(value, operand, out, n);
    case Op::Subtract:
        return kernels.subtract(value, operand, out, n);
    case Op::SubtractFrom:
        return kernels.subtract(operand, value, out, n);
    case Op::Multiply:
        return kernels.multiply(value, operand, out, n);
    case Op::Divide:
        return kernels.divide(value, operand, out, n);
    }
}

EvaluationPlan::EvaluationPlan(const Expression &expression) : m_base(expression.base)
{
    m_steps.reserve(expression.steps.size());
    for (const Step &step : expression.steps)
        m_steps.push_back({step.op, step.number, Input(step.operand)});
}

/// Only the last step writes to `out`: what lies there may still be the operand of that step.
void EvaluationPlan::runBlock(const BlockKernels &kernels, std::size_t i, std::size_t n, float *out) const
{
    alignas(64) float value[BLOCK_PIXELS];
    alignas(64) float scratch[BLOCK_PIXELS];
    const float *current = m_base.read(kernels, i, n, m_steps.empty() ? out : value);
    if (m_steps.empty() && current != out)
        std::memcpy(out, current, n * sizeof(float));
    for (std::size_t s = 0; s < m_steps.size();) {
        const bool pair = s + 1 < m_steps.size() && fuses(m_steps[s], m_steps[s + 1]);
        const std::size_t next = s + (pair ? 2 : 1);
        float *target = next == m_steps.size() ? out : value;
        const Input &input = pair && m_steps[s].op == Op::Scale ? m_steps[s + 1].operand : m_steps[s].operand;
        const float *operand = input.pixels ? input.read(kernels, i, n, scratch) : nullptr;
        if (pair)
            runPair(kernels, m_steps[s], m_steps[s + 1], current, operand, target, n);
        else
            runOne(kernels, m_steps[s], current, operand, target, n);
        current = target;
        s = next;
    }
}

void EvaluationPlan::run(std::size_t n, float *out, Statistics *statistics) const
{
    const BlockKernels &kernels = blockKernels();
    const bool streams = n * sizeof(float) >= STREAM_FROM_BYTES;
    const std::size_t step = streams ? STREAM_BLOCK_PIXELS : BLOCK_PIXELS;
    const std::size_t bytesMoved = sizeof(float) * (2 + m_steps.size());
    StatisticsAccumulator sum;
    std::mutex mutex;
    parallelFor(n, BLOCK_PIXELS, bytesMoved, [&](std::size_t begin, std::size_t end) {
        alignas(64) float block[BLOCK_PIXELS];
        float lo = std::numeric_limits<float>::infinity();
        float hi = -lo;
        for (std::size_t i = begin; i < end; i += step) {
            const std::size_t count = std::min(step, end - i);
            float *target = streams ? block : out + i;
            runBlock(kernels, i, count, target);
            if (statistics)
                kernels.minMax(target, count, &lo, &hi);
            if (streams)
                kernels.stream(target, out + i, count);
        }
        if (streams)
            kernels.streamFence();
        if (statistics) {
            std::lock_guard<std::mutex> lock(mutex);
            sum.add(lo, hi);
        }
    });
    if (statistics)
        *statistics = sum.result();
}

void evaluateMask(const Source &source, std::size_t n, std::uint8_t *out)
{
    const BlockKernels &kernels = blockKernels();
    const void *pixels = source.store->data();
    const VXSDataTypes type = source.store->type();
    const float t = source.t;
    // Integers compare with the integer part of t, all at once.
    const int largest = type == VXS_UINT16 ? 65535 : 255;
    if (isSmallInteger(type) && !(t >= 0.0f && t < float(largest))) {
        std::memset(out, t < 0.0f ? 1 : 0, n);
        return;
    }
    parallelFor(n, BLOCK_PIXELS, bytesPerPixel(type) + 1, [&](std::size_t begin, std::size_t end) {
        if (isByte(type)) {
            kernels.aboveUint8(static_cast<const std::uint8_t *>(pixels) + begin, int(t), out + begin,
                               end - begin);
        } else if (type == VXS_UINT16) {
            kernels.aboveUint16(static_cast<const std::uint16_t *>(pixels) + begin, int(t), out + begin,
                                end - begin);
        } else {
            alignas(64) float scratch[BLOCK_PIXELS];
            for (std::size_t i = begin; i < end; i += BLOCK_PIXELS) {
                const std::size_t count = std::min(BLOCK_PIXELS, end - i);
                const float *values = static_cast<const float *>(pixels) + i;
                if (type != VXS_FLOAT) {
                    toFloat(static_cast<const char *>(pixels) + i * bytesPerPixel(type), type, scratch,
                            count);
                    values = scratch;
                }
                kernels.aboveBytes(values, t, out + i, count);
            }
        }
    });
}

} // namespace il
