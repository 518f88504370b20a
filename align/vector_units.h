#pragma once

// Loops over many numbers are compiled for machines of the last ten years as well, which work on eight at a
// time; which code runs is decided when the program starts.
#if defined(__x86_64__) && defined(__linux__) && defined(__GNUC__) && !defined(__clang__) && \
    !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
#define PELORIN_ALIGN_VECTORS [[gnu::target_clones("default", "avx2")]]
#else
#define PELORIN_ALIGN_VECTORS
#endif
