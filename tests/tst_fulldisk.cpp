// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "FullDisk.h"
#include "TitleTest.h"

#include <Failure.h>
#include <PngExport.h>
#include <ProjectFile.h>
#include <SafeFile.h>

#include <QDir>
#include <QProcess>
#include <QSignalSpy>

#include <memory>
#include <random>

namespace {

constexpr int millisecondsToWait = 60000;

using Contents = QMap<QString, QByteArray>;

Contents contentsOf(const QString &folder)
{
    Contents contents;
    const QFileInfoList files =
            QDir(folder).entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    for (const QFileInfo &info : files) {
        QFile file(info.filePath());
        contents.insert(info.fileName(),
                        file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable"));
    }
    return contents;
}

struct Result
{
    int exitCode = -1; // -1: ended by a signal
    QString errors;
};

// Runs a command of the shell's, which finds the program and its arguments in "$@".
Result runInShell(const QString &command, const QStringList &programAndArguments)
{
    QProcess process;
    process.start(QStringLiteral("/bin/sh"),
                  QStringList{QStringLiteral("-c"), command, QStringLiteral("sh")}
                          + programAndArguments);
    Result result;
    if (process.waitForFinished(millisecondsToWait) && process.exitStatus() == QProcess::NormalExit)
        result.exitCode = process.exitCode();
    result.errors = QString::fromLocal8Bit(process.readAllStandardError());
    return result;
}

QString render()
{
    return QStringLiteral(TITLESCENE_RENDER);
}

QString inspect()
{
    return QStringLiteral(TITLESCENE_INSPECT);
}

QString templatePath(const QString &name)
{
    return QStringLiteral(TITLESCENE_TEMPLATES "/") + name;
}

QString noSpace()
{
    return QStringLiteral("No space left on device");
}

Project smallProject()
{
    Title bar;
    bar.name = QStringLiteral("Bar");
    bar.svg = readTestData(QStringLiteral("editor-templates/bar.svg"));
    return {QSize(64, 36), 10 * frameLength, {bar}};
}

// The reason of an export that fails; empty for one that does not.
QString failureOfExport(const Project &project, const QString &folder)
{
    PngExport exporting(project, folder);
    QSignalSpy failed(&exporting, &PngExport::failed);
    QSignalSpy finished(&exporting, &PngExport::finished);
    exporting.start();
    if (!QTest::qWaitFor([&] { return failed.count() + finished.count() > 0; }, millisecondsToWait))
        return QStringLiteral("The export does not end.");
    return failed.isEmpty() ? QString() : failed.first().first().toString();
}

#define NEED_SMALL_DISK(disk) \
    if (!(disk).problem().isEmpty()) \
    QSKIP(qPrintable((disk).problem()))

} // namespace

// What programs write is complete or absent, also where there is no room for it.
class TestFullDisk : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void filesAreCompleteOrAsTheyWere_data();
    void filesAreCompleteOrAsTheyWere();
    void replacedFilesKeepWhatTheyAre();
    void namesAreAsLongAsTheyMayBe();
    void refusesWithTheSystemsWords_data();
    void refusesWithTheSystemsWords();
    void framesAreCompleteOrAbsent_data();
    void framesAreCompleteOrAbsent();
    void singleFilesAreKept_data();
    void singleFilesAreKept();
    void singleFilesAreAbsentAtALimit_data();
    void singleFilesAreAbsentAtALimit();
    void exportOfTheEditorKeepsGoodPictures();
    void projectOfTheEditorIsKept();
    void reportsStandardOutput_data();
    void reportsStandardOutput();
};

void TestFullDisk::filesAreCompleteOrAsTheyWere_data()
{
    QTest::addColumn<int>("pages");
    QTest::addColumn<int>("limit");
    QTest::addColumn<QString>("words");

    QTest::newRow("a small disk") << 16 << 0 << noSpace();
    QTest::newRow("a limit for files") << 0 << 20000 << QStringLiteral("File too large");
}

// Against a plain list of what each file holds. Sizes are about those at which buffers, pages, the
// disk and the limit end.
void TestFullDisk::filesAreCompleteOrAsTheyWere()
{
    QFETCH(int, pages);
    QFETCH(int, limit);
    QFETCH(QString, words);

    std::unique_ptr<SmallDisk> disk;
    std::unique_ptr<FileSizeLimit> sizeLimit;
    const QTemporaryDir plainFolder;
    QDir folder(plainFolder.path());
    if (pages > 0) {
        disk = std::make_unique<SmallDisk>(pages);
        NEED_SMALL_DISK(*disk);
        folder.setPath(disk->path());
    } else {
        sizeLimit = std::make_unique<FileSizeLimit>(limit);
    }

    std::mt19937 random(1);
    const auto number = [&random](int most) { return int(random() % unsigned(most + 1)); };
    const int ends[] = {0, 1, 4096, 8192, 16384, 20000, 32768, 65536};
    Contents expected;
    int written = 0;
    int refused = 0;
    for (int i = 0; i < 2000; ++i) {
        const QString name = QStringLiteral("file-%1").arg(number(3));
        const int size = qMax(0, ends[number(int(std::size(ends)) - 1)] + number(2) - 1);
        const QByteArray bytes(size, char('a' + number(25)));
        try {
            writeFile(folder.filePath(name), bytes);
            expected.insert(name, bytes);
            ++written;
        } catch (const Failure &failure) {
            QCOMPARE(failure.reason(), words);
            QCOMPARE(failure.message(), folder.filePath(name) + QStringLiteral(": ") + words);
            ++refused;
        }
        QVERIFY(contentsOf(folder.path()) == expected);
        if (number(9) == 0 && QFile::remove(folder.filePath(name)))
            expected.remove(name);
    }
    QVERIFY2(written > 200 && refused > 200,
             qPrintable(QStringLiteral("%1 written, %2 refused").arg(written).arg(refused)));
}

