// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TextTitleWindow.h"

#include <Scene/TitleItem.h>

#include <QAction>
#include <QColorDialog>
#include <QFontComboBox>
#include <QGraphicsView>
#include <QStatusBar>
#include <QTextCursor>
#include <QTextDocument>
#include <QToolBar>

namespace {

const QRectF canvas(0, 0, 960, 540);
const QSizeF titleSize(800, 200);

} // namespace

TextTitleWindow::TextTitleWindow(QWidget *parent) : QMainWindow(parent)
{
    makeView();
    makeToolBar();
    connect(&m_scene, &QGraphicsScene::focusItemChanged, this, &TextTitleWindow::followFocus);

    addTitle(tr("A Walk by the Sea"), QFont(QStringLiteral("serif"), 48, QFont::Bold),
             QPointF(80, 150));
    addTitle(tr("Double-click a text to edit it"), QFont(QStringLiteral("sans-serif"), 24),
             QPointF(80, 270));
    statusBar()->showMessage(tr("Escape or a click elsewhere ends editing"));
}

void TextTitleWindow::makeView()
{
    m_scene.setSceneRect(canvas);
    m_scene.setBackgroundBrush(QColor(0x1f, 0x3a, 0x4d));
    m_view = new QGraphicsView(&m_scene);
    m_view->setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    m_view->setAccessibleName(tr("Titles"));
    setCentralWidget(m_view);
}

void TextTitleWindow::makeToolBar()
{
    m_families = new QFontComboBox;
    m_families->setEditable(false);
    m_families->setToolTip(tr("Font"));
    connect(m_families, QOverload<int>::of(&QComboBox::activated), this,
            &TextTitleWindow::applyFamily);

    m_sizes = new QComboBox;
    for (const int size : {12, 18, 24, 36, 48, 64, 96})
        m_sizes->addItem(QString::number(size), size);
    m_sizes->setToolTip(tr("Font size in points"));
    connect(m_sizes, QOverload<int>::of(&QComboBox::activated), this, &TextTitleWindow::applySize);

    m_boldAction = makeToggle(tr("&Bold"), QKeySequence::Bold);
    connect(m_boldAction, &QAction::triggered, this, &TextTitleWindow::applyBold);
    m_italicAction = makeToggle(tr("&Italic"), QKeySequence::Italic);
    connect(m_italicAction, &QAction::triggered, this, &TextTitleWindow::applyItalic);

    QToolBar *bar = addToolBar(tr("Format"));
    bar->addWidget(m_families);
    bar->addWidget(m_sizes);
    bar->addActions({m_boldAction, m_italicAction});
    bar->addAction(tr("&Colour..."), this, &TextTitleWindow::chooseColor);
}

QAction *TextTitleWindow::makeToggle(const QString &text, const QKeySequence &shortcut)
{
    auto *action = new QAction(text, this);
    action->setCheckable(true);
    action->setShortcut(shortcut);
    return action;
}

void TextTitleWindow::addTitle(const QString &text, const QFont &font, const QPointF &pos)
{
    QTextCharFormat format;
    format.setFont(font);
    format.setForeground(Qt::white);

    auto *title = new TitleItem(titleSize, nullptr);
    QTextCursor(title->document()).insertText(text, format);
    title->setPos(pos);
    m_scene.addItem(title);
    connect(title, &TitleItem::currentCharFormatChanged, this, &TextTitleWindow::showFormat);
    connect(title, &TitleItem::contentEdited, this, [this, title] {
        statusBar()->showMessage(tr("The text is now: %1").arg(title->toPlainText()));
    });
}

void TextTitleWindow::followFocus(QGraphicsItem *focusItem)
{
    auto *title = focusItem ? qobject_cast<TitleItem *>(focusItem->toGraphicsObject()) : nullptr;
    if (!title)
        return;
    m_title = title;
    showFormat(title->currentCharFormat());
}

void TextTitleWindow::showFormat(const QTextCharFormat &format)
{
    const QFont font = format.font();
    m_families->setCurrentFont(font);
    m_sizes->setCurrentIndex(m_sizes->findData(font.pointSize()));
    m_boldAction->setChecked(font.bold());
    m_italicAction->setChecked(font.italic());
}

void TextTitleWindow::applyFormat(const QTextCharFormat &format)
{
    if (!m_title)
        return;
    QTextCursor cursor = m_title->textCursor();
    // The tool bar has taken the focus, and with it the title's edit mode.
    m_view->setFocus();
    if (!m_title->isEditable())
        m_title->setEditable(true);
    cursor.mergeCharFormat(format);
    m_title->setTextCursor(cursor);
}

void TextTitleWindow::applyFamily()
{
    QTextCharFormat format;
    format.setFontFamily(m_families->currentFont().family());
    applyFormat(format);
}

void TextTitleWindow::applySize()
{
    QTextCharFormat format;
    format.setFontPointSize(m_sizes->currentData().toInt());
    applyFormat(format);
}

void TextTitleWindow::applyBold(bool bold)
{
    QTextCharFormat format;
    format.setFontWeight(bold ? QFont::Bold : QFont::Normal);
    applyFormat(format);
}

void TextTitleWindow::applyItalic(bool italic)
{
    QTextCharFormat format;
    format.setFontItalic(italic);
    applyFormat(format);
}

void TextTitleWindow::chooseColor()
{
    if (!m_title)
        return;
    const QColor color =
            QColorDialog::getColor(m_title->currentCharFormat().foreground().color(), this);
    if (!color.isValid())
        return;
    QTextCharFormat format;
    format.setForeground(color);
    applyFormat(format);
}
