// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TitleItem.h"

#include "FollowingFont_p.h"
#include "FramePens_p.h"
#include "TimeValue_p.h"

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QClipboard>
#include <QGraphicsSceneMouseEvent>
#include <QInputMethod>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextDocumentFragment>
#include <QTextLayout>

#include <utility>

namespace {

constexpr int dotsPerMeter = 3780; // 96 dots per inch

QImage madeLayoutImage(const QSizeF &size)
{
    QImage image(saturatedInt(size.width()), saturatedInt(size.height()), QImage::Format_ARGB32);
    if (image.isNull())
        image = QImage(1, 1, QImage::Format_ARGB32); // its resolution is what counts
    image.setDotsPerMeterX(dotsPerMeter);
    image.setDotsPerMeterY(dotsPerMeter);
    return image;
}

/// Scene mouse and hover events move the cursor through the text without changing it.
bool isPointerEvent(int type)
{
    return type >= QEvent::GraphicsSceneMouseMove && type <= QEvent::GraphicsSceneHoverLeave
            && type != QEvent::GraphicsSceneContextMenu;
}

/// The scene asks an item that took no key for its parent, and sends on to one that takes a drag.
void keepFromDeletedItem(QEvent *event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
        event->accept();
        break;
    case QEvent::GraphicsSceneDragEnter:
        event->ignore();
        break;
    default:
        break;
    }
}

QClipboard::Mode clipboardModeFor(const QKeyEvent &event, const QClipboard &clipboard)
{
    const bool pastesSelection = clipboard.supportsSelection()
            && event.modifiers() == (Qt::ControlModifier | Qt::ShiftModifier)
            && event.key() == Qt::Key_Insert;
    return pastesSelection ? QClipboard::Selection : QClipboard::Clipboard;
}

/// Not every source of rich text gives its plain text, too.
QString plainText(const QMimeData &data)
{
    QString text = data.text();
    if (!text.isEmpty())
        return text;
    return QTextDocumentFragment::fromHtml(data.html())
            .toPlainText()
            .remove(QChar::ObjectReplacementCharacter);
}

/// The item's own document, whose text may come from strangers. Qt would read every file that a
/// text names as a picture.
class OwnDocument : public QTextDocument
{
public:
    OwnDocument(QObject *parent, bool withUndo) : QTextDocument(parent)
    {
        setUndoRedoEnabled(withUndo);
    }

protected:
    /// Asked for what the application has not given to the document.
    QVariant loadResource(int type, const QUrl &) override
    {
        if (type != ImageResource)
            return QVariant();
        QImage nothing(1, 1, QImage::Format_ARGB32_Premultiplied);
        nothing.fill(Qt::transparent);
        return nothing;
    }
};

} // namespace

TitleItem::TitleItem(const QSizeF &size, QTextDocument *document, QGraphicsItem *parent)
    : QGraphicsTextItem(parent), m_layoutImage(madeLayoutImage(size))
{
    qRegisterMetaType<QTextCharFormat>();
    const bool withUndo = QGraphicsTextItem::document()->isUndoRedoEnabled();
    setDocument(document ? document : new OwnDocument(this, withUndo));
    if (document) {
        connect(document, &QObject::destroyed, this, [this] {
            setDocument(new OwnDocument(this, true));
            followDocument();
        });
    }
    followDocument();
    setFlags(ItemIsFocusable | ItemIsMovable | ItemIsSelectable);
    endEditing();
}

TitleItem::~TitleItem()
{
    QAbstractTextDocumentLayout *layout = document()->documentLayout();
    if (layout->paintDevice() == &m_layoutImage)
        layout->setPaintDevice(nullptr);
}

void TitleItem::followDocument()
{
    connect(document(), &QTextDocument::contentsChanged, this, [this] { m_modified = true; });
    QAbstractTextDocumentLayout *layout = document()->documentLayout();
    connect(layout, &QAbstractTextDocumentLayout::documentSizeChanged, this,
            &TitleItem::geometryChanged);
    layout->setPaintDevice(&m_layoutImage);
}

bool TitleItem::isEditable() const
{
    return textInteractionFlags() == Qt::TextEditorInteraction;
}

void TitleItem::setEditable(bool editable, QPointF pos)
{
    if (editable)
        beginEditing(pos);
    else
        endEditing();
}

void TitleItem::beginEditing(QPointF pos)
{
    const QPointer<TitleItem> guard(this);
    const bool wasEditable = isEditable();
    setTextInteractionFlags(Qt::TextEditorInteraction);
    setFocus(Qt::MouseFocusReason);
    if (guard)
        setSelected(true);
    if (!guard)
        return;
    if (!wasEditable)
        m_modified = false;
    // A press puts the text cursor where it was clicked.
    QGraphicsSceneMouseEvent press(QEvent::GraphicsSceneMousePress);
    press.setButton(Qt::LeftButton);
    press.setPos(pos);
    QGraphicsTextItem::mousePressEvent(&press);
}

void TitleItem::endEditing()
{
    finishComposing();
    // Taken first, since losing the focus comes back here.
    const bool wasModified = std::exchange(m_modified, false);
    setTextInteractionFlags(Qt::NoTextInteraction);
    clearFocus();
    if (wasModified)
        Q_EMIT contentEdited();
}

