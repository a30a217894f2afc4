// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QGraphicsScene>
#include <QMainWindow>
#include <QPointer>

class QAction;
class QComboBox;
class QFontComboBox;
class QGraphicsView;
class QTextCharFormat;
class TitleItem;

/// Text titles that are edited in place.
///
/// A double click edits a title, Escape or a click elsewhere ends that. The tool bar shows the
/// format at the text cursor and sets that of the selected text, or of what is typed next. It works
/// on the title that was edited last, and edits it again.
class TextTitleWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit TextTitleWindow(QWidget *parent = nullptr);

private:
    void makeView();
    void makeToolBar();
    QAction *makeToggle(const QString &text, const QKeySequence &shortcut);
    void addTitle(const QString &text, const QFont &font, const QPointF &pos);
    void followFocus(QGraphicsItem *focusItem);
    void showFormat(const QTextCharFormat &format);
    void applyFormat(const QTextCharFormat &format);
    void applyFamily();
    void applySize();
    void applyBold(bool bold);
    void applyItalic(bool italic);
    void chooseColor();

    QGraphicsScene m_scene;
    QGraphicsView *m_view = nullptr;
    QPointer<TitleItem> m_title; // edited last; on the scene, which owns it
    QFontComboBox *m_families = nullptr;
    QComboBox *m_sizes = nullptr;
    QAction *m_boldAction = nullptr;
    QAction *m_italicAction = nullptr;
};
