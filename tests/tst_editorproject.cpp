// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "EditorSession.h"
#include "FullDisk.h"
#include "TitleTest.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

namespace {

Project sampleProject()
{
    Title svg;
    svg.name = QStringLiteral("Bar");
    svg.svg = readTestData(QStringLiteral("editor-templates/bar.svg"));
    svg.placement = {QPointF(12.5, -7.25), 33.3, 1.5, 2.5, 0.0};
    svg.lineColor = QColor(0x12, 0x34, 0x56);
    svg.speed = 0.75;
    Title text;
    text.kind = Title::Text;
    text.name = QStringLiteral("Tromsø 字幕 🎬");
    text.html = QStringLiteral("<b>Tromsø 字幕 🎬</b>");
    text.placement.pos = QPointF(100.0, 200.0);
    text.placement.textWidth = 640.0;
    return {QSize(1280, 720), 4321, {svg, text}};
}

QByteArray content(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class EditorProjectTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void comesBackAsItWas();
    void refuses_data();
    void refuses();
    void failingSaveLosesNothing_data();
    void failingSaveLosesNothing();
    void aFullDiskLosesNothing();
    void savingReplacesTheFile();
    void openingShowsTheTitles();
};

void EditorProjectTest::comesBackAsItWas()
{
    const Project before = sampleProject();
    QString error;
    const auto after = projectFromJson(toJson(before), &error);
    QVERIFY2(after, qPrintable(error));
    QCOMPARE(after->canvas, before.canvas);
    QCOMPARE(after->clipLength, before.clipLength);
    QCOMPARE(after->titles.size(), before.titles.size());
    for (int i = 0; i < before.titles.size(); ++i) {
        const Title &a = after->titles.at(i);
        const Title &b = before.titles.at(i);
        QCOMPARE(a.kind, b.kind);
        QCOMPARE(a.name, b.name);
        QCOMPARE(a.svg, b.svg);
        QCOMPARE(a.html, b.html);
        QCOMPARE(a.lineColor, b.lineColor);
        QCOMPARE(a.speed, b.speed);
        QVERIFY(a.placement.isSameAs(b.placement));
    }
    QCOMPARE(toJson(*after), toJson(before));
}

void EditorProjectTest::refuses_data()
{
    QTest::addColumn<int>("title"); // -1: the project itself
    QTest::addColumn<QString>("key");
    QTest::addColumn<QJsonValue>("value");
    const auto row = [](const char *name, int title, const char *key, const QJsonValue &value) {
        QTest::newRow(name) << title << QString::fromLatin1(key) << value;
    };
    const QJsonValue missing(QJsonValue::Undefined);
    row("no format", -1, "format", missing);
    row("another format", -1, "format", QStringLiteral("film"));
    row("a later version", -1, "version", 2);
    row("no canvas", -1, "width", 0);
    row("a canvas beyond all memory", -1, "height", 1e9);
    row("a width that is a text", -1, "width", QStringLiteral("1920"));
    row("no clip length", -1, "clipLength", missing);
    row("a negative clip length", -1, "clipLength", -40);
    row("titles that are no list", -1, "titles", QJsonObject());
    row("an unknown kind", 0, "kind", QStringLiteral("film"));
    row("no SVG", 0, "svg", missing);
    row("broken SVG", 0, "svg", QStringLiteral("<svg><g></svg>"));
    row("a scale of 0", 0, "scaleX", 0);
    row("a negative scale", 0, "scaleY", -1);
    row("a speed of 0", 0, "speed", 0);
    row("no colour", 0, "lineColor", QStringLiteral("mauvish"));
    row("a colour with alpha", 0, "lineColor", QStringLiteral("#80ff0000"));
    row("no visible colour", 0, "lineColor", QStringLiteral("transparent"));
    row("a finer colour than a file has", 0, "lineColor", QStringLiteral("#123456789abc"));
    row("a place that is a text", 0, "x", QStringLiteral("0"));
    row("a place beyond the world", 1, "y", 1e300);
    row("no rotation", 1, "rotation", missing);
    row("no text", 1, "html", missing);
    const auto tables = [](int depth) {
        return QStringLiteral("<table><tr><td>").repeated(depth) + QLatin1Char('x');
    };
    row("tables in tables", 1, "html", tables(9));
    row("tables in tables that never end", 1, "html", tables(3000));
    row("no width of the text", 1, "width", 0);
    row("no name", 1, "name", missing);
}

void EditorProjectTest::refuses()
{
    QFETCH(int, title);
    QFETCH(QString, key);
    QFETCH(QJsonValue, value);
    QJsonObject project = QJsonDocument::fromJson(toJson(sampleProject())).object();
    const auto change = [&key, &value](QJsonObject &object) {
        if (value.isUndefined())
            object.remove(key);
        else
            object.insert(key, value);
    };
    if (title < 0) {
        change(project);
    } else {
        QJsonArray titles = project.value(QStringLiteral("titles")).toArray();
        QJsonObject object = titles.at(title).toObject();
        change(object);
        titles.replace(title, object);
        project.insert(QStringLiteral("titles"), titles);
    }
    QString error;
    QVERIFY(!projectFromJson(QJsonDocument(project).toJson(), &error));
    QVERIFY(!error.isEmpty());
}

void EditorProjectTest::failingSaveLosesNothing_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("a folder that nobody can write to") << QStringLiteral("/proc/a.titles");
    QTest::newRow("a folder that is not there") << QStringLiteral("/no/such/folder/a.titles");
    QTest::newRow("a file in place of a folder") << QStringLiteral("/etc/passwd/a.titles");
    QTest::newRow("a folder") << QStringLiteral("/etc");
    QTest::newRow("a full device") << QStringLiteral("/dev/full");
}

