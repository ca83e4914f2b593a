// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/qglobal.h>

#ifdef VXAPI_LIBRARY
#define VXAPI_EXPORT Q_DECL_EXPORT
#else
#define VXAPI_EXPORT Q_DECL_IMPORT
#endif
