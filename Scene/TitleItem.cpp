// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TitleItem.h"

#include "FollowingFont_p.h"
#include "FramePens_p.h"
#include "LayoutDevices_p.h"
#include "TimeValue_p.h"
#include "TitleDocument_p.h"

#include <QAbstractTextDocumentLayout>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QGraphicsScene>
#include <QGraphicsSceneContextMenuEvent>
#include <QGraphicsSceneHoverEvent>
#include <QGraphicsSceneMouseEvent>
#include <QGraphicsView>
#include <QInputMethod>
#include <QKeyEvent>
#include <QKeySequence>
#include <QMenu>
#include <QMetaType>
#include <QMimeData>
#include <QPainter>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextDocumentFragment>
#include <QTextLayout>

#include <utility>

// Not in the header: an application may declare it, too.
Q_DECLARE_METATYPE(QTextCharFormat)

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

bool isPopupOrViewOf(const QWidget *widget, const QGraphicsScene *scene)
{
    if (!widget)
        return false;
    const auto *view = qobject_cast<const QGraphicsView *>(widget);
    return (view && view->scene() == scene) || widget->window()->windowType() == Qt::Popup;
}

} // namespace

TitleItem::TitleItem(const QSizeF &size, QTextDocument *document, QGraphicsItem *parent)
    : QGraphicsTextItem(parent), m_layoutImage(madeLayoutImage(size))
{
    qRegisterMetaType<QTextCharFormat>();
    showDocument(document ? document : new TitleDocument(this));
    setFlags(ItemIsFocusable | ItemIsMovable | ItemIsSelectable);
    endEditing();
}

TitleItem::~TitleItem()
{
    m_documentContext.reset();
    if (m_document)
        LayoutDevices::remove(*m_document, &m_layoutImage);
}

void TitleItem::setDocument(QTextDocument *document)
{
    if (document && document == m_document)
        return;
    const QPointer<TitleItem> guard(this);
    QPointer<QTextDocument> next(document);
    if (isEditable())
        endEditing();
    if (!guard || (next && next == m_document))
        return;
    if (!next)
        next = new TitleDocument(this);
    const QPointer<QTextDocument> replaced = m_document;
    const QSizeF size = boundingRect().size();
    showDocument(next);
    m_modified = false;
    if (replaced)
        LayoutDevices::remove(*replaced, &m_layoutImage);
    if (isOwn(replaced))
        delete replaced;
    if (boundingRect().size() != size)
        Q_EMIT geometryChanged();
}

bool TitleItem::isOwn(const QTextDocument *document) const
{
    return dynamic_cast<const TitleDocument *>(document) && document->parent() == this;
}

/// What was shown before may be on its way out, so it is not touched.
void TitleItem::showDocument(QTextDocument *document)
{
    m_document = document;
    m_documentContext.reset();
    LayoutDevices::add(*document, &m_layoutImage);
    QGraphicsTextItem::setDocument(document);

    m_documentContext = std::make_unique<QObject>();
    QObject *context = m_documentContext.get();
    connect(document, &QTextDocument::contentsChanged, context, [this] { m_modified = true; });
    connect(document, &QTextDocument::documentLayoutChanged, context, [this] { followLayout(); });
    connect(document, &QObject::destroyed, context, [this] { loseDocument(); });
    followLayout();
}

void TitleItem::loseDocument()
{
    const QSizeF size = boundingRect().size();
    showDocument(new TitleDocument(this));
    forgetBlockUnderMouse();
    if (boundingRect().size() != size)
        Q_EMIT geometryChanged();
}

/// The base class keeps the block of a check box that the mouse is on, and asks for it later, also
/// when its document is gone. In display mode it takes no notice of the mouse.
void TitleItem::forgetBlockUnderMouse()
{
    QGraphicsSceneHoverEvent away(QEvent::GraphicsSceneHoverMove);
    away.setPos(boundingRect().topLeft() - QPointF(100.0, 100.0));
    QGraphicsTextItem::hoverMoveEvent(&away);
}

