#pragma once

#include <QtGlobal>

#if defined(KYR_TESTKIT_STATIC)
#define KYR_TESTKIT_EXPORT
#elif defined(KYR_TESTKIT_BUILD)
#define KYR_TESTKIT_EXPORT Q_DECL_EXPORT
#else
#define KYR_TESTKIT_EXPORT Q_DECL_IMPORT
#endif
