// SPDX-License-Identifier: MIT
#pragma once

#if defined(_WIN32)
#ifdef VXIMAGE_LIBRARY
#define VXIMAGE_EXPORT __declspec(dllexport)
#else
#define VXIMAGE_EXPORT __declspec(dllimport)
#endif
#else
#define VXIMAGE_EXPORT __attribute__((visibility("default")))
#endif
