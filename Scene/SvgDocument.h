// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <Scene/TitleSceneExport.h>

#include <boost/shared_ptr.hpp>

#include <QBuffer>
#include <QByteArray>
#include <QDomDocument>
#include <QDomNode>
#include <QRectF>
#include <QString>
#include <QStringList>
#include <QXmlStreamReader>

#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <vector>

class AdjustableAttribute;
class Agreement;
class AnimatableAttribute;
class QPainter;
class RendererDocument;
class SvgElement;
struct FrameStep;

/// One animated SVG title: its text, its document tree, and what was learnt from them.
///
/// The constructor reads the template once: its size, its length, which attributes of which
/// elements are animated and when, which elements are shown through "use" elements, whether it
/// clips. After that paint() draws the title at any time, in any order; the picture depends on the
/// template, the bounds and the time alone.
///
/// The document is its own device: the QBuffer base holds the text, as UTF-8, and the SVG renderer
/// always loads that text. Every change is made in the tree and then written over the text from
/// its start. The bytes in data() are never cut off by a shorter text; what can be read from the
/// device, and its size(), end where the last text ends. Where somebody changes the text through
/// buffer(), all bytes are text; a pointer to them is good until the next call of the document.
/// While the device is closed or can't be written, changes reach the tree only; the next frame or
/// save that can write catches up.
///
/// Malformed, hostile or empty text gives a document that draws nothing: isLoaded() is false and
/// errorString() says why in one line. A title that plays without something that may not be read,
/// such as a picture in another file, says so there, too. Nothing is thrown, and nothing logged but
/// what Qt's renderer has to say of a text, and a warning where paint() finds no QGuiApplication.
///
/// Times are int milliseconds of document time; times beyond an int saturate. The document belongs
/// to one thread, and is not copyable. It emits no signals of its own.
///
/// \ingroup documents
class TITLESCENE_EXPORT SvgDocument : public QBuffer
{
public:
    /// Reads and analyses \a svgText. An encoding in its XML declaration is of no account: the
    /// text is a QString already, and UTF-8 from here on.
    explicit SvgDocument(const QString &svgText);
    ~SvgDocument() override;

    /// False when the text of the constructor is not well-formed, is no SVG, or holds something
    /// that can't be played safely. Such a document draws nothing until another text is written
    /// into it and bounds are set.
    bool isLoaded() const;

    /// What is wrong, in one line: why the text or the frame that is shown can't be drawn, why the
    /// last adjustment was refused, or what the title plays without. Empty when nothing is wrong.
    /// Hides that of QIODevice, which knows nothing of it.
    QString errorString() const;

    /// \name Drawing
    /// @{

    /// Draws the title as it is \a ms after its start into bounds(), in the painter's
    /// coordinates. The painter's state is as before afterwards. A text that the renderer rejects,
    /// or bounds that are empty, draw nothing. Drawing is not cut to the bounds. Needs a
    /// QGuiApplication, which everything else does without; where there is none, it warns and does
    /// nothing.
    void paint(QPainter *painter, int ms);

    /// Brings the tree and the text to the time \a ms: every animated attribute has the value of
    /// the animation that is in effect then, or the template's own value.
    void applyAnimation(int ms);

    /// The rectangle that the title is drawn into; at first the size of the template's view box
    /// at (0, 0).
    QRectF bounds() const;

    /// Sets the rectangle; an empty one draws nothing.
    void setBounds(QRectF bounds);

    /// @}
    /// \name Length
    /// @{

    /// The length of the whole title, ms; 0 for a still one. Repetitions do not count.
    int animationDurationTotal() const;

    /// The length of the closing part, ms, from the begin of the animation with the id
    /// "CONCLUSION" to the end of the title; 0 when there is none. Negative when that animation
    /// begins after the end.
    int animationConclusionDuration() const;

    /// @}
    /// \name What was understood
    /// @{

    /// What applyAnimation() plays: an entry for every "animate" element that has an
    /// "attributeName", in document order. The objects stay what they are when the title is
    /// played or adjusted.
    std::vector<boost::shared_ptr<const AnimatableAttribute>> animations() const;

    /// The attributes that adjustAttribute() changes under this \a name, in document order. Empty
    /// for a name that has not been prepared.
    std::vector<boost::shared_ptr<const AdjustableAttribute>>
    adjustableAttributes(const QString &name) const;

    /// The "use" elements that show the definition with this \a id, in document order.
    std::vector<boost::shared_ptr<const SvgElement>> usesOf(const QString &id) const;

    /// @}
    /// \name Clipping
    /// @{

    /// True when the template has a "clipPath" element.
    bool hasClipping() const;

    /// A document of the shapes of all clip paths, as the tree has them now, on the canvas of this
    /// one; null when the template has none. Drawn with QPainter::CompositionMode_DestinationOut
    /// it erases the title where the shapes are. The caller owns it.
    SvgDocument *makeClippingDocument();

    /// @}
    /// \name Adjusting
    /// @{

    /// Finds the attributes of the given \a names that adjustAttribute() may change, in the
    /// current text. Their current values become their defaults.
    void prepareAdjustedAttibutes(const QStringList &names);

    /// Records which of \a nodes have an attribute \a name that may be changed. Not the "fill" of
    /// an animation element, and no "fill" or "stroke" that is "none", "currentColor", "inherit"
    /// or a reference ("url..."). A name that is recorded already keeps its record.
    void detectAdjustableAttibute(const QString &name, const std::vector<QDomNode> &nodes);

