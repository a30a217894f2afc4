// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <Scene/TitleSceneExport.h>

#include <boost/shared_ptr.hpp>

#include <QGraphicsSvgItem>
#include <QPen>
#include <QPointer>
#include <QSizeF>
#include <QString>

#include <map>

class QImage;
class SvgDocument;

/// An animated SVG title on a graphics scene.
///
/// The item owns its SvgDocument and, when the template has clip paths, a second one that erases
/// parts of the title. The application sets the current time; the item maps the clip's time onto
/// the title's and paints the title as it is then. Setters of plain values neither repaint nor
/// emit: the application calls update(). Unlike its base class the item keeps no picture of itself
/// from paint to paint (its cacheMode() is NoCache).
///
/// A styling object of the application's gives the pens of the selection frame by its dynamic
/// properties "decoratorPen" and "strokePen", or "decoratorSelectedPen" and "strokeSelectedPen"
/// while the item is highlighted. Without one there is no frame. The pens are as wide as they say
/// in the title's own units, so a title that is scaled has a frame that is scaled: make them
/// cosmetic (QPen::setCosmetic()), and they are as wide at every scale and zoom. The bounding
/// rectangle does not count them: in a view, what a wide pen would draw more than two pixels
/// outside of it is left out, since the view would not repaint it (one pixel with
/// QGraphicsView::DontAdjustForAntialiasing).
///
/// \ingroup items
class TITLESCENE_EXPORT TitleSvgItem : public QGraphicsSvgItem
{
    Q_OBJECT
    /// The time on the clip, ms.
    Q_PROPERTY(int currentTime READ currentTime WRITE setCurrentTime)

public:
    /// For qgraphicsitem_cast().
    enum {
        Type = UserType + 1 ///< what type() returns
    };

    /// Reads the title \a svgText. Text that can't be shown gives an item of no size that draws
    /// nothing.
    explicit TitleSvgItem(const QString &svgText);
    ~TitleSvgItem() override;

    /// The document's bounds: the template's view box, its origin at (0, 0).
    QRectF boundingRect() const override;

    /// Always Type.
    int type() const override;

    /// Draws the title at its current time, then the frame.
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option,
               QWidget *widget = nullptr) override;

    /// The time on the clip that the next paint shows, ms; at first 0.
    int currentTime() const;

    /// The length of the clip that the title is shown on, ms; at first 0.
    int duration() const;

    /// Sets the length of the clip, ms: the closing part is played at its end, and before that the
    /// complete title stands. The document is not changed.
    void setDuration(int duration);

    /// Document time for each unit of clip time; 1 plays at the template's own pace. 0, negative
    /// values and NaN are taken as they come: some time of the title is shown.
    double animationSpeed() const;

    /// Sets the document time for each unit of clip time.
    void setAnimationSpeed(double speed);

    /// The length of the title by itself, ms of document time.
    int documentDuration() const;

    /// The document time, ms, at which the title is complete and its closing part has not begun.
    int documentFullViewTime() const;

    /// Whether a title with clip paths is put together on a picture of its own. If not, the clip
    /// paths erase whatever lies below them on the painter's device, too. A title whose picture
    /// would take more than 256 MB is not drawn then.
    bool paintOnImage() const;

    /// Sets whether a title with clip paths is put together on a picture of its own; at first it is
    /// not. Nothing is drawn where that picture would be too large for the memory.
    void setPaintOnImage(bool onImage);

    /// The object that gives the pens; null when there is none.
    QObject *stylingObject() const;

    /// Takes the pens of the frame from \a object, which is not owned and may be null.
    void setStylingObject(QObject *object);

    /// Whether the frame has the pens of a selected item.
    bool highlighted() const;

    /// The user's line settings. At first transparent, 50 wide and of the style
    /// Qt::DashDotDotLine.
    QPen lineParams() const;

    /// Gives every adjustable fill and stroke of the template the colour of \a pen, without alpha;
    /// its width and style are only remembered. Emits documentChanged() when colour, integer width
    /// or style differ from before.
    void setLineParams(QPen pen);

    /// The SVG text as given to the constructor.
    QString toSvgText() const;

Q_SIGNALS:
    /// setSize() was called.
    void geometryChanged();

    /// The line settings are others.
    void documentChanged();

public Q_SLOTS:
    /// Multiplies the scale from the bounds to \a size onto the item's transform: called twice, it
    /// scales twice, and after a width or height of 0 it stays 0. Emits geometryChanged(). A scale
    /// that is not finite is left out.
    void setSize(const QSizeF &size);

    /// Sets the time on the clip, ms. Any time will do: what is before or after the clip shows the
    /// title as it is then.
    void setCurrentTime(int time);

    /// Chooses the pens of the frame.
    void setHighlight(bool highlight);

private:
    void paintDirectly(QPainter *painter, int ms);
    void paintByImage(QPainter *painter, int ms);
    bool prepareImage();

    QString m_svgText;
    boost::shared_ptr<SvgDocument> m_document;
    boost::shared_ptr<SvgDocument> m_clippingDocument;
    int m_currentTime = 0;
    int m_duration = 0;
    double m_animationSpeed = 1.0;
    QPen m_lineParams;
    std::map<Qt::PenStyle, QString> m_penStyleDashes;
    bool m_paintOnImage = false;
    boost::shared_ptr<QImage> m_image;
    QPointer<QObject> m_stylingObject;
    bool m_highlight = false;
};
