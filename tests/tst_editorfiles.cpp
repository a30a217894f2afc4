// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "EditorSession.h"
#include "TitleTest.h"

#include <PngExport.h>
#include <TemplateList.h>

#include <QProcess>
#include <QTemporaryDir>
#include <QTextCodec>

namespace {

QStringList filesIn(const QString &folder)
{
    return QDir(folder).entryList(QDir::Files, QDir::Name);
}

void write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), qint64(bytes.size()));
}

QByteArray encoded(const QString &text, const char *codec)
{
    return QTextCodec::codecForName(codec)->fromUnicode(text);
}

QString declaredTitle(const QString &encoding)
{
    return QStringLiteral("<?xml version=\"1.0\" encoding=\"%1\"?>").arg(encoding)
            + svgTitle(QStringLiteral("<desc>Grünkohl für 5 £</desc>"
                                      "<rect width=\"100\" height=\"50\" fill=\"#ff0000\"/>"));
}

} // namespace

// The editor reads and writes the same files as the commands.
class EditorFilesTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void framesAreNumberedAsByTheCommand();
    void readsWhatTheCommandsRead_data();
    void readsWhatTheCommandsRead();
    void refusesWhatTheCommandsRefuse();
};

void EditorFilesTest::framesAreNumberedAsByTheCommand()
{
    const QTemporaryDir folder;
    const QString title = folder.filePath(QStringLiteral("title.svg"));
    write(title,
          svgTitle(QStringLiteral("<rect width=\"9\" height=\"9\"><animate attributeName=\"x\""
                                  " from=\"0\" to=\"9\" dur=\"120ms\"/></rect>"))
                  .toUtf8());
    QVERIFY(QDir(folder.path()).mkdir(QStringLiteral("editor")));
    PngExport exporting({QSize(64, 36), 3 * frameLength, {}},
                        folder.filePath(QStringLiteral("editor")));
    QSignalSpy finished(&exporting, &PngExport::finished);
    exporting.start();
    QTRY_COMPARE(finished.count(), 1);
    QCOMPARE(QProcess::execute(
                     QStringLiteral(TITLESCENE_RENDER),
                     {title, QStringLiteral("-o"), folder.filePath(QStringLiteral("command"))}),
             0);

    const QStringList expected{QStringLiteral("frame-000000.png"),
                               QStringLiteral("frame-000001.png"),
                               QStringLiteral("frame-000002.png")};
    QCOMPARE(filesIn(folder.filePath(QStringLiteral("command"))), expected);
    QCOMPARE(filesIn(folder.filePath(QStringLiteral("editor"))), expected);
}

void EditorFilesTest::readsWhatTheCommandsRead_data()
{
    QTest::addColumn<QByteArray>("bytes");

    const QString utf16 = declaredTitle(QStringLiteral("UTF-16"));
    QTest::newRow("UTF-8") << declaredTitle(QStringLiteral("UTF-8")).toUtf8();
    QTest::newRow("UTF-8 with a mark")
            << "\xef\xbb\xbf" + declaredTitle(QStringLiteral("UTF-8")).toUtf8();
    QTest::newRow("UTF-16, little endian") << "\xff\xfe" + encoded(utf16, "UTF-16LE");
    QTest::newRow("UTF-16, big endian") << "\xfe\xff" + encoded(utf16, "UTF-16BE");
    QTest::newRow("ISO 8859-1") << encoded(declaredTitle(QStringLiteral("ISO-8859-1")),
                                           "ISO-8859-1");
    QTest::newRow("Windows-1252") << encoded(declaredTitle(QStringLiteral("windows-1252")),
                                             "windows-1252");
    QTest::newRow("UTF-16 in name only") << utf16.toUtf8();
    QTest::newRow("an encoding that nobody knows")
            << declaredTitle(QStringLiteral("x-nobody-knows")).toUtf8();
}

void EditorFilesTest::readsWhatTheCommandsRead()
{
    QFETCH(QByteArray, bytes);

    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("title.svg"));
    write(path, bytes);
    EditorSession session;
    QVERIFY(session.window.addTemplate(path));
    const QString svg = session.title(0).svg;
    QVERIFY2(svg.contains(QStringLiteral("Grünkohl für 5 £")), qPrintable(svg));

    TemplateList list;
    QSignalSpy loaded(&list, &TemplateList::loaded);
    list.setFolder(folder.path());
    QTRY_COMPARE(loaded.count(), 1);
    const QImage thumbnail = list.item(0)->icon().pixmap(list.iconSize()).toImage();
    QCOMPARE(thumbnail.pixelColor(thumbnail.rect().center()), QColor(Qt::red));

    QProcess command;
    command.start(QStringLiteral(TITLESCENE_RENDER), {path, QStringLiteral("--raw")});
    QVERIFY(command.waitForFinished());
    QCOMPARE(command.readAllStandardError(), QByteArray());
    QVERIFY(command.readAllStandardOutput().startsWith(QByteArray("\0\0\xff\xff", 4)));
}

void EditorFilesTest::refusesWhatTheCommandsRefuse()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("title.svg"));
    write(path, encoded(svgTitle(QStringLiteral("<desc>Grünkohl</desc>")), "ISO-8859-1"));
    EditorSession session;
    QVERIFY(!session.window.addTemplate(path));
    const QString message = session.closeMessage();
    QVERIFY2(message.contains(QStringLiteral("not valid UTF-8 text")), qPrintable(message));
}

QTEST_MAIN(EditorFilesTest)
#include "tst_editorfiles.moc"
