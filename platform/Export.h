#pragma once

// Marks what the shared library shows to its callers; everything else is hidden. TADIALOGS_HIDDEN
// hides a class inside a shown one.
#if defined(_WIN32)
#if defined(TADIALOGS_BUILDING)
#define TADIALOGS_EXPORT __declspec(dllexport)
#else
#define TADIALOGS_EXPORT __declspec(dllimport)
#endif
#define TADIALOGS_HIDDEN
#else
#define TADIALOGS_EXPORT __attribute__((visibility("default")))
#define TADIALOGS_HIDDEN __attribute__((visibility("hidden")))
#endif
