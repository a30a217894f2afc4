// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <Scene/TitleItem.h>

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QGraphicsScene>
#include <QGraphicsSceneMouseEvent>
#include <QGraphicsTextItem>
#include <QKeyEvent>
#include <QPainter>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextLayout>

#include <array>
#include <functional>
#include <vector>

/// A text item on an active scene of its own, so that two can have the focus.
struct TextTwin
{
    void add(QGraphicsTextItem *newItem)
    {
        item = newItem;
        item->setTextWidth(280);
        scene.addItem(item);
        QEvent activation(QEvent::WindowActivate);
        QCoreApplication::sendEvent(&scene, &activation);
        scene.setFocus();
    }

    QImage layoutImage; // outlives the document
    QTextDocument document;
    QGraphicsScene scene;
    QGraphicsTextItem *item = nullptr;
};

/*!
 * A title and a plain QGraphicsTextItem that get the same events, so that what the title shows and
 * what can be undone in it has something to be compared with.
 */
class TextTwins
{
public:
    explicit TextTwins(const QString &html)
    {
        for (TextTwin *twin : {&title, &plain}) {
            twin->document.setDefaultFont(QFont(QStringLiteral("DejaVu Sans"), 12));
            twin->document.setHtml(html);
        }
        titleItem = new TitleItem(QSizeF(400, 300), &title.document);
        title.add(titleItem);
        auto *item = new QGraphicsTextItem;
        item->setDocument(&plain.document);
        plain.layoutImage = QImage(1, 1, QImage::Format_ARGB32);
        plain.layoutImage.setDotsPerMeterX(3780);
        plain.layoutImage.setDotsPerMeterY(3780);
        plain.document.documentLayout()->setPaintDevice(&plain.layoutImage);
        plain.add(item);
    }

    void edit(bool isEdited, const QPointF &point = QPointF())
    {
        titleItem->setEditable(isEdited, point);
        plain.item->setTextInteractionFlags(isEdited ? Qt::TextEditorInteraction
                                                     : Qt::NoTextInteraction);
        if (isEdited) {
            plain.item->setFocus(Qt::MouseFocusReason);
            QGraphicsSceneMouseEvent press(QEvent::GraphicsSceneMousePress);
            press.setButton(Qt::LeftButton);
            press.setPos(point);
            plain.scene.sendEvent(plain.item, &press);
        } else {
            plain.item->clearFocus();
        }
        afterEvent();
    }

    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
               const QString &text = QString())
    {
        for (TextTwin *twin : {&title, &plain}) {
            for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
                QKeyEvent event(type, key, modifiers, text);
                QCoreApplication::sendEvent(&twin->scene, &event);
            }
        }
        afterEvent();
    }

    void press(QKeySequence::StandardKey standardKey)
    {
        const int keys = QKeySequence::keyBindings(standardKey).first()[0];
        press(keys & ~int(Qt::KeyboardModifierMask),
              Qt::KeyboardModifiers(keys & int(Qt::KeyboardModifierMask)));
    }

    void type(const QString &text)
    {
        for (const QChar character : text)
            press(Qt::Key_unknown, Qt::NoModifier, QString(character));
    }

    void click(int position)
    {
        const QPointF point = pointAt(position);
        for (TextTwin *twin : {&title, &plain}) {
            for (const QEvent::Type type :
                 {QEvent::GraphicsSceneMousePress, QEvent::GraphicsSceneMouseRelease}) {
                QGraphicsSceneMouseEvent event(type);
                event.setButton(Qt::LeftButton);
                event.setButtons(type == QEvent::GraphicsSceneMousePress ? Qt::LeftButton
                                                                         : Qt::NoButton);
                event.setPos(point);
                twin->scene.sendEvent(twin->item, &event);
            }
        }
        afterEvent();
    }

    /// What an application does with the text cursor.
    void use(const std::function<void(QTextCursor &)> &action)
    {
        for (TextTwin *twin : {&title, &plain}) {
            QTextCursor cursor = twin->item->textCursor();
            action(cursor);
            twin->item->setTextCursor(cursor);
        }
        compare();
    }

    /// The middle of the caret before the character at a position.
    QPointF pointAt(int position) const
    {
        const QTextBlock block = title.document.findBlock(position);
        const int inBlock = position - block.position();
        const QTextLine line = block.layout()->lineForTextPosition(inBlock);
        const QPointF origin = title.document.documentLayout()->blockBoundingRect(block).topLeft();
        return origin + QPointF(line.cursorToX(inBlock), line.y() + line.height() / 2);
    }

    /// What was different first after an event; empty when nothing was.
    QString difference() const { return m_difference; }

    /// What is different between the pictures.
    QString differenceOfPictures() const
    {
        const bool isSame = pictureOf(title) == pictureOf(plain);
        return isSame ? QString() : QStringLiteral("The pictures are not the same");
    }

    TextTwin title;
    TextTwin plain;
    TitleItem *titleItem = nullptr;

