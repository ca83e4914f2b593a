// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/qglobal.h>

#ifdef VXPARSER_LIBRARY
#define VXPARSER_EXPORT Q_DECL_EXPORT
#else
#define VXPARSER_EXPORT Q_DECL_IMPORT
#endif
