// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TitleCanvas.h"

#include "CanvasScene.h"
#include "ResizeFrame.h"
#include "Snapping.h"
#include "TitleFactory.h"

#include <Scene/Decorator/RotateDecorator.h>
#include <Scene/TitleItem.h>
#include <Scene/TitleSvgItem.h>

#include <QGraphicsSceneMouseEvent>
#include <QPen>
#include <QScopedValueRollback>
#include <QSet>

#include <algorithm>
#include <cmath>

namespace {

constexpr qreal snapReach = 8.0;    // pixels of the view
constexpr qreal surroundings = 0.5; // of the canvas, to be seen on each side of it

QVariant pen(const QColor &color, qreal width)
{
    QPen made(color, width);
    made.setCosmetic(true); // as wide at every zoom and scale
    made.setJoinStyle(Qt::MiterJoin);
    return made;
}

/// A bright line on top of a wider dark one shows on every background.
void setFramePens(QObject &styling)
{
    const QVariant outer = pen(QColor(0x4d, 0xc3, 0xff), 1.0);
    const QVariant inner = pen(QColor(0x0b, 0x2a, 0x3a), 3.0);
    styling.setProperty("decoratorPen", outer);
    styling.setProperty("decoratorSelectedPen", outer);
    styling.setProperty("strokePen", inner);
    styling.setProperty("strokeSelectedPen", inner);
    styling.setProperty("strokeColor", inner); // what a text title reads instead of "strokePen"
}

QSet<Qt::WindowFrameSection> handlesFor(const Title &title)
{
    if (title.kind == Title::Text) // its height follows from the text
        return {Qt::LeftSection, Qt::RightSection};
    return {Qt::TopLeftSection, Qt::TopSection,        Qt::TopRightSection, Qt::LeftSection,
            Qt::RightSection,   Qt::BottomLeftSection, Qt::BottomSection,   Qt::BottomRightSection};
}

void setStyling(QGraphicsObject *item, QObject *styling)
{
    if (auto *svg = dynamic_cast<TitleSvgItem *>(item))
        svg->setStylingObject(styling);
    if (auto *text = dynamic_cast<TitleItem *>(item))
        text->setStylingObject(styling);
    item->update();
}

bool hasSameShape(const Placement &a, Placement b)
{
    b.pos = a.pos;
    return a.isSameAs(b);
}

bool hasSameSize(const Placement &a, Placement b)
{
    b.rotation = a.rotation;
    return hasSameShape(a, b);
}

/// Turning and sizing move a title as well.
QString nameOfDrag(const QVector<TitleChange> &changes)
{
    const auto isAny = [&changes](const auto &differs) {
        return std::any_of(changes.begin(), changes.end(), [&differs](const TitleChange &change) {
            return differs(change.before.placement, change.after.placement);
        });
    };
    if (isAny([](const Placement &a, const Placement &b) { return !hasSameSize(a, b); }))
        return TitleCanvas::tr("Resize");
    if (isAny([](const Placement &a, const Placement &b) { return !hasSameShape(a, b); }))
        return TitleCanvas::tr("Rotate");
    return TitleCanvas::tr("Move");
}

} // namespace

TitleCanvas::TitleCanvas(QObject *parent)
    : QObject(parent), m_scene(new CanvasScene), m_helper(m_scene), m_dragReporter(m_scene),
      m_size(Project().canvas), m_clipLength(Project().clipLength)
{
    setFramePens(m_styling);
    m_helper.setStylingObject(&m_styling);
    connect(&m_helper, &SceneHelper::sceneTimeChanged, this, &TitleCanvas::setClipTime);
    connect(m_scene, &CanvasScene::dragged, this, &TitleCanvas::snap);
    connect(m_scene, &CanvasScene::released, this, &TitleCanvas::reportDrag);
    // Also when a frame loses the mouse before the button is released.
    connect(&m_dragReporter, &DragReporter::framesDragged, this, &TitleCanvas::reportDrag);
    connect(m_scene, &CanvasScene::clickedAgain, this, &TitleCanvas::switchFrame);
    connect(m_scene, &QGraphicsScene::selectionChanged, this, &TitleCanvas::dressAll);
    setProject(Project());
}