void EditorProjectTest::failingSaveLosesNothing()
{
    QFETCH(QString, path);
    QTemporaryDir folder;
    const QString first = folder.filePath(QStringLiteral("first.titles"));
    const bool wasFile = QFileInfo(path).isFile();
    EditorSession session;
    session.addBar();
    QVERIFY(session.window.saveProject(first));
    const QByteArray saved = content(first);
    session.press("addText");
    const QByteArray edited = session.json();
    QVERIFY(!session.window.saveProject(path));
    QVERIFY(session.closeMessage().contains(QStringLiteral("can't be saved")));
    QCOMPARE(content(first), saved);
    QCOMPARE(session.json(), edited);
    QCOMPARE(session.window.projectPath(), first);
    QVERIFY(session.window.isWindowModified());
    QCOMPARE(session.undoStack().count(), 2);
    QCOMPARE(QFileInfo(path).isFile(), wasFile);
}

void EditorProjectTest::aFullDiskLosesNothing()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("mine.titles"));
    QString error;
    QVERIFY2(writeProject(Project(), path, &error), qPrintable(error));
    const QByteArray saved = content(path);
    Project large = sampleProject();
    large.titles[1].html = QString(200000, QLatin1Char('x'));
    {
        const FileSizeLimit full(50000);
        QVERIFY(!writeProject(large, path, &error));
    }
    QVERIFY(!error.isEmpty());
    QCOMPARE(content(path), saved);
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden),
             QStringList{QStringLiteral("mine.titles")});
    QVERIFY2(writeProject(large, path, &error), qPrintable(error));
    QCOMPARE(content(path), toJson(large));
}

void EditorProjectTest::savingReplacesTheFile()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("mine.titles"));
    EditorSession session;
    session.addBar();
    QVERIFY(session.window.saveProject(path));
    session.press("addText");
    session.press("save"); // asks for nothing, since there is a file
    QCOMPARE(content(path), session.json());
    QVERIFY(!session.window.isWindowModified());
}

void EditorProjectTest::openingShowsTheTitles()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("mine.titles"));
    QString error;
    QVERIFY2(writeProject(sampleProject(), path, &error), qPrintable(error));
    EditorSession session;
    QVERIFY(session.window.openProject(path));
    QCOMPARE(session.json(), toJson(sampleProject()));
    const AbstractDecorator *frame = session.canvas().frame(session.id(0));
    const QTransform shown = frame->child()->sceneTransform();
    QTransform expected = QTransform::fromTranslate(12.5, -7.25);
    expected.rotate(33.3);
    expected.scale(1.5, 2.5);
    QVERIFY(qFuzzyCompare(shown, expected));
}

QTEST_MAIN(EditorProjectTest)

#include "tst_editorproject.moc"
