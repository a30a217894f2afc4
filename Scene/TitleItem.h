// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <Scene/TitleSceneExport.h>

#include <QGraphicsTextItem>
#include <QImage>
#include <QPointer>
#include <QTextCharFormat>

#include <memory>

class QMenu;
class QTextDocument;

/// A rich text title on a graphics scene, edited in place.
///
/// The item shows a QTextDocument, which it does not own unless it made it itself: one of its own
/// goes with the item, or when another is set. Document and item may be deleted in any order; an
/// item whose document is deleted shows an empty one of its own. Several items may show one
/// document. It has two modes: display, where it can be moved and selected, and editing, where it
/// has the focus and a text cursor. A double click begins editing, the Escape key and losing the
/// focus end it; what was changed is then reported by one contentEdited(). A menu or another popup
/// only borrows the focus: editing ends when it goes on from there to somewhere else.
///
/// Fonts are measured at 96 dots per inch whatever the screen is, so that lines break at the same
/// places on screens of different scale.
///
/// A styling object of the application's gives the pens of the frame by its dynamic properties
/// "decoratorPen" and "strokeColor", or "decoratorSelectedPen" and "strokeSelectedPen" while the
/// item is highlighted. Without one there is no frame. The pens are as wide as they say in the
/// title's own units: make them cosmetic (QPen::setCosmetic()), and they are as wide at every scale
/// and zoom. Half of their width is outside of the bounding rectangle. In a view, what is more than
/// two pixels outside is left out, since the view would not repaint it (one pixel with
/// QGraphicsView::DontAdjustForAntialiasing).
///
/// \ingroup items
class TITLESCENE_EXPORT TitleItem : public QGraphicsTextItem
{
    Q_OBJECT

public:
    /// Shows \a document, or an empty one of its own when it is null. One of the item's own reads
    /// no file, whatever pictures its text names. It shows those that the application adds to it
    /// (QTextDocument::addResource), and PNG and JPEG pictures that stand in the text itself
    /// ("data:" references in base64), within the limits of those in an SVG title.
    ///
    /// \a size is that of the picture, in pixels of which 96 make an inch, on which the text is
    /// measured. It is cut to whole numbers, and neither the item's size nor a limit for it: the
    /// text is as wide as its longest line until setSize() gives it a width, and always as high as
    /// its lines.
    TitleItem(const QSizeF &size, QTextDocument *document, QGraphicsItem *parent = nullptr);
    ~TitleItem() override;

    /// Shows another document, or a new one of the item's own when it is null, in display mode:
    /// editing ends before. The text width is that of the document. Hides the function of the base
    /// class, by which the item would show a document without following it.
    void setDocument(QTextDocument *document);

    /// True in edit mode.
    bool isEditable() const;

    /// Whether pasting keeps formats. If not, a clipboard with rich text is replaced by its plain
    /// text before pasting.
    bool acceptRichText() const;

    /// Sets whether pasting keeps formats; at first it does.
    void setAcceptRichText(bool accept);

    /// The format of the character at the text cursor, which text typed next takes.
    QTextCharFormat currentCharFormat() const;

    /// The object that gives the pens; null when there is none.
    QObject *stylingObject() const;

    /// Takes the pens of the frame from \a object, which is not owned and may be null, and
    /// repaints.
    void setStylingObject(QObject *object);

    /// Draws the text, then the frame on the edge of the bounding rectangle.
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

Q_SIGNALS:
    /// Editing has ended and the content was changed. Comes while the item loses the focus, and so
    /// while Qt hides it, disables it or takes it off its scene: who wants to delete the item then,
    /// uses deleteLater().
    void contentEdited();

    /// The format at the text cursor, after an event that found another one there than before. That
    /// may be an event of any kind, the mouse above the item included.
    void currentCharFormatChanged(QTextCharFormat);

    /// The text is of another size. Comes while the text is being laid out: who wants to delete the
    /// item then, uses deleteLater().
    void geometryChanged();

public Q_SLOTS:
    /// Sets the text width, scene units before transforms; the height follows from the text, and
    /// that of \a size is ignored. So of the handles of a ResizeDecorator, those at the left and
    /// the right fit a text (ResizeDecorator::setAvailableHandles): with the upper ones the frame
    /// would move up and down without growing, and the one in the middle of the bottom does
    /// nothing.
    void setSize(QSizeF size);

    /// Begins editing with the text cursor at a point in item coordinates, or ends it.
    void setEditable(bool editable, QPointF = QPointF());

    /// Chooses the pens of the frame, and repaints.
    void setHighlight(bool value);

    /// Looks at the format at the text cursor after an event of \a type (QEvent::Type): emits
    /// currentCharFormatChanged() when it is another one, keeps it for the next character when all
    /// text is deleted, and makes its font the document's default font, unless the event is one of
    /// the scene's mouse and hover events.
    ///
    /// The default font never changes what is shown, nor what undo and redo bring back. As long as
    /// nothing can be undone, text that left its font to the default gets that font for itself.
    /// After that, the default font follows only while all text looks the same with it, and is the
    /// one that the application set again as soon as other text comes.
    void checkFormatChanges(int type);

protected:
    /// Looks at the format at the text cursor after each event.
    bool sceneEvent(QEvent *event) override;

    /// Begins editing where it was clicked.
    void mouseDoubleClickEvent(QGraphicsSceneMouseEvent *event) override;

    /// Pastes plain text where rich text is not accepted; leaves every other key to the base class.
    /// Escape ends editing after that.
    void keyPressEvent(QKeyEvent *event) override;

    /// Goes on with editing after a popup.
    void focusInEvent(QFocusEvent *event) override;

    /// Ends editing, but not for a popup.
    void focusOutEvent(QFocusEvent *event) override;

    /// Opens the menu of the base class while the text is edited.
    void contextMenuEvent(QGraphicsSceneContextMenuEvent *event) override;

private:
    void beginEditing(QPointF pos);
    bool endsEditing(const QKeyEvent &event) const;
    void endEditing();
    void finishComposing();
    bool isOwn(const QTextDocument *document) const;
    void showDocument(QTextDocument *document);
    void followLayout();
    void loseDocument();
    void forgetBlockUnderMouse();
    void keepFormatForNextCharacter();
    void makeDefault(const QFont &font);
    void pastePlainText(QKeyEvent *event);
    void pressPasteKey();
    void waitForPopup();
    void disableMenu();

    bool m_modified = false;
    QTextCharFormat m_lastCharFormat;
    bool m_acceptRichText = true;
    QPointer<QObject> m_stylingObject;
    bool m_highlighted = false;
    QImage m_layoutImage;
    QPointer<QTextDocument> m_document;
    std::unique_ptr<QObject> m_documentContext; // of the connections to the document
    QMetaObject::Connection m_sizeConnection;
    std::unique_ptr<QObject> m_popupContext; // while a popup has the focus
    QPointer<QMenu> m_menu;
};
