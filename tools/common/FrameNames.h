// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QString>

// The name of the picture of a frame, as all programs write it; the first frame is 0.
QString frameFileName(qint64 frame);
