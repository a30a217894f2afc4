// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include "FrameStep_p.h"

#include <QBuffer>
#include <QByteArray>
#include <QDomDocument>
#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

class ElementIndex;
class StartTags;
class SvgElement;

/// A document's text and its tree, how far the one follows from the other, and what was made of
/// either.
///
/// Everything that reads, judges, parses or saves the text, and everything that changes the tree,
/// goes through here; so does every write to the device. The states, and what holds in each:
///
/// - The text is the bytes of the buffer up to textSize(). Nobody else has touched them as long as
///   they share their memory with m_seen; settle() looks after that, and takes all bytes for the
///   text when others have come in their place.
/// - Verdict says who wrote the text and whether parsers may see it. FrameRefused only while
///   m_beforeDoubt has a text.
/// - Relation says how the tree and the text hang together. Always Apart for a tree that was handed
///   out, since somebody may change it at any time.
/// - m_elements are those of places() in the tree; there are none while the tree is handed out.
/// - m_tags, if there are any, are those of m_elements in the text; only while the relation is
///   Saved, SavedAndParsed or TagsAhead. They have unwritten changes in TagsAhead only.
/// - m_frame, if it is not empty, are the steps that tree and text show.
/// - m_beforeDoubt has a text while a frame is in the tree that is, or may yet be, refused: the
///   text of the tree before it, which was admitted.
///
/// A save to a device that can't be written changes nothing, so tree and text stay in the relation
/// that they are in; a write that fails half-way puts them Apart.
class Agreement
{
public:
    /// What is known of the text.
    enum class Verdict {
        Unjudged,     ///< somebody else has written it
        Admitted,     ///< parsers may see it
        Refused,      ///< somebody else has written it, and no parser may see it
        FrameRefused, ///< it shows a frame that may not be drawn
    };

    /// How the tree and the text hang together.
    enum class Relation {
        Apart,          ///< neither follows from the other
        Parsed,         ///< parsing the text gives the tree
        Saved,          ///< saving the tree gives the text
        SavedAndParsed, ///< both: the tree comes out of saving and parsing as it was
        TagsAhead, ///< as Saved, but for the attributes whose changes the start tags have noted
    };

    using Places = std::vector<const SvgElement *>;

    /// Starts with the text in the buffer, Unjudged, and a tree that is Apart from it. All
    /// arguments have to outlive the object; \a places gives the places that the document knows.
    Agreement(QBuffer *device, QDomDocument *tree, std::function<Places()> places);
    ~Agreement();

    Verdict verdict() const;
    Relation relation() const;

    /// What was wrong last, why the text is refused, or what it lost; one line, or empty.
    QString error() const;

    /// Says what is wrong although the text is admitted, until another text or frame is judged.
    void setError(const QString &error) { m_error = error; }

    /// \name The device
    /// @{

    /// The length of the text, bytes.
    qint64 textSize() const;

    /// To be called before every access to the bytes, and before the device writes them: notices
    /// what has become of them without the device.
    void settle();

    /// To be called right before the device writes, so that its bytes are not copied.
    void beginWriting();

    /// The device has written that many bytes from \a start on; a negative number when it failed.
    /// Writing at the start begins a new text.
    void endWriting(qint64 start, qint64 written);

    /// @}
    /// \name From text to tree
    /// @{

    /// Whether the text may be given to parsers. A text that somebody else has written is judged
    /// once, and loses what refers to other files. Our own saves may, unless they show a frame that
    /// was refused.
    bool isAdmitted();

    /// Fills the tree from the text, unless that would change nothing. The tree of a text that is
    /// refused is null. A frame that was refused is taken back: text and tree are those before it.
    void parse();

    /// @}
    /// \name From tree to text
    /// @{

    /// Writes the tree over the text, from its start, indented by 1; false when it can't be
    /// written. A null tree has no text.
    bool save();

    /// The same with the encoding that the tree declares. The text does not count as Saved then.
    bool saveAsDeclared();

    /// What save() would write, from scratch.
    QByteArray textOfTree() const;

    /// @}
    /// \name Changes of the tree
    /// @{

    /// Somebody outside may change the tree from now on, at any time.
    void handOut();

    /// Changes an attribute of the element at a place that the document knows below the tree's
    /// root, or at any place below another root. The change tells whether it made a difference.
    void edit(const SvgElement &place, const QDomNode &root, const QString &attributeName,
              const std::function<bool(const QDomElement &)> &change);

    /// Remembers what edit() changes from here on, until takeBackEdits() undoes it all.
    void beginTrial();
    void takeBackEdits();

    /// To be called after every other change of attributes in the tree.
    void treeChanged();

    /// To be called before every change of what the document's places are.
    void forgetPlaces();

    /// Where the places that the document knows are in the tree. Only for a tree that nobody else
    /// can have changed since it was parsed.
    const ElementIndex &elements();

    /// @}
    /// \name Frames
    /// @{

    /// Whether the text is what save() would write.
    bool isSaved() const;

    /// Whether tree and text are what these steps have made of them.
    bool isShowing(const std::vector<FrameStep> &steps) const;

    /// To be called before a frame is written that has to be judged; keeps the text that comes
    /// back when it is refused.
    void beginDoubt();

    /// Tree and text show these steps. The refusal of a frame that was judged, or empty.
    void show(std::vector<FrameStep> steps, const QString &refusal);

    /// @}

private:
    struct FormerValue
    {
        QDomElement element;
        int number; // in m_elements, or none
        QString name;
        std::optional<QString> value;
    };

    const QByteArray &bytes() const;
    QByteArray text() const;
    bool isUntouched() const;
    void textChanged();
    void setRelation(Relation relation);
    void overwrite(const QByteArray &text);
    bool put(const QByteArray &text);
    void saved(Relation relation);
    bool saveWhole(QDomNode::EncodingPolicy policy);
    bool saveTags();
    QByteArray textOfTree(QDomNode::EncodingPolicy policy) const;
    void fillTree(bool isParsed);
    void takeBackFrame();
    void noteChange(int number, const QString &name, bool isOfValueOnly);

    QBuffer *const m_device;
    QDomDocument *const m_tree;
    const std::function<Places()> m_places;

    QByteArray m_seen;
    qint64 m_textSize;
    Verdict m_verdict = Verdict::Unjudged;
    QString m_textRefusal;
    QString m_leftOut; // what an admitted text lost when it was judged, in one line
    QString m_error;

    Relation m_relation = Relation::Apart;
    bool m_isHandedOut = false;
    std::unique_ptr<ElementIndex> m_elements;
    std::unique_ptr<StartTags> m_tags;

    std::vector<FrameStep> m_frame;
    QByteArray m_beforeDoubt;
    QString m_frameRefusal;

    bool m_isTrial = false;
    std::vector<FormerValue> m_formerValues;
};
