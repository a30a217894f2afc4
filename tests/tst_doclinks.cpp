// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TitleTest.h"

#include <QDirIterator>
#include <QFileInfo>
#include <QSet>
#include <QStringList>

#include <vector>

/// What the documents name exists: tests, files, headings.
class DocLinksTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void linksLeadSomewhere_data();
    void linksLeadSomewhere();
    void namedTestsExist_data();
    void namedTestsExist();
    void quirksArePinned_data();
    void quirksArePinned();
    void architectureNamesEveryFile();
    void architectureNamesFilesThatExist();
    void architectureNamesCodeThatExists();
    void publicHeadersBelongToGroups();
};

namespace {

const QDir &sources()
{
    static const QDir folder(QStringLiteral(TITLESCENE_SOURCE_DIR));
    return folder;
}

QStringList namesBelow(const QString &folder, const QStringList &patterns)
{
    QStringList names;
    QDirIterator files(sources().filePath(folder), patterns, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext())
        names.append(sources().relativeFilePath(files.next()));
    names.sort();
    return names;
}

QStringList documentNames()
{
    const QStringList markdown{QStringLiteral("*.md")};
    QStringList names = sources().entryList(markdown, QDir::Files);
    for (const QLatin1String folder :
         {QLatin1String("docs"), QLatin1String("examples"), QLatin1String("templates")})
        names += namesBelow(folder, markdown);
    return names;
}

void addDocuments()
{
    QTest::addColumn<QString>("name");
    for (const QString &name : documentNames())
        QTest::newRow(qPrintable(name)) << name;
}

/// What the first group of a pattern matches, each once.
QStringList matches(const QString &text, const QString &pattern)
{
    QStringList found;
    auto all = QRegularExpression(pattern, QRegularExpression::MultilineOption).globalMatch(text);
    while (all.hasNext())
        found.append(all.next().captured(1));
    found.removeDuplicates();
    return found;
}

/// Examples of code may hold anything that looks like a link or a heading.
QString withoutCodeBlocks(QString text)
{
    return text.remove(QRegularExpression(
            QStringLiteral("^```.*?^```$"),
            QRegularExpression::MultilineOption | QRegularExpression::DotMatchesEverythingOption));
}

/// The anchors of a document's headings, as usual hosts of Markdown name them.
QStringList anchors(const QString &text)
{
    QStringList names;
    for (QString heading : matches(withoutCodeBlocks(text), QStringLiteral("^#+ (.*)$"))) {
        heading = heading.toLower().remove(QRegularExpression(QStringLiteral("[^\\w -]")));
        names.append(heading.replace(QLatin1Char(' '), QLatin1Char('-')));
    }
    return names;
}

QString testFile(const QString &test)
{
    return sources().filePath(QStringLiteral("tests/%1.cpp").arg(test));
}

/// The rows of a document's tables, without their headings: the cells of each, and its line.
struct TableRow
{
    QStringList cells;
    int line;
};

std::vector<TableRow> tableRows(const QString &documentName)
{
    std::vector<TableRow> rows;
    const QString text = readText(sources().filePath(documentName));
    bool isBody = false;
    int number = 0;
    for (const QString &line : text.split(QLatin1Char('\n'))) {
        ++number;
        if (isBody && line.startsWith(QLatin1String("| ")))
            rows.push_back({line.mid(2, line.size() - 4).split(QStringLiteral(" | ")), number});
        isBody = line.startsWith(QLatin1String("|---"))
                || (isBody && line.startsWith(QLatin1String("| ")));
    }
    return rows;
}

/// The files that the first column of the table of architecture.md names.
QStringList namesOfArchitecture()
{
    QStringList names;
    for (const TableRow &row : tableRows(QStringLiteral("docs/architecture.md")))
        names += matches(row.cells.first(), QStringLiteral("`([\\w/.]+)`"));
    return names;
}

/// A name in the table stands for itself, for a class or for a private header and its source.
QStringList filesNamed(const QString &name)
{
    const QString file = QStringLiteral("Scene/") + name;
    if (!name.contains(QLatin1Char('.')))
        return {file + QStringLiteral(".h"), file + QStringLiteral(".cpp")};
    if (name.endsWith(QLatin1String("_p.h")))
        return {file, file.left(file.size() - 4) + QStringLiteral(".cpp")};
    return {file};
}

} // namespace

void DocLinksTest::linksLeadSomewhere_data()
{
    addDocuments();
}

