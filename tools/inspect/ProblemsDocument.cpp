// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "ProblemList.h"
#include "Understood.h"

#include <QRegularExpression>
#include <QSet>

#include <algorithm>

// The document as a whole: its size, its structure, and what saving does to it.

namespace {

bool isSvg(const SourceElement &element)
{
    return element.name.section(QLatin1Char(':'), -1) == QLatin1String("svg");
}

const SourceElement &rootOf(const Understood &title)
{
    return title.source().elements().front();
}

QString reasonForNoSize(const SourceElement &root, const QString &viewBox)
{
    static const QRegularExpression otherWhiteSpace(QStringLiteral("[\\n\\r\\t]"));
    if (root.name != QLatin1String("svg"))
        return QStringLiteral("a root with a prefix (%1) has no view box").arg(root.name);
    if (!root.attribute(QStringLiteral("viewBox")))
        return QStringLiteral("the root has no viewBox");
    if (viewBox.contains(otherWhiteSpace))
        return QStringLiteral("a line break or tab separates no numbers of the viewBox");
    if (viewBox.contains(QLatin1Char('.')))
        return QStringLiteral("a fraction in the viewBox counts as 0");
    return QStringLiteral("the viewBox is not four whole numbers with a width and a height");
}

void findMissingSize(const Understood &title, ProblemList &problems)
{
    if (!title.size().isEmpty())
        return;
    const SourceElement &root = rootOf(title);
    const QString viewBox = title.treeElement(0).attribute(QStringLiteral("viewBox"));
    problems.warn("view-box", root.placeOf(QStringLiteral("viewBox")),
                  reasonForNoSize(root, viewBox)
                          + QStringLiteral("; the title has no size and is not drawn"),
                  QStringLiteral("Write <svg viewBox=\"0 0 1920 1080\"> with whole numbers on one "
                                 "line and no prefix."));
}

// Drawing ends at the first end tag.
void findNestedRoots(const Understood &title, ProblemList &problems)
{
    const std::vector<SourceElement> &elements = title.source().elements();
    for (std::size_t number = 1; number < elements.size(); ++number) {
        if (isSvg(elements[number]))
            problems.warn("nested-svg", elements[number].place,
                          QStringLiteral("drawing ends at the end tag of a nested svg"),
                          QStringLiteral("Use a g element with a transform."));
    }
}

// The renderer draws them, but the document plays nothing in them.
void findPrefixes(const Understood &title, ProblemList &problems)
{
    static const QSet<QString> names{QStringLiteral("animate"),
                                     QStringLiteral("animateColor"),
                                     QStringLiteral("animateTransform"),
                                     QStringLiteral("clipPath"),
                                     QStringLiteral("defs"),
                                     QStringLiteral("use")};
    for (const SourceElement &element : title.source().elements()) {
        const int colon = element.name.indexOf(QLatin1Char(':'));
        if (colon >= 0 && names.contains(element.name.mid(colon + 1)))
            problems.warn(
                    "prefix", element.place,
                    QStringLiteral("%1 is not recognised because of its prefix").arg(element.name),
                    QStringLiteral("Make SVG the default namespace and leave the prefix "
                                   "out."));
    }
}

void findRepeatedIds(const Understood &title, ProblemList &problems)
{
    const std::vector<SourceElement> &elements = title.source().elements();
    for (int number = 0; number < int(elements.size()); ++number) {
        const SourceElement &element = elements[std::size_t(number)];
        const QString id = element.value(QStringLiteral("id"));
        if (!id.isEmpty() && title.elementWithId(id) != number)
            problems.note(
                    "repeated-id", element.placeOf(QStringLiteral("id")),
                    QStringLiteral("the id \"%1\" is that of an earlier element, too").arg(id),
                    QStringLiteral("Give each element an id of its own."));
    }
}

void findUndefinedEntities(const Understood &title, ProblemList &problems)
{
    for (const SourcePlaces::Entity &entity : title.source().undefinedEntities())
        problems.warn("undefined-entity", entity.place,
                      QStringLiteral("the title does not define the entity %1; nothing is drawn "
                                     "once the title has been saved, as for every animated frame")
                              .arg(entity.name),
                      QStringLiteral("Write the character itself."));
}

void findDocumentType(const Understood &title, ProblemList &problems)
{
    if (const std::optional<Place> place = title.source().documentType())
        problems.note("document-type", *place, QStringLiteral("saving drops the document type"),
                      QStringLiteral("Remove it; write characters instead of entities."));
}

// The number of letters before the first place where one of the texts has a space alone; -1 when
// there is none.
int lettersBeforeDifference(const QString &text, const QString &saved)
{
    int letters = 0;
    int i = 0;
    int j = 0;
    while (i < text.size() && j < saved.size()) {
        const bool isSpace = text.at(i) == QLatin1Char(' ');
        const bool isSavedSpace = saved.at(j) == QLatin1Char(' ');
        if (isSpace != isSavedSpace)
            return letters;
        if (!isSpace)
            ++letters;
        ++i;
        ++j;
    }
    return i == text.size() && j == saved.size() ? -1 : letters;
}

// Saving puts white space between elements that touch. A saved text with undefined entities can't
// be read.
void findTextsThatChange(const Understood &title, ProblemList &problems)
{
    if (!title.source().undefinedEntities().empty())
        return;
    const std::vector<SourceText> &texts = title.source().texts();
    const std::vector<SourceText> &savedTexts = title.savedTexts();
    for (std::size_t i = 0; i < texts.size() && i < savedTexts.size(); ++i) {
        const SourceText &text = texts[i];
        const int letters = lettersBeforeDifference(text.content, savedTexts[i].content);
        if (letters < 0)
            continue;
        const int owner = letters < int(text.owners.size()) ? text.owners[std::size_t(letters)]
                                                            : text.element;
        problems.warn("text-spacing", title.element(owner).place,
                      QStringLiteral("saving changes the space between the runs of this text: "
                                     "\"%1\" becomes \"%2\"")
                              .arg(text.content.left(60), savedTexts[i].content.left(60)),
                      QStringLiteral("Put a single run into each text, or let spaces separate the "
                                     "runs."));
    }
}

} // namespace

const std::vector<Check> &documentChecks()
{
    static const std::vector<Check> checks{
            findMissingSize,       findNestedRoots,  findPrefixes,       findRepeatedIds,
            findUndefinedEntities, findDocumentType, findTextsThatChange};
    return checks;
}
