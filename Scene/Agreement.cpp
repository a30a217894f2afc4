// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "Agreement_p.h"

#include "Admission_p.h"
#include "ElementIndex_p.h"
#include "RoundTrip_p.h"
#include "StartTags_p.h"
#include "SvgElement.h"
#include "TreeEdit_p.h"
#include "TreeText_p.h"

#include <algorithm>
#include <utility>

Agreement::Agreement(QBuffer *device, QDomDocument *tree, std::function<Places()> places)
    : m_device(device), m_tree(tree), m_places(std::move(places)), m_seen(bytes()),
      m_textSize(m_seen.size())
{
}

Agreement::~Agreement() = default;

Agreement::Verdict Agreement::verdict() const
{
    return isUntouched() || m_seen == bytes() ? m_verdict : Verdict::Unjudged;
}

Agreement::Relation Agreement::relation() const
{
    return isUntouched() ? m_relation : Relation::Apart;
}

QString Agreement::error() const
{
    if (!m_error.isEmpty())
        return m_error;
    switch (verdict()) {
    case Verdict::Refused:
        return m_textRefusal;
    case Verdict::FrameRefused:
        return m_frameRefusal;
    default:
        return m_leftOut;
    }
}

const QByteArray &Agreement::bytes() const
{
    return static_cast<const QBuffer *>(m_device)->buffer();
}

/// Not a copy, so only good until the bytes are written.
QByteArray Agreement::text() const
{
    return QByteArray::fromRawData(bytes().constData(), int(m_textSize));
}

bool Agreement::isUntouched() const
{
    return m_seen.constData() == bytes().constData();
}

qint64 Agreement::textSize() const
{
    return isUntouched() || m_seen == bytes() ? m_textSize : bytes().size();
}

void Agreement::settle()
{
    if (isUntouched())
        return;
    const qint64 size = textSize();
    if (m_seen != bytes())
        textChanged();
    m_textSize = size;
    m_seen = bytes();
}

void Agreement::textChanged()
{
    m_verdict = Verdict::Unjudged;
    treeChanged();
}

void Agreement::treeChanged()
{
    m_relation = Relation::Apart;
    m_tags.reset();
    m_frame.clear();
}

void Agreement::setRelation(Relation relation)
{
    m_relation = m_isHandedOut ? Relation::Apart : relation;
}

void Agreement::beginWriting()
{
    settle();
    m_seen.clear();
}

void Agreement::endWriting(qint64 start, qint64 written)
{
    if (written >= 0)
        m_textSize = start == 0 ? written : std::max(m_textSize, start + written);
    m_seen = bytes();
    textChanged();
}

bool Agreement::isAdmitted()
{
    settle();
    if (m_verdict == Verdict::Unjudged) {
        const QByteArray given = bytes().left(int(m_textSize));
        const Admission admission = admit(given);
        const bool isAdmitted = admission.refusal.isEmpty();
        m_verdict = isAdmitted ? Verdict::Admitted : Verdict::Refused;
        m_textRefusal = admission.refusal;
        m_leftOut = admission.leftOut;
        m_error.clear();
        if (isAdmitted && admission.text.constData() != given.constData()) {
            m_device->buffer() = admission.text;
            m_seen = bytes();
            m_textSize = m_seen.size();
        }
    }
    return m_verdict == Verdict::Admitted;
}

void Agreement::parse()
{
    settle();
    if (m_verdict == Verdict::FrameRefused)
        takeBackFrame();
    const bool isAdmitted = this->isAdmitted();
    if (m_relation == Relation::Parsed || m_relation == Relation::SavedAndParsed)
        return;
    if (m_relation == Relation::Saved && survivesSaving(*m_tree)) {
        declareAsSaved(m_tree);
        m_relation = Relation::SavedAndParsed;
        return;
    }
    fillTree(isAdmitted);
}

/// What a parser makes of broken text is no document.
void Agreement::fillTree(bool isParsed)
{
    forgetPlaces();
    // Text after the root makes the parser report an error, too, but the tree is complete then.
    if (isParsed)
        m_tree->setContent(text());
    else
        m_tree->clear();
    m_beforeDoubt.clear();
    setRelation(Relation::Parsed);
}

/// Whether the device can be written does not matter: what is in the buffer was never to be seen.
void Agreement::takeBackFrame()
{
    const QByteArray before = std::exchange(m_beforeDoubt, QByteArray());
    m_seen.clear();
    m_device->buffer().replace(0, before.size(), before);
    m_seen = bytes();
    textChanged();
    m_textSize = before.size();
    m_verdict = Verdict::Admitted;
}

bool Agreement::save()
{
    settle();
    return m_relation == Relation::TagsAhead ? saveTags()
                                             : saveWhole(QDomNode::EncodingFromTextStream);
}

bool Agreement::saveAsDeclared()
{
    settle();
    return saveWhole(QDomNode::EncodingFromDocument);
}

