// SPDX-License-Identifier: MIT
#include "host/vximage/kernels/BlockKernels.h"

#if defined(__x86_64__) && defined(__GNUC__) && !defined(__clang__)
#define IL_HAVE_AVX2
#include <immintrin.h>

#pragma GCC push_options
#pragma GCC target("avx2")
namespace il {
namespace avx2 {
namespace {
#include "host/vximage/kernels/BlockKernels.inl"
}
} // namespace avx2
} // namespace il
#pragma GCC pop_options
#endif

namespace il {

const BlockKernels *avx2BlockKernels()
{
#ifdef IL_HAVE_AVX2
    return __builtin_cpu_supports("avx2") ? &avx2::kernels : nullptr;
#else
    return nullptr;
#endif
}

} // namespace il
