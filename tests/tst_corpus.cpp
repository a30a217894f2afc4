// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TitleTest.h"

#include <Scene/Admission_p.h>

#include <QApplication>
#include <QDirIterator>
#include <QLoggingCategory>
#include <QProcess>

#include <cstdio>

// Animated SVG files that others have made, for other programs: all of them are titles. The files
// are fetched; where that is not possible, the test ends as skipped.

namespace {

constexpr int skipped = 77;

QString corpusFolder()
{
    return QStringLiteral(TITLESCENE_CORPUS);
}

/// Whether the files are there; says why not.
bool fetchCorpus()
{
    QProcess process;
    process.start(QStringLiteral(TITLESCENE_CMAKE),
                  {QStringLiteral("-DFOLDER=") + corpusFolder(), QStringLiteral("-P"),
                   QStringLiteral(TITLESCENE_FETCH_CORPUS)});
    constexpr int longestWait = 300'000; // ms
    if (process.waitForFinished(longestWait) && process.exitStatus() == QProcess::NormalExit
        && process.exitCode() == 0)
        return true;
    std::fprintf(stderr, "skipped, the files cannot be fetched:\n%s\n",
                 process.readAllStandardError().constData());
    return false;
}

/// What admission replaces, if its content is not allowed.
bool mayBeChanged(const QByteArray &text)
{
    return text.contains("<?xml-stylesheet") || text.contains("<image");
}

} // namespace

class CorpusTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void isLarge();
    void isAdmitted_data();
    void isAdmitted();
};

/// What the renderer does not understand it says in a category of its own.
void CorpusTest::init()
{
    QLoggingCategory::setFilterRules(QStringLiteral("qt.svg.warning=false"));
}

void CorpusTest::isLarge()
{
    int files = 0;
    int animated = 0;
    QDirIterator file(corpusFolder(), {QStringLiteral("*.svg")}, QDir::Files,
                      QDirIterator::Subdirectories);
    for (; file.hasNext(); ++files)
        animated += readText(file.next()).contains(QStringLiteral("<animate")) ? 1 : 0;
    QCOMPARE(files, 835);
    QCOMPARE(animated, 499);
}

void CorpusTest::isAdmitted_data()
{
    QTest::addColumn<QString>("path");
    const QDir folder(corpusFolder());
    QDirIterator file(folder.path(), {QStringLiteral("*.svg")}, QDir::Files,
                      QDirIterator::Subdirectories);
    while (file.hasNext()) {
        const QString path = file.next();
        QTest::newRow(qPrintable(folder.relativeFilePath(path))) << path;
    }
}

void CorpusTest::isAdmitted()
{
    QFETCH(QString, path);
    const QString text = readText(path);
    const QByteArray bytes = text.toUtf8();
    const Admission admission = admit(bytes);
    QCOMPARE(admission.refusal, QString());
    QVERIFY(admission.text == bytes || mayBeChanged(bytes));
    SvgDocument document(text);
    QVERIFY2(document.isLoaded(), qPrintable(document.errorString()));
    document.setBounds(QRectF(0, 0, 64, 36));
    if (path.contains(QStringLiteral("svg-css-loaders"))) // their style sheet animates them
        return;
    const bool isSeen = !isBlank(renderAt(document, 0)) || !isBlank(renderAt(document, 500));
    QVERIFY(isSeen);
}

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    if (!fetchCorpus())
        return skipped;
    CorpusTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_corpus.moc"
