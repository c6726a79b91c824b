#include "MachineView.h"

#include "Look.h"
#include "PartRecorder.h"

#include <QPainter>
#include <cmath>

namespace
{
// Micrometres.
constexpr double shownX = 730000;
constexpr double shownY = 290000;
constexpr double bedWidth = 7008 * geometry::micrometresPerInch / 600;
constexpr double bedDepth = geometry::barRows * geometry::nozzlePitch;
constexpr double platformBrim = 12000;

// Pixels.
constexpr double carriageWidth = 46, carriageHeight = 34;
constexpr double carriageReach = 32; ///< what of it lies left of the axis when it is at home
constexpr double factHeight = 18;

void fillRound(QPainter &painter, const QRectF &box, QRgb colour, double radius = 4)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(colour));
    painter.drawRoundedRect(box, radius, radius);
}

/// Rows of the sketch's front grow with Z, that is, upwards on the bed.
void drawUpright(QPainter &painter, const QRectF &box, const QImage &image, const QRect &cells)
{
    painter.save();
    painter.translate(box.bottomLeft());
    painter.scale(1, -1);
    painter.drawImage(QRectF(QPointF(0, 0), box.size()), image, cells);
    painter.restore();
}

void caption(QPainter &painter, const QRectF &box, const QString &text)
{
    look::drawText(painter, QRectF(box.left(), box.top(), box.width(), 16), Qt::AlignVCenter, look::quiet, 12,
                   text);
}
} // namespace

MachineView::MachineView(QWidget *parent) : QWidget(parent) {}

double MachineView::carriageX() const
{
    return m_state["x"].toObject()["counts"].toDouble();
}

bool MachineView::moving() const
{
    return m_state["x"].toObject()["moving"].toBool();
}

void MachineView::follow(const QJsonObject &state, bool firing, const PartRecorder &recorder)
{
    m_state = state;
    m_firing = firing;
    m_sketch.follow(recorder, number("partTop"));
    if (carriageX() != m_lastX)
        m_right = carriageX() > m_lastX;
    m_lastX = carriageX();
    update();
}

void MachineView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double gap = 18;
    const double drawn = height() - factHeight - 6;
    const double part = std::min(width() * 0.18, drawn);
    const double both = width() - part - 2 * gap;
    caption(painter, QRectF(0, 0, both * 0.44, drawn), tr("From the front"));
    drawFront(painter, QRectF(carriageReach, 0, both * 0.44 - carriageReach, drawn));
    caption(painter, QRectF(both * 0.44 + gap, 0, both * 0.56, drawn), tr("From above"));
    drawAbove(painter, QRectF(both * 0.44 + gap + 12, 0, both * 0.56 - 12, drawn));
    drawPart(painter, QRectF(width() - part, 0, part, drawn));
    drawFacts(painter, QRectF(0, height() - factHeight, width(), factHeight));
}

void MachineView::drawFront(QPainter &painter, const QRectF &box) const
{
    const double scale = box.width() / shownX;
    const double rail = box.top() + 26;
    const double plane = rail + carriageHeight + 6;
    const auto toX = [&](double x) { return box.left() + x * scale; };
    fillRound(painter, QRectF(box.left(), rail, box.width(), 4), look::line, 2);
    painter.setPen(QPen(QColor(look::line), 1, Qt::DashLine));
    painter.drawLine(QPointF(box.left(), plane), QPointF(box.right(), plane));
    drawBed(painter, box, plane, scale);
    // The ink station's post, and the stack on it unless the carriage has it.
    const double station = toX(geometry::inkStation);
    fillRound(painter, QRectF(station - 9, plane + 14, 18, box.bottom() - plane - 14), look::line);
    drawCarriage(painter, toX(carriageX()), rail - 4);
    drawStack(painter, m_state["inkStackCoupled"].toBool() ? toX(carriageX()) : station, plane);
}

