// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "PropertyPanel.h"

#include "TextFormat.h"

#include <QColorDialog>
#include <QDoubleSpinBox>
#include <QFontComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QToolButton>

#include <algorithm>

namespace {

constexpr int swatchSize = 24;
constexpr int swatchesInARow = 6;

QVector<QColor> swatchColors()
{
    return {QColor(0xff, 0xff, 0xff), QColor(0xc8, 0xcc, 0xd0), QColor(0x20, 0x22, 0x25),
            QColor(0xe5, 0x39, 0x35), QColor(0xfb, 0x8c, 0x00), QColor(0xfd, 0xd8, 0x35),
            QColor(0x43, 0xa0, 0x47), QColor(0x00, 0x89, 0x7b), QColor(0x1e, 0x88, 0xe5),
            QColor(0x39, 0x49, 0xab), QColor(0x8e, 0x24, 0xaa), QColor(0xd8, 0x1b, 0x60)};
}

bool contains(const QVector<Title> &titles, Title::Kind kind)
{
    return std::any_of(titles.begin(), titles.end(),
                       [kind](const Title &title) { return title.kind == kind; });
}

} // namespace

PropertyPanel::PropertyPanel(QWidget *parent)
    : QWidget(parent), m_family(new QFontComboBox(this)), m_size(new QSpinBox(this)),
      m_bold(madeToggle(QStringLiteral("bold"), tr("B"), tr("Bold"))),
      m_italic(madeToggle(QStringLiteral("italic"), tr("I"), tr("Italic"))),
      m_speed(new QDoubleSpinBox(this)),
      m_templateColors(new QPushButton(tr("Template's Own"), this)), m_colorBox(madeColorBox()),
      m_fontBox(madeFontBox()), m_animationBox(madeAnimationBox())
{
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_colorBox);
    layout->addWidget(m_fontBox);
    layout->addWidget(m_animationBox);
    layout->addStretch();
    showTitles({});
}

PropertyPanel::~PropertyPanel() = default;

QToolButton *PropertyPanel::madeSwatch(const QColor &color)
{
    QPixmap pixmap(swatchSize, swatchSize);
    pixmap.fill(color);
    auto *swatch = new QToolButton(this);
    swatch->setObjectName(QStringLiteral("swatch") + color.name());
    swatch->setIcon(pixmap);
    swatch->setIconSize(pixmap.size());
    swatch->setAutoRaise(true);
    swatch->setToolTip(tr("Use the colour %1").arg(color.name()));
    connect(swatch, &QToolButton::clicked, this, [this, color] { Q_EMIT colorPicked(color); });
    return swatch;
}

QToolButton *PropertyPanel::madeToggle(const QString &name, const QString &letter,
                                       const QString &tip)
{
    auto *toggle = new QToolButton(this);
    toggle->setObjectName(name);
    toggle->setText(letter);
    toggle->setToolTip(tip);
    toggle->setCheckable(true);
    return toggle;
}

QGroupBox *PropertyPanel::madeColorBox()
{
    auto *box = new QGroupBox(tr("Colour"), this);
    auto *swatches = new QGridLayout;
    swatches->setSpacing(2);
    const QVector<QColor> colors = swatchColors();
    for (int i = 0; i < colors.size(); ++i)
        swatches->addWidget(madeSwatch(colors.at(i)), i / swatchesInARow, i % swatchesInARow);
    auto *other = new QPushButton(tr("Other…"), box);
    other->setToolTip(tr("Choose any colour"));
    connect(other, &QPushButton::clicked, this, &PropertyPanel::pickOtherColor);
    m_templateColors->setObjectName(QStringLiteral("templateColors"));
    m_templateColors->setToolTip(tr("Give the title the colours of its template again"));
    connect(m_templateColors, &QPushButton::clicked, this,
            [this] { Q_EMIT colorPicked(QColor()); });
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(other);
    buttons->addWidget(m_templateColors, 1);
    auto *layout = new QVBoxLayout(box);
    layout->addLayout(swatches);
    layout->addLayout(buttons);
    return box;
}

