#pragma once

#include <QtGlobal>

#if defined(PLEXA_BUILD)
#define PLEXA_EXPORT Q_DECL_EXPORT
#else
#define PLEXA_EXPORT Q_DECL_IMPORT
#endif