TitleCanvas::~TitleCanvas()
{
    // The scene still talks while it goes.
    m_scene->disconnect(this);
    for (const Entry &entry : qAsConst(m_entries))
        entry.item->disconnect(this);
}

SceneHelper *TitleCanvas::sceneHelper()
{
    return &m_helper;
}

CanvasScene *TitleCanvas::scene() const
{
    return m_scene;
}

Project TitleCanvas::project() const
{
    Project project{m_size, m_clipLength, {}};
    for (const Entry &entry : m_entries)
        project.titles.append(entry.title);
    return project;
}

void TitleCanvas::setProject(const Project &project)
{
    for (const TitleId id : order())
        remove(id);
    m_size = project.canvas;
    const QRectF canvas = canvasRect();
    m_scene->setSceneRect(
            canvas.adjusted(-canvas.width() * surroundings, -canvas.height() * surroundings,
                            canvas.width() * surroundings, canvas.height() * surroundings));
    setClipLength(project.clipLength);
    for (const Title &title : project.titles)
        insert(m_entries.size(), newId(), title);
    m_helper.setSceneTime(0);
}

QSize TitleCanvas::canvasSize() const
{
    return m_size;
}

QRectF TitleCanvas::canvasRect() const
{
    return QRectF(QPointF(), QSizeF(m_size));
}

TitleId TitleCanvas::newId()
{
    return ++m_lastId;
}

QVector<TitleId> TitleCanvas::order() const
{
    QVector<TitleId> ids;
    for (const Entry &entry : m_entries)
        ids.append(entry.id);
    return ids;
}

void TitleCanvas::setOrder(const QVector<TitleId> &order)
{
    std::sort(m_entries.begin(), m_entries.end(), [&order](const Entry &a, const Entry &b) {
        return order.indexOf(a.id) < order.indexOf(b.id);
    });
    stack();
}

TitleCanvas::Entry *TitleCanvas::find(TitleId id)
{
    const auto found = std::find_if(m_entries.begin(), m_entries.end(),
                                    [id](const Entry &entry) { return entry.id == id; });
    return found == m_entries.end() ? nullptr : &*found;
}

const TitleCanvas::Entry *TitleCanvas::find(TitleId id) const
{
    return const_cast<TitleCanvas *>(this)->find(id);
}

TitleCanvas::Entry *TitleCanvas::entryOf(const QGraphicsItem *frame)
{
    const auto found = std::find_if(m_entries.begin(), m_entries.end(),
                                    [frame](const Entry &entry) { return entry.frame == frame; });
    return found == m_entries.end() ? nullptr : &*found;
}

Title TitleCanvas::title(TitleId id) const
{
    const Entry *entry = find(id);
    return entry ? entry->title : Title();
}

void TitleCanvas::insert(int index, TitleId id, const Title &title)
{
    Entry entry{id, title, nullptr, nullptr};
    makeItem(entry);
    decorate(entry, false);
    m_entries.insert(index, entry);
    stack();
    Q_EMIT titlesChanged();
}

void TitleCanvas::remove(TitleId id)
{
    Entry *entry = find(id);
    if (!entry)
        return;
    entry->item->disconnect(this);
    AbstractDecorator *frame = entry->frame;
    m_entries.erase(m_entries.begin() + (entry - m_entries.data()));
    frame->setSelected(false);
    m_helper.deleteItemLater(frame);
    stack();
    Q_EMIT titlesChanged();
}

void TitleCanvas::change(TitleId id, const Title &title)
{
    Entry *entry = find(id);
    if (!entry)
        return;
    const Title before = std::exchange(entry->title, title);
    const bool needsNewItem = before.lineColor.isValid() && !title.lineColor.isValid();
    if (needsNewItem) {
        QGraphicsObject *oldItem = entry->item;
        oldItem->disconnect(this);
        makeItem(*entry);
        decorate(*entry, isTurning(id));
    } else {
        if (title.lineColor.isValid())
            setLineColor(entry->item, title.lineColor);
        setSpeed(entry->item, title.speed);
        TitleItem *text = textItem(id);
        if (text && text->toHtml() != title.html)
            text->setHtml(title.html);
        place(*entry);
    }
    Q_EMIT titlesChanged();
}

int TitleCanvas::clipLength() const
{
    return m_clipLength;
}