bool Agreement::saveWhole(QDomNode::EncodingPolicy policy)
{
    if (m_tree->isNull() || !m_device->isWritable() || !put(textOfTree(policy)))
        return false;
    saved(policy == QDomNode::EncodingFromTextStream ? Relation::Saved : Relation::Apart);
    return true;
}

/// The same as a whole save, at the cost of the tags that have changed.
bool Agreement::saveTags()
{
    if (!m_device->isWritable())
        return false;
    std::unique_ptr<StartTags> tags = std::move(m_tags); // the write would drop them
    if (!put(tags->rewritten(text(), m_elements->elements())))
        return false;
    saved(Relation::Saved);
    m_tags = std::move(tags);
    return true;
}

/// Over the text, from its start.
bool Agreement::put(const QByteArray &text)
{
    return m_device->seek(0) && m_device->write(text) == text.size();
}

void Agreement::saved(Relation relation)
{
    setRelation(relation);
    if (m_tree->documentElement().isNull())
        return; // no text that could be parsed
    m_verdict = m_beforeDoubt.isNull() ? Verdict::Admitted : Verdict::FrameRefused;
}

QByteArray Agreement::textOfTree() const
{
    return textOfTree(QDomNode::EncodingFromTextStream);
}

QByteArray Agreement::textOfTree(QDomNode::EncodingPolicy policy) const
{
    return ::textOfTree(*m_tree, policy, int(m_textSize));
}

void Agreement::handOut()
{
    m_isHandedOut = true;
    forgetPlaces();
    treeChanged();
}

void Agreement::edit(const SvgElement &place, const QDomNode &root, const QString &attributeName,
                     const std::function<bool(const QDomElement &)> &change)
{
    settle();
    const bool isInTree = !m_isHandedOut && root == m_tree->documentElement();
    const int number = isInTree ? elements().number(place) : ElementIndex::none;
    if (isInTree && number == ElementIndex::none)
        return;
    const QDomElement element = isInTree ? m_elements->elements()[std::size_t(number)]
                                         : place.findNode(root).toElement();
    const bool hadAttribute = element.hasAttribute(attributeName);
    std::optional<QString> former;
    if (m_isTrial && hadAttribute)
        former = element.attribute(attributeName);
    if (!change(element))
        return;
    if (m_isTrial)
        m_formerValues.push_back({element, number, attributeName, former});
    noteChange(number, attributeName, hadAttribute && element.hasAttribute(attributeName));
}

void Agreement::noteChange(int number, const QString &name, bool isOfValueOnly)
{
    const bool isTextOfTree = m_relation == Relation::Saved
            || m_relation == Relation::SavedAndParsed || m_relation == Relation::TagsAhead;
    if (!isTextOfTree || number == ElementIndex::none) {
        treeChanged();
        return;
    }
    m_frame.clear();
    m_relation = Relation::TagsAhead;
    // What stands in the tags does not matter, so the tree may already be ahead of the text.
    if (!m_tags)
        m_tags = std::make_unique<StartTags>(text(), m_tree->documentElement(),
                                             m_elements->elements());
    if (isOfValueOnly)
        m_tags->noteValueChange(number, name);
    else
        m_tags->noteChange(number);
}

void Agreement::beginTrial()
{
    m_isTrial = true;
}

void Agreement::takeBackEdits()
{
    m_isTrial = false;
    for (auto former = m_formerValues.rbegin(); former != m_formerValues.rend(); ++former) {
        if (former->value)
            former->element.setAttribute(former->name, *former->value);
        else
            former->element.removeAttribute(former->name);
        noteChange(former->number, former->name, false);
    }
    m_formerValues.clear();
}

void Agreement::forgetPlaces()
{
    if (m_relation == Relation::TagsAhead)
        m_relation = Relation::Apart;
    m_tags.reset();
    m_elements.reset();
    m_frame.clear();
}

const ElementIndex &Agreement::elements()
{
    if (!m_elements)
        m_elements = std::make_unique<ElementIndex>(m_tree->documentElement(), m_places());
    return *m_elements;
}

bool Agreement::isSaved() const
{
    const Relation now = relation();
    return now == Relation::Saved || now == Relation::SavedAndParsed;
}

bool Agreement::isShowing(const std::vector<FrameStep> &steps) const
{
    return isSaved() && steps == m_frame;
}

void Agreement::beginDoubt()
{
    if (!m_beforeDoubt.isNull())
        return;
    settle();
    m_frameRefusal = QStringLiteral("a frame has not been judged");
    const bool isTextOfTree = m_verdict == Verdict::Admitted
            && (m_relation == Relation::Parsed || m_relation == Relation::Saved
                || m_relation == Relation::SavedAndParsed);
    m_beforeDoubt = isTextOfTree ? QByteArray(bytes().constData(), int(m_textSize)) : textOfTree();
}

void Agreement::show(std::vector<FrameStep> steps, const QString &refusal)
{
    m_frame = std::move(steps);
    m_frameRefusal = refusal;
    m_error.clear();
    if (refusal.isEmpty())
        m_beforeDoubt.clear();
    m_verdict = refusal.isEmpty() ? Verdict::Admitted : Verdict::FrameRefused;
}
