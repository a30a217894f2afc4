// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "Titles.h"

#include <Scene/SvgDocument.h>

#include <QDomDocument>
#include <QGuiApplication>

#include <sys/resource.h>

#include <cstdio>

// The most memory that a process needs which only loads one generated title, KiB:
//
//     peak_memory nothing|tree|document <elements> [<depth>]
//
// "tree" parses the text into a tree and keeps both; "document" constructs an SvgDocument;
// "nothing" only makes the text.

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const QString what = arguments.value(1);
    const QString text = generatedText({arguments.value(2).toInt(), arguments.value(3).toInt()});
    if (what == QLatin1String("tree")) {
        const QByteArray bytes = text.toUtf8();
        QDomDocument tree;
        tree.setContent(bytes);
    } else if (what == QLatin1String("document")) {
        const SvgDocument document(text);
    } else if (what != QLatin1String("nothing")) {
        std::fprintf(stderr, "usage: peak_memory nothing|tree|document <elements> [<depth>]\n");
        return 1;
    }
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    std::printf("%ld\n", usage.ru_maxrss);
    return 0;
}
