// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "HostileTitles.h"
#include "TitleTest.h"

#include <QProcess>
#include <QTemporaryDir>

#include <sys/inotify.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <memory>

// Each hostile title in processes of its own, which do with it all that an editor does and what
// the command does: they end by themselves, within a time, a memory and a stack, and open no file
// that the title names.

namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr bool isSanitized = true;
#else
constexpr bool isSanitized = false;
#endif

constexpr rlim_t kibibyte = 1024;
constexpr rlim_t mostMemory = 1024 * 1024 * kibibyte;
constexpr rlim_t processorSeconds = isSanitized ? 60 : 10;
// Frames of functions are larger with sanitizers.
constexpr rlim_t stackSize = (isSanitized ? 4096 : 512) * kibibyte;
// A process that waits for a pipe takes no processor time. Far more than a busy machine needs.
constexpr int longestWait = 120'000; // ms

void setLimit(__rlimit_resource resource, rlim_t value)
{
    const rlimit limit{value, value};
    setrlimit(resource, &limit);
}

/// A process with limits; past them it is killed, fails to allocate or crashes.
class LimitedProcess : public QProcess
{
protected:
    void setupChildProcess() override
    {
        setLimit(RLIMIT_CPU, processorSeconds);
        setLimit(RLIMIT_STACK, stackSize);
        setLimit(RLIMIT_CORE, 0);
        // Sanitizers reserve terabytes of addresses: there, the memory in use is looked at.
        if (!isSanitized)
            setLimit(RLIMIT_AS, mostMemory);
    }
};

/// Of the process that took most of all so far.
rlim_t peakOfProcesses()
{
    rusage usage{};
    getrusage(RUSAGE_CHILDREN, &usage);
    return rlim_t(usage.ru_maxrss) * kibibyte;
}

/// Notices whatever is opened in a folder.
class OpenWatch
{
public:
    explicit OpenWatch(const QString &folder) : m_queue(inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
    {
        m_watches = inotify_add_watch(m_queue, QFile::encodeName(folder).constData(), IN_OPEN) >= 0;
    }
    ~OpenWatch() { close(m_queue); }

    bool watches() const { return m_watches; }

    /// The names of what was opened since the last call.
    QByteArrayList opened()
    {
        QByteArrayList names;
        alignas(inotify_event) char buffer[16 * 1024];
        for (;;) {
            const ssize_t size = read(m_queue, buffer, sizeof buffer);
            if (size <= 0)
                return names;
            for (const char *at = buffer; at < buffer + size;) {
                const auto *event = reinterpret_cast<const inotify_event *>(at);
                names += event->len > 0 ? QByteArray(event->name) : QByteArray(".");
                at += sizeof(inotify_event) + event->len;
            }
        }
    }

private:
    Q_DISABLE_COPY(OpenWatch)

    int m_queue;
    bool m_watches;
};

bool write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

} // namespace

class HostileProcessesTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void watchSeesWhatIsOpened();
    void processesHaveTheLimits();
    void refusedTitle_data();
    void refusedTitle();
    void harmlessTitle_data();
    void harmlessTitle();
    void oddTitle_data();
    void oddTitle();
    void titleNamingFile_data();
    void titleNamingFile();

private:
    std::unique_ptr<QProcess> start(const QString &program, const QStringList &arguments);
    void handle(const QByteArray &text);
    void addRows(const std::vector<HostileTitle> &titles);

    QTemporaryDir m_folder;   // of the titles
    QTemporaryDir m_canaries; // what titles name, and where the processes are
    std::unique_ptr<OpenWatch> m_watch;
    QVector<int> m_exitCodes; // of both processes for the last title
    QString m_messages;
};

void HostileProcessesTest::initTestCase()
{
    const QDir folder(m_canaries.path());
    QImage picture(8, 8, QImage::Format_RGB32);
    picture.fill(Qt::blue);
    QVERIFY(picture.save(folder.filePath(QStringLiteral("canary.png"))));
    QVERIFY(picture.save(folder.filePath(QStringLiteral("#canary.png"))));
    QVERIFY(write(folder.filePath(QStringLiteral("canary.css")), "rect { fill: #0000ff }"));
    QVERIFY(write(folder.filePath(QStringLiteral("canary.txt")), "secret"));
    QVERIFY(write(folder.filePath(QStringLiteral("canary.dtd")), "<!ENTITY x \"secret\">"));
    QVERIFY(write(folder.filePath(QStringLiteral("canary.svg")),
                  svgTitle(imageElement(folder.filePath(QStringLiteral("canary.svg")))).toUtf8()));
    const QString pipe = folder.filePath(QStringLiteral("canary.pipe"));
    QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    m_watch = std::make_unique<OpenWatch>(m_canaries.path());
    QVERIFY(m_watch->watches());
}

/// That the watch would tell.
void HostileProcessesTest::watchSeesWhatIsOpened()
{
    QCOMPARE(m_watch->opened(), QByteArrayList());
    readText(m_canaries.filePath(QStringLiteral("canary.txt")));
    QCOMPARE(m_watch->opened(), QByteArrayList({"canary.txt"}));
}

