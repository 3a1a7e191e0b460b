// SPDX-License-Identifier: MIT
#include "planning/overviewmap.h"

#include "graphics/overviewpicture.h"
#include "graphics/zelgraphicsview.h"
#include "planning/dropposition.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QTimer>
#include <QWheelEvent>

#include <algorithm>
#include <functional>
#include <utility>

namespace mirn::zelchipview {

namespace {

constexpr double LeastMagnification = 4.0;
constexpr double MagnificationAhead = 2.0; // from which on the map is painted, so that it is there when it is wanted
constexpr int LongestSide = 220; // pixels, with the border; so are all lengths here
constexpr int ShortestSide = 24;
constexpr double LargestShare = 1.0 / 3; // of the viewport, in each direction
constexpr int Border = 1;
constexpr int CornerDistance = 8;
constexpr int DragDistance = 16; // so near, a drag makes the map step aside
constexpr double SmallestFrame = 8;
constexpr int PaintMilliseconds = 8; // in one go; input is handled in between

} // namespace

struct OverviewMap::Parts
{
    Parts(OverviewMap& map, ZelGraphicsView& shown, std::function<void()> outdated)
        : view(shown)
        , picture(shown, std::move(outdated))
        , later(*new QTimer(&map))
    { }

    ZelGraphicsView& view;
    OverviewPicture picture;
    QTimer& later; // child of the map; runs out when there is nothing else to do
    QRect place; // on the viewport; the map itself is moved when the view scrolls
    QRectF frame; // as it was painted last
    QPointF grip; // from the pointer to the middle of the frame while that is dragged
    bool isOn = true;
    bool isComplete = false; // the picture has been painted to its end in this size
    bool isUnderDrag = false;
};

OverviewMap::OverviewMap(ZelGraphicsView* view)
    : QWidget(view->viewport())
    , m_parts(std::make_unique<Parts>(*this, *view, [this] { schedule(); }))
{
    setObjectName(QStringLiteral("overviewMap"));
    setAccessibleName(tr("Overview"));
    setToolTip(tr("The whole drawing. Click or drag to move the view."));
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_NoMousePropagation);
    setContextMenuPolicy(Qt::PreventContextMenu);
    setFocusPolicy(Qt::NoFocus);
    setCursor(Qt::ArrowCursor);
    hide();
    m_parts->later.setObjectName(QStringLiteral("later"));
    m_parts->later.setSingleShot(true);
    m_parts->later.setInterval(0);
    connect(&m_parts->later, &QTimer::timeout, this, [this] { follow(PaintMilliseconds); });
    for (const QScrollBar* bar : {view->horizontalScrollBar(), view->verticalScrollBar()})
        connect(bar, &QScrollBar::valueChanged, this, &OverviewMap::stay);
    view->viewport()->installEventFilter(this);
    const QObjectList others = view->viewport()->children();
    for (QObject* child : others) {
        if (child != this)
            child->installEventFilter(this);
    }
    schedule();
}

OverviewMap::~OverviewMap() = default;

bool OverviewMap::isOn() const
{
    return m_parts->isOn;
}

void OverviewMap::setOn(bool isOn)
{
    m_parts->isOn = isOn;
    schedule();
    if (!isOn)
        hide();
}

void OverviewMap::settle()
{
    do
        follow(-1);
    while (m_parts->later.isActive());
}

void OverviewMap::schedule()
{
    if (m_parts->isOn && !m_parts->later.isActive())
        m_parts->later.start();
}

bool OverviewMap::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::ChildAdded:
        if (watched == m_parts->view.viewport())
            static_cast<QChildEvent*>(event)->child()->installEventFilter(this); // it may want the map's corner
        break;
    case QEvent::Paint: // zooming and scrolling always end in one
    case QEvent::Show:
    case QEvent::Hide:
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::PaletteChange:
        schedule();
        break;
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::DragLeave:
    case QEvent::Drop:
    case QEvent::WindowBlocked: // by a dialog: the end of the drag is not reported any more
        if (watched == m_parts->view.viewport())
            followDrag(*event);
        break;
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}

void OverviewMap::followDrag(const QEvent& event)
{
    const bool isDragging = event.type() == QEvent::DragEnter || event.type() == QEvent::DragMove;
    const QRect around = m_parts->place.adjusted(-DragDistance, -DragDistance, DragDistance, DragDistance);
    m_parts->isUnderDrag = isDragging && !m_parts->place.isEmpty()
        && around.contains(dropPosition(static_cast<const QDropEvent&>(event)));
    showOrHide();
}

void OverviewMap::follow(int milliseconds)
{
    m_parts->later.stop();
    const QSize size = sizeOnViewport();
    m_parts->isComplete = m_parts->isComplete && size == m_parts->place.size();
    m_parts->place = size.isEmpty() ? QRect() : freeCorner(size);
    if (!m_parts->place.isEmpty()) {
        setGeometry(m_parts->place);
        paintPicture(milliseconds);
    }
    showOrHide();
}

// The drawing comes first: the paint event that makes it exact schedules the map again.
void OverviewMap::paintPicture(int milliseconds)
{
    if (frame() != m_parts->frame)
        update();
    if (milliseconds >= 0 && !m_parts->view.isExact())
        return;
    const QSize inside = m_parts->place.size() - QSize(2 * Border, 2 * Border);
    const ViewCanvas::Work work
        = m_parts->picture.update((QSizeF(inside) * devicePixelRatioF()).toSize(), QDeadlineTimer(milliseconds));
    if (work == ViewCanvas::Work::Left)
        schedule();
    else
        m_parts->isComplete = true;
    if (work != ViewCanvas::Work::None)
        update();
}

