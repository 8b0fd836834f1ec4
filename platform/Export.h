#pragma once

// Marks what the shared library shows to its callers; everything else is hidden, so that the names
// of the host and of other libraries cannot collide with it. TADIALOGS_HIDDEN hides a class inside
// a shown one. TADIALOGS_BUILDING is defined while the library itself is built.
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