void HostileProcessesTest::processesHaveTheLimits()
{
    LimitedProcess process;
    process.setProgram(QStringLiteral("/bin/sh"));
    process.setArguments({QStringLiteral("-c"), QStringLiteral("ulimit -s; ulimit -t; ulimit -v")});
    process.start();
    QVERIFY(process.waitForFinished(longestWait));
    const QByteArrayList limits = process.readAllStandardOutput().trimmed().split('\n');
    QCOMPARE(limits.size(), 3);
    QCOMPARE(limits.at(0).toULongLong(), stackSize / kibibyte);
    QCOMPARE(limits.at(1).toULongLong(), processorSeconds);
    QCOMPARE(limits.at(2),
             isSanitized ? QByteArray("unlimited")
                         : QByteArray::number(qulonglong(mostMemory / kibibyte)));
}

std::unique_ptr<QProcess> HostileProcessesTest::start(const QString &program,
                                                      const QStringList &arguments)
{
    std::unique_ptr<QProcess> process = std::make_unique<LimitedProcess>();
    process->setWorkingDirectory(m_canaries.path());
    process->setStandardInputFile(QProcess::nullDevice());
    process->setStandardOutputFile(QProcess::nullDevice());
    process->setProgram(program);
    process->setArguments(arguments);
    process->start();
    return process;
}

/// Both processes at once.
void HostileProcessesTest::handle(const QByteArray &text)
{
    m_exitCodes.clear();
    m_messages.clear();
    const QString title = m_folder.filePath(QStringLiteral("title.svg"));
    QVERIFY(write(title, text));
    m_watch->opened();
    const std::unique_ptr<QProcess> processes[] = {
            start(QStringLiteral(TITLESCENE_HOSTILE_RUNNER), {title}),
            start(QStringLiteral(TITLESCENE_RENDER),
                  {title, QStringLiteral("-o"), m_folder.filePath(QStringLiteral("frames")),
                   QStringLiteral("--at"), QStringLiteral("0,500,2147483647"),
                   QStringLiteral("--size"), QStringLiteral("320x180")})};
    for (const std::unique_ptr<QProcess> &process : processes) {
        QVERIFY2(process->waitForFinished(longestWait), qPrintable(process->errorString()));
        const QString messages = QString::fromLocal8Bit(process->readAllStandardError());
        QVERIFY2(process->exitStatus() == QProcess::NormalExit, qPrintable(messages));
        m_exitCodes.append(process->exitCode());
        m_messages += messages;
    }
    QCOMPARE(m_watch->opened(), QByteArrayList());
    QVERIFY(peakOfProcesses() <= mostMemory);
}

void HostileProcessesTest::addRows(const std::vector<HostileTitle> &titles)
{
    QTest::addColumn<QByteArray>("text");
    for (const HostileTitle &title : titles)
        QTest::newRow(title.name) << title.text;
}

void HostileProcessesTest::refusedTitle_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("refusal");
    for (const RefusedTitle &title : refusedTitles())
        QTest::newRow(title.name) << title.text << title.refusal;
}

void HostileProcessesTest::refusedTitle()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, refusal);
    handle(text);
    QVERIFY2(m_exitCodes == QVector<int>({1, 1}), qPrintable(m_messages));
    QVERIFY2(m_messages.count(refusal) == 2, qPrintable(m_messages));
}

void HostileProcessesTest::harmlessTitle_data()
{
    addRows(harmlessTitles());
}

void HostileProcessesTest::harmlessTitle()
{
    QFETCH(QByteArray, text);
    handle(text);
    QVERIFY2(m_exitCodes == QVector<int>({0, 0}), qPrintable(m_messages));
}

void HostileProcessesTest::oddTitle_data()
{
    addRows(oddTitles());
}

/// Drawn or refused. The command reads other encodings, too, and wants a view box.
void HostileProcessesTest::oddTitle()
{
    QFETCH(QByteArray, text);
    handle(text);
    QCOMPARE(m_exitCodes.size(), 2);
    for (const int code : qAsConst(m_exitCodes))
        QVERIFY2(code == 0 || code == 1, qPrintable(m_messages));
}

void HostileProcessesTest::titleNamingFile_data()
{
    QTest::addColumn<QByteArray>("text");
    const QByteArray folder = QFile::encodeName(m_canaries.path());
    for (const HostileTitle &title : titlesNamingFolder())
        QTest::newRow(title.name) << QByteArray(title.text).replace("%1", folder);
    for (const HostileTitle &title : titlesNamingFile()) {
        for (const char *name : {"canary.png", "canary.css", "canary.pipe"})
            QTest::newRow(title.name + ": " + name)
                    << QByteArray(title.text).replace("%1", folder + '/' + name);
    }
}

void HostileProcessesTest::titleNamingFile()
{
    oddTitle();
    QVERIFY2(!m_messages.contains(QStringLiteral("secret")), qPrintable(m_messages));
}

QTEST_GUILESS_MAIN(HostileProcessesTest)

#include "tst_hostileprocesses.moc"
