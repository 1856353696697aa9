#pragma once
// A broken invariant stops the run at once, so libFuzzer keeps the input that
// caused it and the replay test fails with the reason on standard error.
#include <cstdio>
#include <cstdlib>

#define V2_FUZZ_CHECK(cond, what)                                          \
  do {                                                                     \
    if (!(cond)) {                                                         \
      std::fprintf(stderr, "%s:%d: invariant broken: %s [%s]\n", __FILE__, \
                   __LINE__, what, #cond);                                 \
      std::abort();                                                        \
    }                                                                      \
  } while (0)