private:
    static bool hasHistory(const QTextDocument &document)
    {
        return document.isUndoAvailable() || document.isRedoAvailable();
    }

    /// What a title does that a plain item does not: without text it keeps the last format, and
    /// until something can be undone it may write whole fonts into its formats.
    void afterEvent()
    {
        if (title.document.isEmpty()) {
            QTextCursor cursor = plain.item->textCursor();
            cursor.setCharFormat(titleItem->textCursor().charFormat());
            plain.item->setTextCursor(cursor);
        }
        compare();
        if (m_difference.isEmpty() && fontAtCursor(title) != fontAtCursor(plain))
            m_difference = fontAtCursor(title).toString() + QStringLiteral(" at the cursor");
        if (!hasHistory(title.document) && !hasHistory(plain.document))
            copyFormats();
    }

    void compare()
    {
        if (!m_difference.isEmpty())
            return;
        const Steps steps = stepsOf(title);
        const Steps expected = stepsOf(plain);
        m_difference = steps == expected
                ? difference(lookOf(title), lookOf(plain))
                : nameOf(steps) + QStringLiteral(" instead of ") + nameOf(expected);
        if (m_difference.isEmpty() && ++m_eventCount % 16 == 0)
            m_difference = differenceOfPictures();
    }

    void copyFormats()
    {
        plain.document.setUndoRedoEnabled(false);
        QTextCursor cursor(&plain.document);
        for (QTextBlock block = title.document.begin(); block.isValid(); block = block.next()) {
            cursor.setPosition(block.position());
            cursor.setBlockCharFormat(block.charFormat());
            for (auto it = block.begin(); !it.atEnd(); ++it) {
                cursor.setPosition(it.fragment().position());
                cursor.setPosition(it.fragment().position() + it.fragment().length(),
                                   QTextCursor::KeepAnchor);
                cursor.setCharFormat(it.fragment().charFormat());
            }
        }
        plain.document.setUndoRedoEnabled(true);
        plain.document.setModified(title.document.isModified());
        // The format of an empty paragraph alone leaves that without a layout.
        plain.document.markContentsDirty(0, plain.document.characterCount());
    }

    /// That of text to come, which counts as soon as a character is before it.
    static QFont fontAtCursor(const TextTwin &twin)
    {
        QTextCursor cursor = twin.item->textCursor();
        if (cursor.position() == 0)
            cursor.movePosition(QTextCursor::Start);
        return cursor.charFormat().font();
    }

    /// Steps to undo and to redo, the anchor and the position of the text cursor.
    using Steps = std::array<int, 4>;

    static Steps stepsOf(const TextTwin &twin)
    {
        const QTextCursor cursor = twin.item->textCursor();
        return {twin.document.availableUndoSteps(), twin.document.availableRedoSteps(),
                cursor.anchor(), cursor.position()};
    }

    static QString nameOf(const Steps &steps)
    {
        return QStringLiteral("%1 to undo, %2 to redo, cursor from %3 to %4")
                .arg(steps[0])
                .arg(steps[1])
                .arg(steps[2])
                .arg(steps[3]);
    }

    /// Text of one format as it comes out, whoever says what it is. A paragraph begins with a run
    /// without text.
    struct Run
    {
        explicit Run(const QTextCharFormat &format)
            : font(format.font()), foreground(format.foreground()), background(format.background()),
              underline(format.underlineStyle()), alignment(format.verticalAlignment())
        {
        }

        bool hasLookOf(const Run &other) const
        {
            return font == other.font && foreground == other.foreground
                    && background == other.background && underline == other.underline
                    && alignment == other.alignment;
        }

        bool operator!=(const Run &other) const
        {
            return text != other.text || area != other.area || !hasLookOf(other);
        }

        QString name() const
        {
            return QStringLiteral("\"%1\" in %2 %3 %4 %5 on %6 x %7")
                    .arg(text, font.toString(), foreground.color().name())
                    .arg(underline)
                    .arg(alignment)
                    .arg(area.width())
                    .arg(area.height());
        }

        QString text;
        QSizeF area;
        QFont font;
        QBrush foreground;
        QBrush background;
        QTextCharFormat::UnderlineStyle underline;
        QTextCharFormat::VerticalAlignment alignment;
    };

    static std::vector<Run> lookOf(const TextTwin &twin)
    {
        std::vector<Run> look;
        for (QTextBlock block = twin.document.begin(); block.isValid(); block = block.next()) {
            // The format of a paragraph shows where there is no text in it.
            look.emplace_back(block.length() == 1 ? block.charFormat() : QTextCharFormat());
            look.back().area = twin.document.documentLayout()->blockBoundingRect(block).size();
            for (auto it = block.begin(); !it.atEnd(); ++it) {
                const Run next(it.fragment().charFormat());
                if (look.back().text.isEmpty() || !look.back().hasLookOf(next))
                    look.push_back(next);
                look.back().text += it.fragment().text();
            }
        }
        return look;
    }

    static QString difference(const std::vector<Run> &ofTitle, const std::vector<Run> &ofPlain)
    {
        if (ofTitle.size() != ofPlain.size())
            return QStringLiteral("%1 runs instead of %2").arg(ofTitle.size()).arg(ofPlain.size());
        for (std::size_t i = 0; i < ofTitle.size(); ++i) {
            if (ofTitle[i] != ofPlain[i])
                return ofTitle[i].name() + QStringLiteral(" instead of ") + ofPlain[i].name();
        }
        return QString();
    }

    static QImage pictureOf(const TextTwin &twin)
    {
        QImage image(300, 200, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::white);
        QPainter painter(&image);
        QAbstractTextDocumentLayout::PaintContext context;
        context.clip = QRectF(image.rect());
        twin.document.documentLayout()->draw(&painter, context);
        return image;
    }

    QString m_difference;
    int m_eventCount = 0;
};
