// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "FuzzApplication.h"
#include "FuzzCheck.h"

#include <ProjectFile.h>

#include <algorithm>

// A project that was read is one that can be written, and comes back as it was.

namespace {

bool isSame(const Title &a, const Title &b)
{
    return a.kind == b.kind && a.name == b.name && a.placement.isSameAs(b.placement)
            && a.svg == b.svg && a.lineColor == b.lineColor && a.speed == b.speed
            && a.html == b.html;
}

bool isSame(const Project &a, const Project &b)
{
    return a.canvas == b.canvas && a.clipLength == b.clipLength
            && std::equal(a.titles.begin(), a.titles.end(), b.titles.begin(), b.titles.end(),
                          [](const Title &x, const Title &y) { return isSame(x, y); });
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    makeFuzzApplication();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const quint8 *data, size_t size)
{
    QString error;
    const auto read = [&error](const QByteArray &json) { return projectFromJson(json, &error); };
    const auto project = read(QByteArray(reinterpret_cast<const char *>(data), int(size)));
    FUZZ_CHECK(project || !error.isEmpty());
    if (!project)
        return 0;
    const QByteArray written = toJson(*project);
    const auto again = read(written);
    FUZZ_CHECK(again && isSame(*project, *again));
    FUZZ_CHECK(toJson(*again) == written);
    return 0;
}