QGroupBox *PropertyPanel::madeFontBox()
{
    auto *box = new QGroupBox(tr("Font"), this);
    m_family->setObjectName(QStringLiteral("family"));
    m_family->setToolTip(tr("Font of the text"));
    m_size->setObjectName(QStringLiteral("fontSize"));
    m_size->setRange(4, 999);
    m_size->setValue(72);
    m_size->setSuffix(tr(" pt"));
    m_size->setKeyboardTracking(false);
    m_size->setToolTip(tr("Size of the text"));
    QFont bold = m_bold->font();
    bold.setBold(true);
    m_bold->setFont(bold);
    QFont italic = m_italic->font();
    italic.setItalic(true);
    m_italic->setFont(italic);

    auto *layout = new QGridLayout(box);
    layout->addWidget(m_family, 0, 0, 1, 3);
    layout->addWidget(m_size, 1, 0);
    layout->addWidget(m_bold, 1, 1);
    layout->addWidget(m_italic, 1, 2);
    layout->setColumnStretch(0, 1);

    connect(m_family, &QFontComboBox::currentFontChanged, this, [this](const QFont &font) {
        QTextCharFormat format;
        format.setFontFamily(font.family());
        Q_EMIT textFormatEdited(format);
    });
    connect(m_size, QOverload<int>::of(&QSpinBox::valueChanged), this, [this](int points) {
        QTextCharFormat format;
        format.setFontPointSize(points);
        Q_EMIT textFormatEdited(format);
    });
    connect(m_bold, &QToolButton::clicked, this, [this](bool on) {
        QTextCharFormat format;
        format.setFontWeight(on ? QFont::Bold : QFont::Normal);
        Q_EMIT textFormatEdited(format);
    });
    connect(m_italic, &QToolButton::clicked, this, [this](bool on) {
        QTextCharFormat format;
        format.setFontItalic(on);
        Q_EMIT textFormatEdited(format);
    });
    return box;
}

QGroupBox *PropertyPanel::madeAnimationBox()
{
    auto *box = new QGroupBox(tr("Animation"), this);
    m_speed->setObjectName(QStringLiteral("speed"));
    m_speed->setRange(0.1, 10.0);
    m_speed->setValue(1.0);
    m_speed->setSingleStep(0.1);
    m_speed->setSuffix(QStringLiteral(" ×"));
    m_speed->setKeyboardTracking(false);
    m_speed->setToolTip(tr("How fast the title plays; it is shown for the rest of the clip"));
    connect(m_speed, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
            &PropertyPanel::speedEdited);
    auto *layout = new QHBoxLayout(box);
    layout->addWidget(new QLabel(tr("Speed:"), box));
    layout->addWidget(m_speed, 1);
    return box;
}

void PropertyPanel::pickOtherColor()
{
    auto *dialog = new QColorDialog(this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QColorDialog::colorSelected, this, &PropertyPanel::colorPicked);
    dialog->open();
}

void PropertyPanel::showFont(const QTextCharFormat &format)
{
    const QFont font = format.font();
    m_family->setCurrentFont(font);
    m_size->setValue(qRound(font.pointSizeF()));
    m_bold->setChecked(font.bold());
    m_italic->setChecked(font.italic());
}

void PropertyPanel::showTitles(const QVector<Title> &titles)
{
    const QSignalBlocker family(m_family);
    const QSignalBlocker size(m_size);
    const QSignalBlocker speed(m_speed);
    const bool hasSvg = contains(titles, Title::Svg);
    m_colorBox->setEnabled(!titles.isEmpty());
    m_templateColors->setEnabled(hasSvg);
    m_fontBox->setEnabled(contains(titles, Title::Text));
    m_animationBox->setEnabled(hasSvg);
    for (const Title &title : titles) {
        if (title.kind == Title::Text)
            showFont(firstFormat(title.html));
        else
            m_speed->setValue(title.speed);
    }
}