void DocLinksTest::linksLeadSomewhere()
{
    QFETCH(QString, name);
    const QString path = sources().filePath(name);
    const QString text = withoutCodeBlocks(readText(path));
    const QStringList links = matches(text, QStringLiteral("\\]\\(([^)\\s]+)\\)"))
            + matches(text, QStringLiteral("^\\[[^\\]]+\\]: (\\S+)$"));
    for (const QString &link : links) {
        if (link.contains(QLatin1String("://")))
            continue;
        const QString file = link.section(QLatin1Char('#'), 0, 0);
        const QString anchor = link.section(QLatin1Char('#'), 1);
        const QString target = file.isEmpty() ? path : QFileInfo(path).dir().filePath(file);
        QVERIFY2(QFileInfo::exists(target), qPrintable(link));
        QVERIFY2(anchor.isEmpty() || anchors(readText(target)).contains(anchor), qPrintable(link));
    }
}

void DocLinksTest::namedTestsExist_data()
{
    addDocuments();
}

void DocLinksTest::namedTestsExist()
{
    QFETCH(QString, name);
    const QString text = readText(sources().filePath(name));
    for (const QString &test : matches(text, QStringLiteral("\\b(tst_[a-z]\\w*)")))
        QVERIFY2(QFileInfo::exists(testFile(test)), qPrintable(test));
}

void DocLinksTest::quirksArePinned_data()
{
    QTest::addColumn<QString>("pins");
    for (const TableRow &row : tableRows(QStringLiteral("docs/quirks.md"))) {
        QTest::addRow("line %d: %.40s", row.line, qPrintable(row.cells.first()))
                << row.cells.last();
    }
}

/// The last column names functions of tests: `tst_a` first, second, `tst_b` third
void DocLinksTest::quirksArePinned()
{
    QFETCH(QString, pins);
    static const QRegularExpression pin(QStringLiteral("^(?:`(tst_\\w+)` )?(\\w+)$"));
    QString test;
    for (const QString &part : pins.split(QStringLiteral(", "))) {
        const QRegularExpressionMatch match = pin.match(part);
        QVERIFY2(match.hasMatch(), qPrintable(part));
        if (!match.captured(1).isEmpty())
            test = match.captured(1);
        const QString slot = QStringLiteral("    void %1();\n").arg(match.captured(2));
        QVERIFY2(readText(testFile(test)).contains(slot), qPrintable(test + slot));
    }
}

void DocLinksTest::architectureNamesEveryFile()
{
    QSet<QString> named;
    for (const QString &name : namesOfArchitecture()) {
        for (const QString &file : filesNamed(name))
            named.insert(file);
    }
    const QStringList patterns{QStringLiteral("*.h"), QStringLiteral("*.cpp")};
    for (const QString &file : namesBelow(QStringLiteral("Scene"), patterns))
        QVERIFY2(named.contains(file), qPrintable(file));
}

void DocLinksTest::architectureNamesFilesThatExist()
{
    for (const QString &name : namesOfArchitecture()) {
        const QString first = filesNamed(name).constFirst();
        QVERIFY2(QFileInfo::exists(sources().filePath(first)), qPrintable(first));
    }
}

/// Functions, members and classes are words of the library's sources.
void DocLinksTest::architectureNamesCodeThatExists()
{
    QString code;
    const QStringList patterns{QStringLiteral("*.h"), QStringLiteral("*.cpp"),
                               QStringLiteral("CMakeLists.txt")};
    for (const QString &file : namesBelow(QStringLiteral("Scene"), patterns))
        code += readText(sources().filePath(file));
    const QString text =
            withoutCodeBlocks(readText(sources().filePath(QStringLiteral("docs/architecture.md"))));
    const QStringList names =
            matches(text, QStringLiteral("`(?:\\w+::)?([A-Za-z_]\\w+)(?:\\(\\))?`"));
    QVERIFY(names.size() > 30);
    for (const QString &name : names) {
        const QRegularExpression word(QStringLiteral("\\b%1\\b").arg(name));
        const bool isTest = name.startsWith(QLatin1String("tst_"));
        QVERIFY2(isTest || code.contains(word), qPrintable(name));
    }
}

/// The API documentation lists the classes by the groups that docs/api defines.
void DocLinksTest::publicHeadersBelongToGroups()
{
    QStringList groups;
    for (const QString &file : namesBelow(QStringLiteral("docs/api"), {QStringLiteral("*.dox")}))
        groups +=
                matches(readText(sources().filePath(file)), QStringLiteral("\\\\defgroup (\\w+)"));
    QCOMPARE(groups.size(), 4);
    for (const QString &file : namesBelow(QStringLiteral("Scene"), {QStringLiteral("*.h")})) {
        if (file.endsWith(QLatin1String("_p.h")))
            continue;
        const QString text = readText(sources().filePath(file));
        const QStringList used = matches(text, QStringLiteral("/// \\\\ingroup (\\w+)"));
        QVERIFY2(used.size() == 1 && groups.contains(used.first()), qPrintable(file));
    }
}

QTEST_MAIN(DocLinksTest)
#include "tst_doclinks.moc"
