#pragma once

// Marks the functions that the shared libraries export; everything else is
// compiled with hidden visibility.
#if defined(__GNUC__) || defined(__clang__)
#define MORV_API __attribute__((visibility("default")))
#else
#define MORV_API
#endif