void MachineView::drawBed(QPainter &painter, const QRectF &box, double plane, double scale) const
{
    const double bed = plane + number("z") * scale;
    const QRectF plate(box.left() + (geometry::bedOriginX - platformBrim) * scale, bed,
                       (bedWidth + 2 * platformBrim) * scale, 5);
    fillRound(painter, QRectF(plate.center().x() - 7, bed + 11, 14, std::max(0.0, box.bottom() - bed - 11)),
              look::line);
    fillRound(painter, plate.translated(0, 6), look::raised, 2);
    if (m_state["platform"].toBool()) {
        fillRound(painter, plate, look::quiet, 2);
    } else {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(QColor(look::warning), 1, Qt::DashLine));
        painter.drawRect(plate);
    }
    const QRect cells = m_sketch.frontCells();
    if (cells.isEmpty())
        return;
    const double size = PartSketch::cell * scale;
    const double height = std::max(2.0, cells.height() * size);
    const QRectF part(box.left() + geometry::bedOriginX * scale + cells.left() * size, bed - height,
                      std::max(2.0, cells.width() * size), height);
    drawUpright(painter, part, m_sketch.front(), cells);
}

void MachineView::drawCarriage(QPainter &painter, double x, double top) const
{
    const QRectF body(x - carriageWidth / 2, top, carriageWidth, carriageHeight);
    fillRound(painter, body, look::raised, 5);
    for (int head = 0; head < geometry::heads; ++head)
        fillRound(painter, QRectF(body.left() + 5 + head * 13, body.bottom() - 14, 10, 16),
                  m_firing && moving() ? look::structure : look::quiet, 2);
    const double speed = m_state["leveller"].toObject()["speed"].toDouble();
    painter.setBrush(QColor(look::surface));
    painter.setPen(QPen(QColor(std::abs(speed) > 1 ? look::good : look::quiet), 2));
    painter.drawEllipse(QPointF(body.left() - 8, body.bottom() - 2), 7, 7);
    if (moving())
        drawSweep(painter, {x, top + 9});
}

/// An arrow where the carriage goes.
void MachineView::drawSweep(QPainter &painter, const QPointF &at) const
{
    const double to = m_right ? 1 : -1;
    painter.setPen(QPen(QColor(m_firing ? look::structure : look::text), 2, Qt::SolidLine, Qt::RoundCap));
    const QPointF tip(at.x() + to * 14, at.y());
    painter.drawLine(QPointF(at.x() - to * 14, at.y()), tip);
    painter.drawLine(tip, tip + QPointF(-to * 5, -4));
    painter.drawLine(tip, tip + QPointF(-to * 5, 4));
}

void MachineView::drawStack(QPainter &painter, double x, double top) const
{
    const QString stuck = m_state["stack"].toObject()["stuck"].toString();
    const bool faulty = !stuck.isEmpty() && stuck != QLatin1String("no");
    const QRectF stack(x - 20, top + 1, 40, 12);
    fillRound(painter, stack, look::surface, 3);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(faulty ? look::danger : look::support), 2));
    painter.drawRoundedRect(stack, 3, 3);
    look::drawText(painter, stack, Qt::AlignCenter, look::text, 9, tr("stack"));
}

void MachineView::drawAbove(QPainter &painter, const QRectF &box) const
{
    const QRectF floor = box.adjusted(0, 20, 0, 0);
    const double scale = std::min(floor.width() / shownX, floor.height() / shownY);
    const double spare = std::max(0.0, floor.height() - shownY * scale) / 2;
    const auto toX = [&](double x) { return floor.left() + x * scale; };
    const auto toY = [&](double y) { return floor.top() + spare + y * scale; };
    const QRectF bed(toX(geometry::bedOriginX), toY(geometry::bedOriginY), bedWidth * scale,
                     bedDepth * scale);
    const double brim = platformBrim * scale;
    fillRound(painter, bed.adjusted(-brim, -brim, brim, brim),
              m_state["platform"].toBool() ? look::raised : look::line, 4);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(look::quiet), 1));
    painter.drawRect(bed);
    const QRect cells = m_sketch.topCells();
    if (!cells.isEmpty()) {
        const double size = PartSketch::cell * scale;
        painter.drawImage(QRectF(bed.left() + cells.left() * size, bed.top() + cells.top() * size,
                                 std::max(2.0, cells.width() * size), std::max(2.0, cells.height() * size)),
                          m_sketch.top(), cells);
    }
    fillRound(painter, QRectF(toX(geometry::inkStation) - 9, bed.top(), 18, bed.height()), look::line);
    // Three heads make the bar: 440 rows each, one behind the other.
    const double x = toX(carriageX()), barTop = toY(number("y")),
                 headDepth = bedDepth * scale / geometry::heads;
    fillRound(painter, QRectF(x - 11, barTop - 6, 22, headDepth * geometry::heads + 12), look::raised);
    for (int head = 0; head < geometry::heads; ++head)
        fillRound(painter, QRectF(x - 5, barTop + head * headDepth + 1, 10, headDepth - 2),
                  m_firing && moving() ? look::structure : look::quiet, 2);
    if (moving())
        drawSweep(painter, {x, barTop + headDepth * 1.5});
}

