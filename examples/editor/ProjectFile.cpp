// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "ProjectFile.h"

#include <Failure.h>
#include <SafeFile.h>

#include <Scene/SvgDocument.h>

#include <QCoreApplication>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTextDocument>
#include <QTextFrame>

#include <stdexcept>

namespace {

constexpr int version = 1;
constexpr double largestSide = 16384.0;
constexpr double longestClip = 24.0 * 60.0 * 60.0 * 1000.0;
constexpr double farthest = 1e6;
constexpr int deepestTable = 8; // each is laid out several times by the one around it
constexpr double smallestFactor = 1e-6;
constexpr double largestFactor = 1e6;

QString formatName()
{
    return QStringLiteral("titlescene-project");
}

QString svgKind()
{
    return QStringLiteral("svg");
}

QString textKind()
{
    return QStringLiteral("text");
}

QString tr(const char *text)
{
    return QCoreApplication::translate("ProjectFile", text);
}

/// What is wrong with a file. Stays within this file.
class Defect : public std::runtime_error
{
public:
    explicit Defect(const QString &what) : std::runtime_error(what.toStdString()) {}
    QString text() const { return QString::fromUtf8(what()); }
};

QString keyText(const char *key)
{
    return QString::fromLatin1(key);
}

double number(const QJsonObject &object, const char *key, double smallest, double largest)
{
    const QJsonValue value = object.value(keyText(key));
    if (!value.isDouble() || value.toDouble() < smallest || value.toDouble() > largest)
        throw Defect(tr("\"%1\" has to be a number from %2 to %3.")
                             .arg(keyText(key))
                             .arg(smallest)
                             .arg(largest));
    return value.toDouble();
}

QString text(const QJsonObject &object, const char *key)
{
    const QJsonValue value = object.value(keyText(key));
    if (!value.isString())
        throw Defect(tr("\"%1\" has to be a text.").arg(keyText(key)));
    return value.toString();
}

QColor colorOf(const QJsonObject &object)
{
    if (!object.contains(QStringLiteral("lineColor")))
        return QColor();
    const QColor color(text(object, "lineColor"));
    if (!color.isValid() || color != QColor(color.name())) // else writing would change it
        throw Defect(tr("\"lineColor\" has to be a colour of the form #rrggbb."));
    return color;
}

void readSvg(Title &title, const QJsonObject &object)
{
    title.kind = Title::Svg;
    title.svg = text(object, "svg");
    title.lineColor = colorOf(object);
    title.speed = number(object, "speed", 0.01, 100.0);
    title.placement.scaleX = number(object, "scaleX", smallestFactor, largestFactor);
    title.placement.scaleY = number(object, "scaleY", smallestFactor, largestFactor);
    const SvgDocument document(title.svg);
    if (!document.isLoaded())
        throw Defect(
                tr("The title \"%1\" can't be shown: %2").arg(title.name, document.errorString()));
}

/// How many tables stand in one another.
int depthOfTables(const QString &html)
{
    QTextDocument document;
    document.setHtml(html);
    int depth = -1; // the document is the outermost frame
    for (QList<QTextFrame *> frames{document.rootFrame()}; !frames.isEmpty(); ++depth) {
        QList<QTextFrame *> inside;
        for (const QTextFrame *frame : qAsConst(frames))
            inside += frame->childFrames();
        frames = inside;
    }
    return depth;
}

void readText(Title &title, const QJsonObject &object)
{
    title.kind = Title::Text;
    title.html = text(object, "html");
    if (depthOfTables(title.html) > deepestTable)
        throw Defect(tr("The text of \"%1\" has too many tables in tables.").arg(title.name));
    title.placement.textWidth = number(object, "width", 1.0, farthest);
}

Title titleFrom(const QJsonValue &value)
{
    if (!value.isObject())
        throw Defect(tr("A title has to be an object."));
    const QJsonObject object = value.toObject();
    Title title;
    title.name = text(object, "name");
    title.placement.pos.setX(number(object, "x", -farthest, farthest));
    title.placement.pos.setY(number(object, "y", -farthest, farthest));
    title.placement.rotation = number(object, "rotation", -farthest, farthest);
    const QString kind = text(object, "kind");
    if (kind == svgKind())
        readSvg(title, object);
    else if (kind == textKind())
        readText(title, object);
    else
        throw Defect(tr("There is no kind of title \"%1\".").arg(kind));
    return title;
}

Project projectFrom(const QJsonObject &object)
{
    if (text(object, "format") != formatName())
        throw Defect(tr("This is no project of titles."));
    number(object, "version", version, version);
    Project project;
    project.canvas.setWidth(int(number(object, "width", 1.0, largestSide)));
    project.canvas.setHeight(int(number(object, "height", 1.0, largestSide)));
    project.clipLength = int(number(object, "clipLength", frameLength, longestClip));
    const QJsonValue titles = object.value(QStringLiteral("titles"));
    if (!titles.isArray())
        throw Defect(tr("\"titles\" has to be a list."));
    for (const QJsonValue &title : titles.toArray())
        project.titles.append(titleFrom(title));
    return project;
}

QJsonObject toObject(const Title &title)
{
    const Placement &placement = title.placement;
    QJsonObject object{{QStringLiteral("name"), title.name},
                       {QStringLiteral("x"), placement.pos.x()},
                       {QStringLiteral("y"), placement.pos.y()},
                       {QStringLiteral("rotation"), placement.rotation}};
    if (title.kind == Title::Text) {
        object.insert(QStringLiteral("kind"), textKind());
        object.insert(QStringLiteral("html"), title.html);
        object.insert(QStringLiteral("width"), placement.textWidth);
        return object;
    }
    object.insert(QStringLiteral("kind"), svgKind());
    object.insert(QStringLiteral("svg"), title.svg);
    object.insert(QStringLiteral("speed"), title.speed);
    object.insert(QStringLiteral("scaleX"), placement.scaleX);
    object.insert(QStringLiteral("scaleY"), placement.scaleY);
    if (title.lineColor.isValid())
        object.insert(QStringLiteral("lineColor"), title.lineColor.name());
    return object;
}

} // namespace

QByteArray toJson(const Project &project)
{
    QJsonArray titles;
    for (const Title &title : project.titles)
        titles.append(toObject(title));
    const QJsonObject object{{QStringLiteral("format"), formatName()},
                             {QStringLiteral("version"), version},
                             {QStringLiteral("width"), project.canvas.width()},
                             {QStringLiteral("height"), project.canvas.height()},
                             {QStringLiteral("clipLength"), project.clipLength},
                             {QStringLiteral("titles"), titles}};
    return QJsonDocument(object).toJson();
}

std::optional<Project> projectFromJson(const QByteArray &json, QString *error)
{
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(json, &parseError);
    if (!document.isObject()) {
        *error = parseError.error == QJsonParseError::NoError ? tr("This is no project of titles.")
                                                              : parseError.errorString();
        return std::nullopt;
    }
    try {
        return projectFrom(document.object());
    } catch (const Defect &defect) {
        *error = defect.text();
        return std::nullopt;
    }
}

std::optional<Project> readProject(const QString &path, QString *error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = file.errorString();
        return std::nullopt;
    }
    return projectFromJson(file.readAll(), error);
}

bool writeProject(const Project &project, const QString &path, QString *error)
{
    try {
        writeFile(path, toJson(project));
    } catch (const Failure &failure) {
        *error = failure.reason();
        return false;
    }
    return true;
}
