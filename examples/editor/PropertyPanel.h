// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include "Project.h"

#include <QTextCharFormat>
#include <QWidget>

class QAction;
class QDoubleSpinBox;
class QFontComboBox;
class QGroupBox;
class QPushButton;
class QSpinBox;
class QToolButton;

/// Colour, font and speed of what is selected.
class PropertyPanel : public QWidget
{
    Q_OBJECT

public:
    explicit PropertyPanel(QWidget *parent = nullptr);
    ~PropertyPanel() override;

    /// Shows what the titles are like, the last one for all of them.
    void showTitles(const QVector<Title> &titles);

Q_SIGNALS:
    /// Invalid for the colours of the template.
    void colorPicked(const QColor &color);
    void speedEdited(double speed);
    void textFormatEdited(const QTextCharFormat &format);

private:
    QGroupBox *madeColorBox();
    QGroupBox *madeFontBox();
    QGroupBox *madeAnimationBox();
    QToolButton *madeSwatch(const QColor &color);
    QToolButton *madeToggle(const QString &name, const QString &letter, const QString &tip);
    void pickOtherColor();
    void showFont(const QTextCharFormat &format);

    QFontComboBox *m_family;
    QSpinBox *m_size;
    QToolButton *m_bold;
    QToolButton *m_italic;
    QDoubleSpinBox *m_speed;
    QPushButton *m_templateColors;
    QGroupBox *m_colorBox;
    QGroupBox *m_fontBox;
    QGroupBox *m_animationBox;
};
