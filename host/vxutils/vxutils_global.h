// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/qglobal.h>

#ifdef VXUTILS_LIBRARY
#define VXUTILS_EXPORT Q_DECL_EXPORT
#else
#define VXUTILS_EXPORT Q_DECL_IMPORT
#endif