/// As large as the box allows: its front above, its plan below.
void MachineView::drawPart(QPainter &painter, const QRectF &box) const
{
    caption(painter, box, tr("The part"));
    const QRect front = m_sketch.frontCells(), top = m_sketch.topCells();
    const QRectF room = box.adjusted(0, 20, 0, -factHeight);
    if (front.isEmpty()) {
        look::drawText(painter, room, Qt::AlignCenter, look::quiet, 12, tr("nothing printed"));
        return;
    }
    const double gap = 8;
    const double scale = std::min(
        {room.width() / front.width(), (room.height() - gap) / (front.height() + top.height()), 12.0});
    const QSizeF frontSize = QSizeF(front.size()) * scale, topSize = QSizeF(top.size()) * scale;
    const double left = room.center().x();
    drawUpright(painter, QRectF(QPointF(left - frontSize.width() / 2, room.top()), frontSize),
                m_sketch.front(), front);
    painter.drawImage(
        QRectF(QPointF(left - topSize.width() / 2, room.top() + frontSize.height() + gap), topSize),
        m_sketch.top(), top);
    const auto millimetres = [](int cells) {
        return QString::number(cells * PartSketch::cell / 1000, 'f', 1);
    };
    look::drawText(
        painter, QRectF(box.left(), box.bottom() - factHeight, box.width(), factHeight), Qt::AlignCenter,
        look::text, 12,
        QStringLiteral("%1 x %2 x %3 mm")
            .arg(millimetres(top.width()), millimetres(top.height()), millimetres(front.height())));
}

void MachineView::drawFacts(QPainter &painter, const QRectF &box) const
{
    const QJsonObject leveller = m_state["leveller"].toObject();
    const QJsonObject doors = m_state["doors"].toObject();
    const QJsonObject stack = m_state["stack"].toObject();
    const bool coupled = m_state["inkStackCoupled"].toBool();
    const QString front = doors["front"].toString(), inkBox = doors["inkbox"].toString();
    const auto millimetres = [](double value) { return QString::number(value / 1000, 'f', 2); };
    struct Fact {
        QString text;
        QRgb colour;
        double share;
    };
    const Fact facts[] = {
        {tr("X %1  Y %2  Z %3 mm")
             .arg(millimetres(carriageX()), millimetres(number("y")), millimetres(number("z"))),
         look::text, 0.25},
        {tr("leveller %1 of %2").arg(leveller["speed"].toDouble(), 0, 'f', 0).arg(leveller["set"].toInt()),
         look::text, 0.16},
        {tr("front door %1").arg(front), front == "open" ? look::warning : look::quiet, 0.135},
        {tr("ink box %1").arg(inkBox), inkBox == "open" ? look::warning : look::quiet, 0.115},
        {tr("magnet %1")
             .arg(stack.isEmpty()            ? QStringLiteral("-")
                  : stack["magnet"].toBool() ? tr("on")
                                             : tr("off")),
         look::quiet, 0.1},
        {coupled ? tr("sensor: stack on carriage") : tr("sensor: stack at station"), look::quiet, 0.2},
    };
    double x = box.left();
    for (const Fact &fact : facts) {
        const double width = fact.share * box.width();
        look::drawText(painter, QRectF(x, box.top(), width, box.height()), Qt::AlignVCenter, fact.colour, 12,
                       fact.text);
        x += width;
    }
}
