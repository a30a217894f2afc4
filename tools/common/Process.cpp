// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "Process.h"

#include <QCoreApplication>
#include <QTextCodec>

namespace {

// A locale without an encoding of its own would lose the letters of file names.
void readFileNamesAsUtf8InPlainLocale()
{
#ifdef Q_OS_UNIX
    if (QTextCodec::codecForLocale()->name() == "US-ASCII")
        QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
#endif
}

} // namespace

void prepareProcess(const QString &name, const QString &version)
{
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
