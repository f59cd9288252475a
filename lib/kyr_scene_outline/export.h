#pragma once

#include <QtGlobal>

/// Marks what a shared library offers; everything else stays hidden.
#if defined(KYR_SCENE_OUTLINE_STATIC)
#define KYR_SCENE_OUTLINE_EXPORT
#elif defined(KYR_SCENE_OUTLINE_BUILD)
#define KYR_SCENE_OUTLINE_EXPORT Q_DECL_EXPORT
#else
#define KYR_SCENE_OUTLINE_EXPORT Q_DECL_IMPORT
#endif
