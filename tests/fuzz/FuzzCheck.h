// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <cstdio>
#include <cstdlib>

/// Stops the target, so that the input is kept as one that fails.
#define FUZZ_CHECK(condition) \
    do { \
        if (!(condition)) { \
            std::fprintf(stderr, "%s:%d: does not hold: %s\n", __FILE__, __LINE__, #condition); \
            std::abort(); \
        } \
    } while (false)
