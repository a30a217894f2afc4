// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <Scene/TitleSceneExport.h>

#include <QGraphicsTextItem>
#include <QImage>
#include <QMetaType>
#include <QPointer>
#include <QTextCharFormat>

Q_DECLARE_METATYPE(QTextCharFormat)

class QTextDocument;

/// A rich text title on a graphics scene, edited in place.
///
/// The item shows a QTextDocument, which it does not own unless it made it itself. It has two
/// modes: display, where it can be moved and selected, and editing, where it has the focus and a
/// text cursor. A double click begins editing, losing the focus ends it; what was changed is then
/// reported by one contentEdited().
///
/// Fonts are measured at 96 dots per inch whatever the screen is, so that lines break at the same
/// places on screens of different scale.
///
/// A styling object of the application's gives the pens of the frame by its dynamic properties
/// "decoratorPen" and "strokeColor", or "decoratorSelectedPen" and "strokeSelectedPen" while the
/// item is highlighted. Without one there is no frame.
///
/// \ingroup items
class TITLESCENE_EXPORT TitleItem : public QGraphicsTextItem
{
    Q_OBJECT

public:
    /// Shows \a document, or an empty one of its own when it is null. A document that is given has
    /// to live as long as the item shows it. One of the item's own reads no file, whatever pictures
    /// its text names: it shows those that the application adds to it (QTextDocument::addResource).
    TitleItem(const QSizeF &size, QTextDocument *document, QGraphicsItem *parent = nullptr);
    ~TitleItem() override;

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
    /// Sets the text width; the height follows from the text.
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
    void keyPressEvent(QKeyEvent *event) override;

    /// Ends editing.
    void focusOutEvent(QFocusEvent *event) override;

private:
    void beginEditing(QPointF pos);
    void endEditing();
    void finishComposing();
    void followDocument();
    void keepFormatForNextCharacter();
    void makeDefault(const QFont &font);
    void pastePlainText(QKeyEvent *event);

    bool m_modified = false;
    QTextCharFormat m_lastCharFormat;
    bool m_acceptRichText = true;
    QPointer<QObject> m_stylingObject;
    bool m_highlighted = false;
    QImage m_layoutImage;
};