void TitleCanvas::setClipLength(int ms)
{
    m_clipLength = ms;
    for (const Entry &entry : qAsConst(m_entries))
        ::setClipLength(entry.item, ms);
    Q_EMIT clipLengthChanged(ms);
}

QVector<TitleId> TitleCanvas::selection() const
{
    QVector<TitleId> ids;
    for (const Entry &entry : m_entries) {
        if (entry.frame->isSelected())
            ids.append(entry.id);
    }
    return ids;
}

void TitleCanvas::select(const QVector<TitleId> &ids)
{
    {
        const QSignalBlocker blocker(m_scene); // one report for all
        for (const Entry &entry : qAsConst(m_entries))
            entry.frame->setSelected(ids.contains(entry.id));
    }
    dressAll();
}

AbstractDecorator *TitleCanvas::frame(TitleId id) const
{
    const Entry *entry = find(id);
    return entry ? entry->frame : nullptr;
}

bool TitleCanvas::isTurning(TitleId id) const
{
    return dynamic_cast<RotateDecorator *>(frame(id));
}

TitleItem *TitleCanvas::textItem(TitleId id) const
{
    const Entry *entry = find(id);
    return entry ? dynamic_cast<TitleItem *>(entry->item) : nullptr;
}

TitleItem *TitleCanvas::editedText() const
{
    for (const Entry &entry : m_entries) {
        auto *text = dynamic_cast<TitleItem *>(entry.item);
        if (text && text->isEditable())
            return text;
    }
    return nullptr;
}

void TitleCanvas::finishEditing()
{
    if (TitleItem *text = editedText())
        text->setEditable(false);
}

void TitleCanvas::setViewScale(qreal scale)
{
    m_viewScale = scale;
    m_helper.setViewScale(scale);
}

QVector<QLineF> TitleCanvas::guides() const
{
    return m_guides;
}

void TitleCanvas::setGuides(const QVector<QLineF> &guides)
{
    if (guides == m_guides)
        return;
    m_guides = guides;
    Q_EMIT guidesChanged();
}

void TitleCanvas::makeItem(Entry &entry)
{
    entry.item = madeItem(entry.title, m_clipLength).release(); // decorate() gives it an owner
    ::setClipTime(entry.item, int(m_helper.sceneTime()));
    const TitleId id = entry.id;
    if (auto *text = dynamic_cast<TitleItem *>(entry.item))
        connect(text, &TitleItem::contentEdited, this, [this, id] { reportText(id); });
}

/// Puts the item into a new frame. A frame takes over what rotation and scale an item has, and
/// counts both twice, so it is put around the plain item; then the frame gets the rotation and the
/// item the scale.
void TitleCanvas::decorate(Entry &entry, bool turning)
{
    const QScopedValueRollback<bool> dressing(m_dressing, true);
    AbstractDecorator *oldFrame = entry.frame;
    const bool wasSelected = oldFrame && oldFrame->isSelected();
    if (oldFrame && oldFrame->child() == entry.item) {
        entry.item->setParentItem(nullptr);
        m_scene->removeItem(entry.item);
    }
    entry.item->setTransform(QTransform());
    entry.item->setPos(0.0, 0.0);
    if (turning)
        entry.frame = new RotateDecorator(entry.item);
    else
        entry.frame = new ResizeFrame(entry.item);
    m_helper.addItem(entry.frame); // the scene owns the frame, the frame the item
    if (oldFrame) {
        entry.frame->setZValue(oldFrame->zValue());
        oldFrame->setSelected(false);
        m_helper.deleteItemLater(oldFrame);
    }
    entry.frame->setSelected(wasSelected);
    place(entry);
    dress(entry);
}

void TitleCanvas::place(Entry &entry)
{
    const Placement &placement = entry.title.placement;
    const QSizeF own = ownSize(entry.item);
    entry.item->setTransform(QTransform());
    if (entry.title.kind == Title::Text)
        entry.frame->setSize(QSizeF(placement.textWidth, own.height()));
    else
        entry.frame->setSize(
                QSizeF(own.width() * placement.scaleX, own.height() * placement.scaleY));
    if (auto *turning = dynamic_cast<RotateDecorator *>(entry.frame))
        turning->updateTransformCenter();
    entry.frame->setRotation(placement.rotation);
    entry.frame->setPos(entry.frame->pos() + placement.pos - entry.frame->mapToScene(QPointF()));
    m_helper.setItemViewScale(entry.frame, m_viewScale);
}

