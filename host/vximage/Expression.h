// SPDX-License-Identifier: MIT
#pragma once

#include "host/vximage/kernels/Statistics.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace il {

class PixelStore;
struct BlockKernels;

/// Pixels that an expression reads as floats: those of a store (which is evaluated itself), or 1 where such a
/// pixel is above t, else 0.
struct Source
{
    std::shared_ptr<PixelStore> store;
    bool isThresholded = false;
    float t = 0.0f;
};

/// What a step does to the value that the steps before it gave.
enum class Op : std::uint8_t {
    Scale,         ///< value * number, when the number is a float exactly
    ScaleDouble,   ///< value * number in double precision, rounded to float
    SubtractValue, ///< value - number
    SubtractValueDouble,
    Add,          ///< value + operand
    Subtract,     ///< value - operand
    SubtractFrom, ///< operand - value
    Multiply,     ///< value * operand
    Divide,       ///< value / operand
};

struct Step
{
    Op op;
    double number;
    Source operand;
};

/// Arithmetic that waits: the base's pixels as floats, then the steps in order, each rounded to float on its
/// own.
struct Expression
{
    Source base;
    std::vector<Step> steps;
};

/// More than any formula has; a longer one is evaluated on the way, so that it cannot hold many images.
constexpr std::size_t MAX_STEPS = 8;

/// An expression with all its pixels looked up, ready to run.
class EvaluationPlan
{
public:
    explicit EvaluationPlan(const Expression &expression);

    /// Writes the n values to `out`, in one pass over memory. `out` may be the pixels of one of the sources.
    /// Gathers the statistics of the outcome on the way, unless null.
    void run(std::size_t n, float *out, Statistics *statistics) const;

private:
    /// A source with its pixels looked up.
    struct Input
    {
        const void *pixels = nullptr;
        VXSDataTypes type = VXS_FLOAT;
        bool isThresholded = false;
        float t = 0.0f;

        explicit Input(const Source &source);
        const float *read(const BlockKernels &kernels, std::size_t i, std::size_t n, float *scratch) const;
    };
    struct Instruction
    {
        Op op;
        double number;
        Input operand;
    };

    static bool fuses(const Instruction &first, const Instruction &second);
    static void runPair(const BlockKernels &kernels, const Instruction &first, const Instruction &second,
                        const float *value, const float *operand, float *out, std::size_t n);
    static void runOne(const BlockKernels &kernels, const Instruction &step, const float *value,
                       const float *operand, float *out, std::size_t n);
    void runBlock(const BlockKernels &kernels, std::size_t i, std::size_t n, float *out) const;

    Input m_base;
    std::vector<Instruction> m_steps;
};

/// Writes a threshold without steps as a mask.
void evaluateMask(const Source &source, std::size_t n, std::uint8_t *out);

} // namespace il
