// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "RoundTrip_p.h"

#include "TreeEdit_p.h"
#include "TreeWalk_p.h"

namespace {

/// Neighbouring texts become one, and blank ones get lost.
bool textSurvives(const QDomNode &text)
{
    const QString value = text.nodeValue();
    return text.nodeType() == QDomNode::TextNode && !value.trimmed().isEmpty()
            && !value.contains(QLatin1Char('\r')) && !text.previousSibling().isText();
}

bool nodeSurvives(const QDomNode &node)
{
    return node.isElement() || node.isComment() || (node.isText() && textSurvives(node));
}

} // namespace

bool survivesSaving(const QDomDocument &tree)
{
    if (!tree.doctype().name().isEmpty())
        return false;
    for (QDomNode node = tree.firstChild(); !node.isNull(); node = node.nextSibling()) {
        if (isXmlDeclaration(node))
            continue;
        for (TreeWalk walk(node); !walk.atEnd(); walk.next()) {
            if (!nodeSurvives(walk.node()))
                return false;
        }
    }
    return true;
}

void declareAsSaved(QDomDocument *tree)
{
    QDomProcessingInstruction declaration = tree->firstChild().toProcessingInstruction();
    const QString data = QStringLiteral("version='1.0' encoding='UTF-8'");
    if (isXmlDeclaration(declaration))
        declaration.setData(data);
    else
        tree->insertBefore(tree->createProcessingInstruction(QStringLiteral("xml"), data),
                           tree->firstChild());
}