void TestFullDisk::replacedFilesKeepWhatTheyAre()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("file"));
    const QString link = folder.filePath(QStringLiteral("link"));
    writeFile(path, "first");
    const auto usual = QFile::permissions(path);
    const auto unusual = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser
            | QFile::ExeOwner | QFile::ExeUser;
    QVERIFY(usual != unusual);
    QVERIFY(QFile::setPermissions(path, unusual));
    QVERIFY(QFile::link(path, link));

    writeFile(link, "second");
    QCOMPARE(QFile::permissions(path), unusual);
    QVERIFY(QFileInfo(link).isSymLink());
    QCOMPARE(contentsOf(folder.path()),
             (Contents{{QStringLiteral("file"), "second"}, {QStringLiteral("link"), "second"}}));

    QFile plain(folder.filePath(QStringLiteral("plain")));
    QVERIFY(plain.open(QIODevice::WriteOnly));
    QCOMPARE(usual, plain.permissions());
}

void TestFullDisk::namesAreAsLongAsTheyMayBe()
{
    const QTemporaryDir folder;
    const QString name(255, QLatin1Char('n'));
    writeFile(folder.filePath(name), "content");
    QCOMPARE(contentsOf(folder.path()), (Contents{{name, "content"}}));
}

void TestFullDisk::refusesWithTheSystemsWords_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("words");

    QTest::newRow("no folder") << QStringLiteral("/no/such/file")
                               << QStringLiteral("No such file or directory");
    QTest::newRow("a file as folder")
            << QStringLiteral("/etc/passwd/file") << QStringLiteral("Not a directory");
    QTest::newRow("a folder") << QStringLiteral("/etc") << QStringLiteral("is not a regular file");
    QTest::newRow("a device") << QStringLiteral("/dev/full")
                              << QStringLiteral("is not a regular file");
}

void TestFullDisk::refusesWithTheSystemsWords()
{
    QFETCH(QString, path);
    QFETCH(QString, words);

    QString reason;
    try {
        writeFile(path, "content");
    } catch (const Failure &failure) {
        reason = failure.reason();
    }
    QCOMPARE(reason, words);
}

void TestFullDisk::framesAreCompleteOrAbsent_data()
{
    QTest::addColumn<QString>("jobs");

    QTest::newRow("one process") << QStringLiteral("1");
    QTest::newRow("two workers") << QStringLiteral("2");
}

void TestFullDisk::framesAreCompleteOrAbsent()
{
    QFETCH(QString, jobs);

    const SmallDisk disk(16);
    NEED_SMALL_DISK(disk);
    const QStringList command{render(),
                              templatePath(QStringLiteral("lower-third.svg")),
                              QStringLiteral("--size"),
                              QStringLiteral("64x36"),
                              QStringLiteral("-o"),
                              disk.path(),
                              QStringLiteral("--jobs"),
                              jobs};
    const Result first = runInShell(QStringLiteral("\"$@\""), command);
    QCOMPARE(first.exitCode, 1);
    QVERIFY2(first.errors.contains(noSpace()), qPrintable(first.errors));
    QVERIFY2(first.errors.contains(QStringLiteral("/frame-000")), qPrintable(first.errors));
    QCOMPARE(first.errors.count(QLatin1Char('\n')), 1);
    const Contents pictures = contentsOf(disk.path());
    QCOMPARE(pictures.size(), 16);
    for (const QByteArray &picture : pictures)
        QCOMPARE(QImage::fromData(picture).size(), QSize(64, 36));

    const Result second = runInShell(QStringLiteral("\"$@\""), command);
    QCOMPARE(second.exitCode, 1);
    QVERIFY2(second.errors.contains(noSpace()), qPrintable(second.errors));
    QVERIFY(contentsOf(disk.path()) == pictures);
}

