// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <string_view>

/// An attribute of an element that is being read, in UTF-8.
struct XmlAttribute
{
    std::string_view name; ///< as written, with its prefix
    std::string_view value;
};