void OverviewMap::showOrHide()
{
    setVisible(m_parts->isOn && m_parts->isComplete && !m_parts->place.isEmpty() && !m_parts->isUnderDrag
        && m_parts->picture.magnification() >= LeastMagnification);
}

// Scrolling the viewport moves its children. Moved back after that, the map keeps its pixels.
void OverviewMap::stay()
{
    if (isHidden())
        return;
    setGeometry(m_parts->place);
    update(); // for the frame, in the same paint as the drawing
}

// Empty if the map is neither wanted now nor will be after the next steps of a zoom.
QSize OverviewMap::sizeOnViewport() const
{
    if (!m_parts->isOn || !m_parts->picture.hasDrawing() || m_parts->picture.magnification() < MagnificationAhead)
        return {};
    const QSizeF most = QSizeF(m_parts->view.viewport()->size()) * LargestShare;
    const QSize size = m_parts->picture.area()
                           .size()
                           .scaled(std::min<qreal>(LongestSide, most.width()),
                               std::min<qreal>(LongestSide, most.height()), Qt::KeepAspectRatio)
                           .toSize();
    return std::min(size.width(), size.height()) < ShortestSide ? QSize() : size;
}

QRect OverviewMap::freeCorner(QSize size) const
{
    const QWidget* viewport = m_parts->view.viewport();
    const QRect space = viewport->rect().adjusted(CornerDistance, CornerDistance, -CornerDistance, -CornerDistance);
    const QRect right(space.bottomRight() - QPoint(size.width() - 1, size.height() - 1), size);
    const QRect left(QPoint(space.left(), right.top()), size);
    const QList<QWidget*> others = viewport->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    const auto isFree = [&](const QRect& corner) {
        return std::none_of(others.begin(), others.end(), [&](const QWidget* other) {
            return other != this && !other->isHidden() && !other->isWindow() && other->geometry().intersects(corner);
        });
    };
    for (const QRect& corner : {right, left, QRect(QPoint(right.left(), space.top()), size)}) {
        if (isFree(corner))
            return corner;
    }
    return right;
}

// From scene coordinates to those of the map.
QTransform OverviewMap::toMap() const
{
    const QRectF area = m_parts->picture.area();
    const double scale = std::min(
        (m_parts->place.width() - 2 * Border) / area.width(), (m_parts->place.height() - 2 * Border) / area.height());
    return QTransform(scale, 0, 0, scale, Border - area.left() * scale, Border - area.top() * scale);
}

// Around what the view shows, in the map's coordinates; a tiny part is surrounded at a distance.
QRectF OverviewMap::frame() const
{
    QRectF frame = toMap().mapRect(
        m_parts->view.viewportTransform().inverted().mapRect(QRectF(m_parts->view.viewport()->rect())));
    const double wider = std::max(0.0, SmallestFrame - frame.width()) / 2;
    const double higher = std::max(0.0, SmallestFrame - frame.height()) / 2;
    return frame.adjusted(-wider, -higher, wider, higher);
}

void OverviewMap::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::WindowText)); // the border
    if (!m_parts->picture.hasDrawing() || m_parts->place.isEmpty())
        return;
    m_parts->picture.drawOn(painter, QPointF(Border, Border), devicePixelRatioF());
    m_parts->frame = frame();
    painter.setClipRect(rect().adjusted(Border, Border, -Border, -Border));
    // A dark line between two light ones can be seen on every colour.
    const QRect inside = m_parts->frame.toAlignedRect();
    const std::pair<int, QColor> lines[] = {{3, Qt::white}, {2, Qt::black}, {1, Qt::black}, {0, Qt::white}};
    for (const auto& [distance, color] : lines) {
        painter.setPen(color);
        painter.drawRect(inside.adjusted(-distance, -distance, distance - 1, distance - 1));
    }
}

void OverviewMap::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !m_parts->picture.hasDrawing())
        return;
    const bool isOnFrame = frame().contains(event->pos());
    m_parts->grip = isOnFrame ? frame().center() - event->pos() : QPointF();
    if (!isOnFrame)
        moveViewTo(event->pos());
}

void OverviewMap::mouseMoveEvent(QMouseEvent* event)
{
    if (event->buttons() & Qt::LeftButton)
        moveViewTo(event->pos());
}

void OverviewMap::mouseReleaseEvent(QMouseEvent* event)
{
    event->accept(); // the drawing has not seen the press
}

void OverviewMap::moveViewTo(QPoint position)
{
    if (m_parts->picture.hasDrawing() && !m_parts->place.isEmpty())
        m_parts->view.centerOn(toMap().inverted().map(QPointF(position) + m_parts->grip));
}

void OverviewMap::wheelEvent(QWheelEvent* event)
{
    QWidget* viewport = m_parts->view.viewport();
    const QPoint middle = viewport->rect().center();
    QWheelEvent turned(middle, viewport->mapToGlobal(middle), event->pixelDelta(), event->angleDelta(),
        event->buttons(), event->modifiers(), event->phase(), event->inverted());
    QCoreApplication::sendEvent(viewport, &turned);
    event->accept();
}

} // namespace mirn::zelchipview
