// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "FuzzApplication.h"
#include "FuzzCheck.h"

#include <ProjectFile.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRandomGenerator>

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

QJsonValue anyValue(QRandomGenerator &random)
{
    const QJsonValue values[] = {
            0,
            -1,
            0.1,
            1e308,
            -1e-320,
            16384.0,
            86'400'000.0,
            2'147'483'648.0,
            true,
            QJsonValue(),
            QStringLiteral("svg"),
            QStringLiteral("text"),
            QStringLiteral("#80ff0000"),
            QStringLiteral("transparent"),
            QStringLiteral("\u0001 <b>Жизнь</b>"),
            QStringLiteral("<svg viewBox=\"0 0 9 9\"/>"),
            QJsonArray(),
            QJsonObject(),
    };
    if (random.bounded(3) == 0)
        return random.bounded(2e6) - 1e6;
    return values[random.bounded(int(std::size(values)))];
}

QJsonValue mutated(const QJsonValue &value, QRandomGenerator &random);

QJsonArray mutatedList(QJsonArray list, QRandomGenerator &random)
{
    if (list.isEmpty())
        return {anyValue(random)};
    const int at = random.bounded(list.size());
    switch (random.bounded(6)) {
    case 0:
        list.removeAt(at);
        break;
    case 1:
        list.insert(at, list.at(at));
        break;
    default:
        list.replace(at, mutated(list.at(at), random));
    }
    return list;
}

QJsonObject mutatedObject(QJsonObject object, QRandomGenerator &random)
{
    if (object.isEmpty())
        return object;
    const QString key = object.keys().at(random.bounded(object.size()));
    if (random.bounded(12) == 0)
        object.remove(key);
    else
        object.insert(key, mutated(object.value(key), random));
    return object;
}

/// The value with one change somewhere in it.
QJsonValue mutated(const QJsonValue &value, QRandomGenerator &random)
{
    if (value.isArray())
        return mutatedList(value.toArray(), random);
    if (value.isObject())
        return mutatedObject(value.toObject(), random);
    return anyValue(random);
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

extern "C" size_t LLVMFuzzerMutate(quint8 *data, size_t size, size_t most);

// One change in four, and each of a text that is no JSON, is of any bytes.
extern "C" size_t LLVMFuzzerCustomMutator(quint8 *data, size_t size, size_t most, unsigned int seed)
{
    QRandomGenerator random(seed);
    const auto json =
            QJsonDocument::fromJson(QByteArray(reinterpret_cast<const char *>(data), int(size)));
    if (!json.isObject() || random.bounded(4) == 0)
        return LLVMFuzzerMutate(data, size, most);
    const QByteArray text = QJsonDocument(mutatedObject(json.object(), random)).toJson();
    if (size_t(text.size()) > most)
        return size;
    std::copy(text.begin(), text.end(), data);
    return size_t(text.size());
}
