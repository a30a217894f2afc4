// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "JsonReport.h"

#include "Problems.h"
#include "Timeline.h"
#include "Understood.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

// An element can be told of very often.
constexpr int longestId = 1000;

void addPlace(QJsonObject &object, const Place &place)
{
    object.insert(QStringLiteral("line"), place.line);
    object.insert(QStringLiteral("column"), place.column);
}

QJsonObject elementJson(const Understood &title, int number)
{
    const SourceElement &element = title.element(number);
    QJsonObject object{{QStringLiteral("name"), element.name},
                       {QStringLiteral("id"), element.value(QStringLiteral("id")).left(longestId)}};
    addPlace(object, element.place);
    return object;
}

QJsonValue repeatJson(const Animation &animation)
{
    return animation.repeatCount < 0.0 ? QJsonValue(QStringLiteral("indefinite"))
                                       : QJsonValue(animation.repeatCount);
}

QJsonArray animationsJson(const Understood &title)
{
    QJsonArray array;
    for (const Animation &animation : title.animations()) {
        array.append(
                QJsonObject{{QStringLiteral("element"), elementJson(title, animation.target)},
                            {QStringLiteral("animation"), elementJson(title, animation.element)},
                            {QStringLiteral("attribute"), animation.attribute},
                            {QStringLiteral("kind"), nameOf(animation.kind)},
                            {QStringLiteral("beginMs"), animation.begin},
                            {QStringLiteral("endMs"), animation.end},
                            {QStringLiteral("repeat"), repeatJson(animation)},
                            {QStringLiteral("freeze"), animation.freezes},
                            {QStringLiteral("discrete"), animation.isDiscrete},
                            {QStringLiteral("player"), nameOf(animation.player)},
                            {QStringLiteral("trigger"), animation.trigger}});
    }
    return array;
}

QJsonArray colorsJson(const Understood &title)
{
    QJsonArray array;
    for (const AdjustableColor &color : title.adjustableColors()) {
        QJsonObject object{{QStringLiteral("element"), elementJson(title, color.element)},
                           {QStringLiteral("attribute"), color.attribute},
                           {QStringLiteral("value"), color.value}};
        addPlace(object, title.element(color.element).placeOf(color.attribute));
        array.append(object);
    }
    return array;
}

QJsonArray definitionsJson(const Understood &title)
{
    QJsonArray array;
    for (const Definition &definition : title.definitions()) {
        QJsonArray users;
        for (const Definition::User &user : definition.users)
            users.append(QJsonObject{{QStringLiteral("element"), elementJson(title, user.element)},
                                     {QStringLiteral("attribute"), user.attribute}});
        array.append(
                QJsonObject{{QStringLiteral("element"), elementJson(title, definition.element)},
                            {QStringLiteral("users"), users}});
    }
    return array;
}

QJsonArray problemsJson(const std::vector<Problem> &problems)
{
    QJsonArray array;
    for (const Problem &problem : problems) {
        QJsonObject object{{QStringLiteral("severity"), nameOf(problem.severity)},
                           {QStringLiteral("code"), problem.code},
                           {QStringLiteral("reason"), problem.reason},
                           {QStringLiteral("remedy"), problem.remedy}};
        addPlace(object, problem.place);
        array.append(object);
    }
    return array;
}

} // namespace

QByteArray jsonReport(const Understood &title, const std::vector<Problem> &problems)
{
    const QJsonObject bounds{{QStringLiteral("width"), title.size().width()},
                             {QStringLiteral("height"), title.size().height()}};
    const QJsonObject report{
            {QStringLiteral("title"), title.name()},
            {QStringLiteral("bounds"), bounds},
            {QStringLiteral("durationMs"), title.duration()},
            {QStringLiteral("conclusionMs"), title.conclusionDuration()},
            {QStringLiteral("conclusionBeginMs"), Timeline(title).conclusion()},
            {QStringLiteral("clipping"), title.hasClipping()},
            {QStringLiteral("clippingShapes"), title.clippingShapes()},
            {QStringLiteral("animations"), animationsJson(title)},
            {QStringLiteral("adjustableColours"), colorsJson(title)},
            {QStringLiteral("definitions"), definitionsJson(title)},
            {QStringLiteral("problems"), problemsJson(problems)},
            {QStringLiteral("warnings"), countOf(Problem::Severity::Warning, problems)},
            {QStringLiteral("notes"), countOf(Problem::Severity::Note, problems)}};
    return QJsonDocument(report).toJson();
}

QByteArray jsonFailure(const QString &titleName, const QString &reason)
{
    return QJsonDocument(QJsonObject{{QStringLiteral("title"), titleName},
                                     {QStringLiteral("error"), reason}})
            .toJson();
}
