// SPDX-License-Identifier: MIT
#include "host/vximage/kernels/BlockKernels.h"

#ifdef __SSE2__
#include <immintrin.h>
#endif

#if defined(__GNUC__)
#pragma GCC diagnostic ignored "-Wpsabi" // the wide vectors never cross a function's border
#endif

namespace il {
namespace base {
namespace {
#include "host/vximage/kernels/BlockKernels.inl"
}
} // namespace base

const BlockKernels &baseBlockKernels()
{
    return base::kernels;
}

const BlockKernels &blockKernels()
{
    static const BlockKernels &chosen = avx2BlockKernels() ? *avx2BlockKernels() : base::kernels;
    return chosen;
}

} // namespace il