void TitleItem::followLayout()
{
    disconnect(m_sizeConnection);
    m_sizeConnection =
            connect(m_document->documentLayout(), &QAbstractTextDocumentLayout::documentSizeChanged,
                    m_documentContext.get(), [this] { Q_EMIT geometryChanged(); });
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
    m_popupContext.reset();
    disableMenu();
    finishComposing();
    // Taken first, since losing the focus comes back here.
    const bool wasModified = std::exchange(m_modified, false);
    forgetBlockUnderMouse();
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
    if (type == QEvent::ShortcutOverride && endsEditing(*static_cast<QKeyEvent *>(event)))
        event->accept(); // before a shortcut of the window takes the key
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

void TitleItem::focusInEvent(QFocusEvent *event)
{
    m_popupContext.reset();
    QGraphicsTextItem::focusInEvent(event);
}

void TitleItem::focusOutEvent(QFocusEvent *event)
{
    const QPointer<TitleItem> guard(this);
    if (event->reason() == Qt::PopupFocusReason && isEditable())
        waitForPopup();
    else
        endEditing();
    if (guard)
        QGraphicsTextItem::focusOutEvent(event);
}

/// The scene gives the focus back when the popup closes. When it goes somewhere else instead, this
/// item gets no event, since it has no focus that it could lose.
void TitleItem::waitForPopup()
{
    finishComposing();
    m_popupContext = std::make_unique<QObject>();
    QObject *context = m_popupContext.get();
    const auto stopEditing = [this] { endEditing(); };
    connect(this, &QGraphicsObject::visibleChanged, context, stopEditing);
    connect(this, &QGraphicsObject::enabledChanged, context, stopEditing);
    connect(scene(), &QGraphicsScene::focusItemChanged, context, [this](QGraphicsItem *now) {
        if (now && now != this)
            endEditing();
    });
    connect(qApp, &QApplication::focusChanged, context, [this](QWidget *, QWidget *now) {
        if (!isPopupOrViewOf(now, scene()))
            endEditing();
    });
}

/// What the menu does is followed like a key.
void TitleItem::contextMenuEvent(QGraphicsSceneContextMenuEvent *event)
{
    QGraphicsTextItem::contextMenuEvent(event);
    auto *menu = isEditable() ? qobject_cast<QMenu *>(QApplication::activePopupWidget()) : nullptr;
    if (!menu)
        return;
    m_menu = menu;
    if (auto *paste = menu->findChild<QAction *>(QStringLiteral("edit-paste"))) {
        for (QObject *child : children())
            disconnect(paste, nullptr, child, nullptr);
        connect(paste, &QAction::triggered, this, &TitleItem::pressPasteKey);
    }
    connect(menu, &QMenu::triggered, this, [this] { checkFormatChanges(QEvent::KeyPress); });
}

/// The base class would undo and cut in display mode, too.
void TitleItem::disableMenu()
{
    if (!m_menu)
        return;
    for (QAction *action : m_menu->actions())
        action->setEnabled(false);
}

void TitleItem::pressPasteKey()
{
    const int key = QKeySequence::keyBindings(QKeySequence::Paste).value(0)[0];
    QKeyEvent event(QEvent::KeyPress, key & ~int(Qt::KeyboardModifierMask),
                    Qt::KeyboardModifiers(key & int(Qt::KeyboardModifierMask)));
    keyPressEvent(&event);
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
    const QPointer<TitleItem> guard(this);
    if (!m_acceptRichText && event->matches(QKeySequence::Paste))
        pastePlainText(event);
    else
        QGraphicsTextItem::keyPressEvent(event);
    if (!guard || !endsEditing(*event))
        return;
    event->accept();
    endEditing();
}

bool TitleItem::endsEditing(const QKeyEvent &event) const
{
    return isEditable() && event.matches(QKeySequence::Cancel);
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
    drawFrame(painter, boundingRect(), framePens(*m_stylingObject, m_highlighted, "strokeColor"),
              boundingRect(), widget);
}
