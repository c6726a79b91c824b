#include "forms/Icons.h"

#include <QColor>
#include <QPainter>
#include <QPixmap>

namespace
{
const QColor quietColour(0x9a, 0xa5, 0xb1);
const QColor textColour(0xee, 0xf2, 0xf6);
const QColor darkColour(0x12, 0x16, 0x1b);
constexpr int textGap = 8;
constexpr qreal disabledOpacity = 0.4;

QPixmap load(const QString &name)
{
    return QPixmap(QStringLiteral(":icon/%1.png").arg(name));
}

QPixmap tint(QPixmap picture, const QColor &colour)
{
    QPainter painter(&picture);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(picture.rect(), colour);
    return picture;
}

QPixmap widened(const QPixmap &picture)
{
    QPixmap result(picture.width() + textGap, picture.height());
    result.fill(Qt::transparent);
    QPainter(&result).drawPixmap(0, 0, picture);
    return result;
}

QPixmap faded(const QPixmap &picture)
{
    QPixmap result(picture.size());
    result.fill(Qt::transparent);
    QPainter painter(&result);
    painter.setOpacity(disabledOpacity);
    painter.drawPixmap(0, 0, picture);
    return result;
}

void add(QIcon &icon, const QPixmap &picture, QIcon::State state)
{
    icon.addPixmap(picture, QIcon::Normal, state);
    icon.addPixmap(picture, QIcon::Selected, state); // a selected list row tints icons otherwise
    icon.addPixmap(faded(picture), QIcon::Disabled, state);
}
} // namespace

QIcon pageIcon(const QString &name, IconPlace place)
{
    QIcon icon;
    add(icon, place == IconPlace::Alone ? load(name) : widened(load(name)), QIcon::Off);
    return icon;
}

QIcon quietIcon(const QString &name, IconPlace place)
{
    QIcon icon;
    const QPixmap picture = load(name);
    add(icon, tint(place == IconPlace::Alone ? picture : widened(picture), quietColour), QIcon::Off);
    return icon;
}

QIcon choiceIcon(const QString &name)
{
    QIcon icon;
    add(icon, tint(load(name), quietColour), QIcon::Off);
    add(icon, tint(load(name), textColour), QIcon::On);
    return icon;
}

QIcon darkIcon(const QString &name)
{
    QIcon icon;
    add(icon, tint(widened(load(name)), darkColour), QIcon::Off);
    return icon;
}