    /// Writes \a value into every recorded attribute of this name, and the tree into the text. A
    /// name that is not recorded changes nothing.
    void adjustAttribute(const QString &name, const QString &value);

    /// @}
    /// \name Text and tree
    /// @{

    /// Rewrites colours of the form "rgba(r, g, b, a)", double quotes included, as "#" and the
    /// three numbers in hexadecimal without padding; the alpha is dropped. A number that is no
    /// plain decimal integer counts as 0. The first value without exactly three commas ends the
    /// rewriting.
    void fixColors(QByteArray &data);

    /// Parses the text into the tree and returns the size of the root's view box at (0, 0); a part
    /// that is no integer counts as 0.
    QRectF viewBox();

    /// Appends \a node and all nodes below it to \a out, in pre-order.
    void getAllNodes(const QDomNode &node, std::vector<QDomNode> &out);

    /// The root element of the tree; null when there is none. A change made through it shows in
    /// the text after saveToBuffer() or the next animated frame, and is lost when the text is
    /// parsed again. From this call on every frame looks each animated element up anew and saves
    /// the tree, since anything may have changed: whoever has the node has the owner document.
    QDomNode documentRoot();

    /// Writes the tree over the text, from its start, indented by 1.
    void saveToBuffer();

    /// @}
    /// \name Analysis
    /// The stages of the constructor. Each parses the text into the tree first.
    /// @{

    /// The milliseconds that \a text stands for: a number of seconds, "s" or "ms" after it or
    /// not, truncated. Saturates; 0 for everything else ("indefinite", "00:05", "a.end").
    int stringToTime(const QString &text) const;

    /// Reads \a begin and \a dur as times and gives the begin and the end, both ms.
    void getBeginEndParams(QString begin, QString dur, int &beginMs, int &endMs) const;

    /// Replaces begins such as "intro.end+0.5s" by plain times, in tree and text. An unknown
    /// reference, or one back into the chain that is being followed, counts as time 0.
    void fixConditionalTiming();

    /// Makes an AnimatableAttribute of every "animate" element that has an "attributeName", and
    /// gives the latest end of all of them, ms.
    void detectAnimatableAttibutes(int &totalDuration);

    /// Finds the "use" elements of every id.
    void detectUseElements();

    /// Finds the length of the closing part.
    void detectConclusionTime();

    /// Hands the "visibility" attribute of every element inside "defs" to the "use" elements that
    /// show it.
    void fixDefinitionsVisibility();

    /// Shows or hides the "use" elements of an animated definition below \a root: an empty
    /// \a value or "visible" shows. False, and nothing done, when \a attribute is not the
    /// "visibility" of a definition that is used.
    bool updateDefinitionVisibility(const QDomNode &root,
                                    boost::shared_ptr<AnimatableAttribute> attribute,
                                    const QString &value);

    /// @}

    /// The length of the text, bytes.
    qint64 size() const override;

protected:
    /// Reads up to the end of the text, not into what is left over after it.
    qint64 readData(char *data, qint64 maxSize) override;

    /// Writes at the device's position, over what stands there. Writing at the start begins a new
    /// text.
    qint64 writeData(const char *data, qint64 size) override;

private:
    using AdjustableAttributes = std::vector<boost::shared_ptr<AdjustableAttribute>>;
    using AnimatableAttributes = std::vector<boost::shared_ptr<AnimatableAttribute>>;
    using SvgElements = std::vector<boost::shared_ptr<SvgElement>>;
    using AttributeNumbers = std::vector<std::size_t>;

    std::unique_ptr<RendererDocument> loadRenderer();
    void tryRenderer();
    void analyse(const QString &svgText);
    std::vector<const SvgElement *> places() const;
    QString refusalOfAdjustment(const AdjustableAttributes &attributes, const QString &value);
    void writeValue(const AdjustableAttribute &attribute, const QString &value,
                    const QDomNode &root);
    void restoreDefault(const AdjustableAttribute &attribute, const QDomNode &root);
    void showUses(const SvgElements &uses, bool visible, const QDomNode &root);

    std::optional<std::size_t> winnerAt(int ms, const AttributeNumbers &numbers) const;
    std::vector<FrameStep> stepsAt(int ms) const;
    std::vector<bool> neededSteps(const std::vector<FrameStep> &steps) const;
    void carryOut(const FrameStep &step);
    bool showsUsesOf(const AnimatableAttribute &attribute) const;

    QByteArray m_data;
    QXmlStreamReader m_reader;
    QDomDocument m_dom;
    QRectF m_bounds;
    int m_durationTotal = 0;
    int m_conclusionDuration = 0;
    bool m_animated = false;
    bool m_hasClipping = false;
    AnimatableAttributes m_animatableAttributes;
    std::map<QString, AdjustableAttributes> m_adjustableAttributes;
    std::map<QString, SvgElements> m_useElements;

    // For each animated attribute, by its id(): its animations' indices in m_animatableAttributes.
    std::map<QString, AttributeNumbers> m_animationsById;

    bool m_loaded = false;                  // the renderer has accepted the template's text
    std::unique_ptr<Agreement> m_agreement; // of m_data and m_dom
};