void TestFullDisk::singleFilesAreKept_data()
{
    QTest::addColumn<QStringList>("command");
    QTest::addColumn<int>("exitCode");

    const QString opener = templatePath(QStringLiteral("opener.svg"));
    QTest::newRow("contact sheet")
            << QStringList{render(), opener, QStringLiteral("--contact-sheet")} << 1;
    QTest::newRow("plot") << QStringList{inspect(), opener, QStringLiteral("--quiet"),
                                         QStringLiteral("--plot")}
                          << 2;
}

void TestFullDisk::singleFilesAreKept()
{
    QFETCH(QStringList, command);
    QFETCH(int, exitCode);

    const SmallDisk disk(2);
    NEED_SMALL_DISK(disk);
    const QString path = disk.filePath(QStringLiteral("file"));
    writeFile(path, "good");
    writeFile(disk.filePath(QStringLiteral("filling")), QByteArray(SmallDisk::pageSize, 'f'));
    const Contents before = contentsOf(disk.path());

    const Result result = runInShell(QStringLiteral("\"$@\""), command + QStringList(path));
    QCOMPARE(result.exitCode, exitCode);
    QVERIFY2(result.errors.endsWith(path + QStringLiteral(": ") + noSpace() + QLatin1Char('\n')),
             qPrintable(result.errors));
    QVERIFY(contentsOf(disk.path()) == before);
}

void TestFullDisk::singleFilesAreAbsentAtALimit_data()
{
    singleFilesAreKept_data();
}

void TestFullDisk::singleFilesAreAbsentAtALimit()
{
    QFETCH(QStringList, command);
    QFETCH(int, exitCode);

    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("file"));
    const Result result =
            runInShell(QStringLiteral("ulimit -f 0 && exec \"$@\""), command + QStringList(path));
    QCOMPARE(result.exitCode, exitCode);
    QVERIFY2(result.errors.endsWith(path + QStringLiteral(": File too large\n")),
             qPrintable(result.errors));
    QCOMPARE(contentsOf(folder.path()), Contents());
}

void TestFullDisk::exportOfTheEditorKeepsGoodPictures()
{
    const SmallDisk disk(4);
    NEED_SMALL_DISK(disk);
    const Project project = smallProject();
    const QString failing = QStringLiteral(": ") + noSpace();
    QCOMPARE(failureOfExport(project, disk.path()),
             disk.filePath(PngExport::fileName(4)) + failing);
    const Contents pictures = contentsOf(disk.path());
    QCOMPARE(pictures.size(), 4);
    for (const QByteArray &picture : pictures)
        QCOMPARE(QImage::fromData(picture).size(), project.canvas);

    QCOMPARE(failureOfExport(project, disk.path()),
             disk.filePath(PngExport::fileName(0)) + failing);
    QVERIFY(contentsOf(disk.path()) == pictures);
}

void TestFullDisk::projectOfTheEditorIsKept()
{
    const SmallDisk disk(2);
    NEED_SMALL_DISK(disk);
    const QString path = disk.filePath(QStringLiteral("mine.titles"));
    QString error;
    QVERIFY2(writeProject(smallProject(), path, &error), qPrintable(error));
    writeFile(disk.filePath(QStringLiteral("filling")), QByteArray(SmallDisk::pageSize, 'f'));
    const Contents before = contentsOf(disk.path());

    QVERIFY(!writeProject(smallProject(), path, &error));
    QCOMPARE(error, noSpace());
    QVERIFY(contentsOf(disk.path()) == before);
}

void TestFullDisk::reportsStandardOutput_data()
{
    QTest::addColumn<QStringList>("command");
    QTest::addColumn<QString>("redirection");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("words");

    const QString opener = templatePath(QStringLiteral("opener.svg"));
    const auto add = [](const char *name, const QStringList &command, int exitCode) {
        QTest::addRow("full: %s", name)
                << command << QStringLiteral(">/dev/full") << exitCode << noSpace();
        QTest::addRow("closed: %s", name) << command << QStringLiteral(">&-") << exitCode
                                          << QStringLiteral("Bad file descriptor");
    };
    add("render --raw", {render(), opener, QStringLiteral("--raw")}, 1);
    add("render --help", {render(), QStringLiteral("--help")}, 1);
    add("render --version", {render(), QStringLiteral("--version")}, 1);
    add("inspect", {inspect(), opener}, 2);
    add("inspect --json", {inspect(), opener, QStringLiteral("--json")}, 2);
    add("inspect --help", {inspect(), QStringLiteral("--help")}, 2);
    add("inspect --version", {inspect(), QStringLiteral("--version")}, 2);
}

void TestFullDisk::reportsStandardOutput()
{
    QFETCH(QStringList, command);
    QFETCH(QString, redirection);
    QFETCH(int, exitCode);
    QFETCH(QString, words);

    const Result result = runInShell(QStringLiteral("exec \"$@\" ") + redirection, command);
    QCOMPARE(result.errors,
             QStringLiteral("%1: standard output: %2\n")
                     .arg(QFileInfo(command.first()).fileName(), words));
    QCOMPARE(result.exitCode, exitCode);
}

QTEST_MAIN(TestFullDisk)
#include "tst_fulldisk.moc"
