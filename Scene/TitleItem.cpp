// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TitleItem.h"

#include "FramePens_p.h"
#include "TimeValue_p.h"

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QClipboard>
#include <QGraphicsSceneMouseEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextDocumentFragment>

namespace {

constexpr int dotsPerMeter = 3780; // 96 dots per inch

QImage madeLayoutImage(const QSizeF &size)
{
    QImage image(saturatedInt(size.width()), saturatedInt(size.height()), QImage::Format_ARGB32);
    if (image.isNull())
        image = QImage(1, 1, QImage::Format_ARGB32); // its resolution is what counts
    return image;
}

/// Scene mouse and hover events move the cursor through the text without changing it.
bool isPointerEvent(int type)
{
    return type >= QEvent::GraphicsSceneMouseMove && type <= QEvent::GraphicsSceneHoverLeave
        && type != QEvent::GraphicsSceneContextMenu;
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
    const QString text = data.text();
    return text.isEmpty() ? QTextDocumentFragment::fromHtml(data.html()).toPlainText() : text;
}

} // namespace

TitleItem::TitleItem(const QSizeF &size, QTextDocument *document, QGraphicsItem *parent)
    : QGraphicsTextItem(parent), m_layoutImage(madeLayoutImage(size))
{
    qRegisterMetaType<QTextCharFormat>();
    if (document)
        setDocument(document);
    QTextDocument *shown = this->document();
    connect(shown, &QTextDocument::contentsChanged, this, [this] { m_modified = true; });
    connect(shown->documentLayout(), &QAbstractTextDocumentLayout::documentSizeChanged, this,
            &TitleItem::geometryChanged);
    m_layoutImage.setDotsPerMeterX(dotsPerMeter);
    m_layoutImage.setDotsPerMeterY(dotsPerMeter);
    shown->documentLayout()->setPaintDevice(&m_layoutImage);
    setFlags(ItemIsFocusable | ItemIsMovable | ItemIsSelectable);
    endEditing();
}

TitleItem::~TitleItem()
{
    QAbstractTextDocumentLayout *layout = document()->documentLayout();
    if (layout->paintDevice() == &m_layoutImage)
        layout->setPaintDevice(nullptr);
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
    const bool wasEditable = isEditable();
    setTextInteractionFlags(Qt::TextEditorInteraction);
    setFocus(Qt::MouseFocusReason);
    setSelected(true);
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
    setTextInteractionFlags(Qt::NoTextInteraction);
    clearFocus();
    if (m_modified) {
        m_modified = false;
        Q_EMIT contentEdited();
    }
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
    const int type = event->type();
    const QPointer<TitleItem> guard(this);
    const bool result = QGraphicsTextItem::sceneEvent(event);
    if (guard)
        checkFormatChanges(type);
    return result;
}

void TitleItem::mouseDoubleClickEvent(QGraphicsSceneMouseEvent *event)
{
    beginEditing(event->pos());
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

/// Sets the content anew under the new default font. To the user nothing has happened: the cursor,
/// the selection, the format of the next character and the unreported changes stay.
void TitleItem::makeDefault(const QFont &font)
{
    const bool wasModified = m_modified;
    const QTextCursor before = textCursor();
    const int anchor = before.anchor();
    const int position = before.position();
    const QTextCharFormat format = before.charFormat();

    document()->setDefaultFont(font);
    setHtml(toHtml());

    QTextCursor cursor = textCursor();
    cursor.setPosition(anchor);
    cursor.setPosition(position, QTextCursor::KeepAnchor);
    if (!cursor.hasSelection() && cursor.charFormat() != format)
        cursor.setCharFormat(format);
    setTextCursor(cursor);
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
    if (!replacesAll)
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
