// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "Process.h"

#include "Signals.h"

#include <QCoreApplication>
#include <QTextCodec>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <unistd.h>
#endif

namespace {

// A locale without an encoding of its own would lose the letters of file names.
void readFileNamesAsUtf8InPlainLocale()
{
#ifdef Q_OS_UNIX
    if (QTextCodec::codecForLocale()->name() == "US-ASCII")
        QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
#endif
}

// A file that is opened would otherwise take the place of a standard stream that is closed, and get
// what is meant for that. What takes it here can't be read or written, like what is closed.
void keepPlacesOfClosedStreams()
{
#ifdef Q_OS_UNIX
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(stream, F_GETFD) < 0)
            open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
    }
#endif
}

} // namespace

void prepareProcess(const QString &name, const QString &version)
{
    keepPlacesOfClosedStreams();
    reportWriteSignalsAsErrors();
    readFileNamesAsUtf8InPlainLocale();

    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");

    // Attributes come out of a document in hash order: every process must see the same one.
    qSetGlobalQHashSeed(0);

    QCoreApplication::setApplicationName(name);
    QCoreApplication::setApplicationVersion(version);
}

QStringList argumentList(int argc, char **argv)
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments += QString::fromLocal8Bit(argv[i]);
    return arguments;
}