/// Text that an input method still composes is kept, also when the platform would drop it.
void TitleItem::finishComposing()
{
    if (hasFocus())
        QGuiApplication::inputMethod()->commit();
    const QTextLayout *layout = textCursor().block().layout();
    if (!layout || layout->preeditAreaText().isEmpty())
        return;
    QInputMethodEvent commit;
    commit.setCommitString(layout->preeditAreaText());
    inputMethodEvent(&commit);
}

void TitleItem::setSize(QSizeF size)
{
    setTextWidth(size.width());
}

void TitleItem::setHighlight(bool value)
{
    m_highlighted = value;
    update();
}

bool TitleItem::acceptRichText() const
{
    return m_acceptRichText;
}

void TitleItem::setAcceptRichText(bool accept)
{
    m_acceptRichText = accept;
}

QObject *TitleItem::stylingObject() const
{
    return m_stylingObject;
}

void TitleItem::setStylingObject(QObject *object)
{
    m_stylingObject = object;
    update();
}

QTextCharFormat TitleItem::currentCharFormat() const
{
    QTextCursor cursor = textCursor();
    if (cursor.position() == 0)
        cursor.movePosition(QTextCursor::Start, QTextCursor::MoveAnchor);
    return cursor.charFormat();
}

bool TitleItem::sceneEvent(QEvent *event)
{
    const QEvent::Type type = event->type();
    // While an input method composes, the document says that it changed although no text did.
    const bool wasModified = m_modified;
    const QString html = type == QEvent::InputMethod ? toHtml() : QString();

    const QPointer<TitleItem> guard(this);
    const bool result = QGraphicsTextItem::sceneEvent(event);
    if (!guard) {
        keepFromDeletedItem(event);
        return result;
    }
    if (type == QEvent::InputMethod && toHtml() == html)
        m_modified = wasModified;
    checkFormatChanges(type);
    if (!guard)
        keepFromDeletedItem(event);
    return result;
}

void TitleItem::mouseDoubleClickEvent(QGraphicsSceneMouseEvent *event)
{
    const QPointer<TitleItem> guard(this);
    beginEditing(event->pos());
    if (guard)
        QGraphicsTextItem::mouseDoubleClickEvent(event);
}

void TitleItem::focusOutEvent(QFocusEvent *event)
{
    const QPointer<TitleItem> guard(this);
    endEditing();
    if (guard)
        QGraphicsTextItem::focusOutEvent(event);
}

void TitleItem::checkFormatChanges(int type)
{
    FollowingFont::of(*document()).keepLookOf(currentCharFormat());
    const QTextCharFormat format = currentCharFormat();
    if (format == m_lastCharFormat)
        return;
    const QPointer<TitleItem> guard(this);
    if (document()->characterCount() != 0 && !document()->toPlainText().isEmpty()) {
        m_lastCharFormat = format;
        Q_EMIT currentCharFormatChanged(m_lastCharFormat);
    } else {
        keepFormatForNextCharacter();
    }
    if (guard && format.font() != document()->defaultFont() && !isPointerEvent(type))
        makeDefault(format.font());
}

void TitleItem::keepFormatForNextCharacter()
{
    QTextCursor cursor = textCursor();
    cursor.setCharFormat(m_lastCharFormat);
    setTextCursor(cursor);
}

/// Changes no text and no look, so nobody is told of a change.
void TitleItem::makeDefault(const QFont &font)
{
    const bool wasModified = m_modified;
    const bool isReported = m_lastCharFormat == currentCharFormat();
    FollowingFont &defaultFont = FollowingFont::of(*document());
    defaultFont.follow(font);
    defaultFont.keepLookOf(currentCharFormat());
    if (isReported)
        m_lastCharFormat = currentCharFormat(); // which may have its whole font by now
    m_modified = wasModified;
}

void TitleItem::keyPressEvent(QKeyEvent *event)
{
    if (!m_acceptRichText && event->matches(QKeySequence::Paste))
        pastePlainText(event);
    else
        QGraphicsTextItem::keyPressEvent(event);
}

void TitleItem::pastePlainText(QKeyEvent *event)
{
    QClipboard &clipboard = *QApplication::clipboard();
    const QMimeData *data = clipboard.mimeData(clipboardModeFor(*event, clipboard));
    if (data && data->hasHtml())
        clipboard.setText(plainText(*data));

    const QTextCursor before = textCursor();
    const int selected = before.selectionEnd() - before.selectionStart();
    const bool replacesAll = selected != 0 && selected == document()->characterCount() - 1;
    QGraphicsTextItem::keyPressEvent(event);
    if (!replacesAll || textCursor().hasSelection())
        return;
    QTextCursor all(document());
    all.beginEditBlock();
    all.setPosition(0);
    all.setPosition(document()->characterCount() - 1, QTextCursor::KeepAnchor);
    all.setCharFormat(m_lastCharFormat);
    all.endEditBlock();
}

void TitleItem::paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget)
{
    QGraphicsTextItem::paint(painter, option, widget);
    if (!m_stylingObject)
        return;
    const FramePens pens = framePens(*m_stylingObject, m_highlighted, "strokeColor");
    painter->save();
    painter->setPen(pens.inner);
    painter->drawRect(boundingRect());
    painter->setPen(pens.outer);
    painter->drawRect(boundingRect());
    painter->restore();
}