Placement TitleCanvas::placement(const Entry &entry) const
{
    Placement placement;
    placement.pos = entry.frame->mapToScene(QPointF());
    placement.rotation = std::remainder(entry.frame->rotation(), 360.0);
    if (const auto *text = dynamic_cast<const TitleItem *>(entry.item)) {
        placement.textWidth = text->textWidth();
    } else {
        placement.scaleX = entry.item->transform().m11();
        placement.scaleY = entry.item->transform().m22();
    }
    return placement;
}

/// Handles and lines are for selected titles only.
void TitleCanvas::dress(Entry &entry)
{
    const bool selected = entry.frame->isSelected();
    QObject *styling = selected ? m_helper.stylingObject() : nullptr;
    setStyling(entry.item, styling);
    entry.frame->setStylingObject(styling);
    entry.frame->setHighlight(selected);
    if (auto *sizing = dynamic_cast<ResizeFrame *>(entry.frame))
        sizing->setAvailableHandles(selected ? handlesFor(entry.title)
                                             : QSet<Qt::WindowFrameSection>());
    m_helper.setItemViewScale(entry.frame, m_viewScale);
}

void TitleCanvas::dressAll()
{
    if (m_dressing)
        return;
    for (Entry &entry : m_entries) {
        if (isTurning(entry.id) && !entry.frame->isSelected())
            decorate(entry, false);
        else
            dress(entry);
    }
    Q_EMIT selectionChanged();
}

void TitleCanvas::stack()
{
    for (int i = 0; i < m_entries.size(); ++i)
        m_entries[i].frame->setZValue(i);
}

void TitleCanvas::setClipTime(SceneHelper::Time time)
{
    for (const Entry &entry : qAsConst(m_entries))
        ::setClipTime(entry.item, int(time));
}

bool TitleCanvas::isMoving(const Entry &entry) const
{
    const Placement now = placement(entry);
    return !now.isSameAs(entry.title.placement) && hasSameShape(now, entry.title.placement);
}

/// The scene moves frames from where they were when the button went down, so what is added here
/// does not add up.
void TitleCanvas::snap(Qt::KeyboardModifiers modifiers)
{
    const Entry *grabbed = entryOf(m_scene->mouseGrabberItem());
    if (!grabbed || !isMoving(*grabbed) || modifiers.testFlag(Qt::ControlModifier)) {
        setGuides({});
        return;
    }
    QRectF moving;
    for (const TitleId id : selection())
        moving |= find(id)->item->sceneBoundingRect();
    const QRectF canvas = canvasRect();
    const Snap snap = snapToCanvas(moving, canvas, snapReach * m_viewScale);
    for (const TitleId id : selection())
        frame(id)->setPos(frame(id)->pos() + snap.offset);
    QVector<QLineF> guides;
    if (snap.vertical)
        guides.append(QLineF(*snap.vertical, canvas.top(), *snap.vertical, canvas.bottom()));
    if (snap.horizontal)
        guides.append(QLineF(canvas.left(), *snap.horizontal, canvas.right(), *snap.horizontal));
    setGuides(guides);
}

void TitleCanvas::reportDrag()
{
    setGuides({});
    QVector<TitleChange> changes;
    for (const Entry &entry : qAsConst(m_entries)) {
        Title after = entry.title;
        after.placement = placement(entry);
        if (!after.placement.isSameAs(entry.title.placement))
            changes.append({entry.id, entry.title, after});
    }
    if (!changes.isEmpty())
        Q_EMIT edited(nameOfDrag(changes), changes);
}

void TitleCanvas::switchFrame(AbstractDecorator *frame)
{
    Entry *entry = entryOf(frame);
    if (!entry)
        return;
    decorate(*entry, !isTurning(entry->id));
    Q_EMIT selectionChanged();
}

void TitleCanvas::reportText(TitleId id)
{
    const Entry *entry = find(id);
    const TitleItem *text = textItem(id);
    if (!entry || !text)
        return;
    Title after = entry->title;
    after.html = text->toHtml();
    after.name = text->toPlainText().section(QLatin1Char('\n'), 0, 0);
    if (after.html != entry->title.html)
        Q_EMIT edited(tr("Edit Text"), {{id, entry->title, after}});
}
