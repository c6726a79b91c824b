#include "forms/Icons.h"

#include <QColor>
#include <QHash>
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

/// Makes each icon once: pages ask again whenever they are shown, and every new icon draws its pictures anew.
template <class Make> QIcon once(const char *kind, const QString &name, IconPlace place, Make make)
{
    static QHash<QString, QIcon> made;
    QIcon &icon = made[QString::fromLatin1(kind) + QString::number(int(place)) + name];
    if (icon.isNull())
        make(icon, place == IconPlace::Alone ? load(name) : widened(load(name)));
    return icon;
}
} // namespace

QIcon pageIcon(const QString &name, IconPlace place)
{
    return once("page", name, place,
                [](QIcon &icon, const QPixmap &picture) { add(icon, picture, QIcon::Off); });
}

QIcon quietIcon(const QString &name, IconPlace place)
{
    return once("quiet", name, place, [](QIcon &icon, const QPixmap &picture) {
        add(icon, tint(picture, quietColour), QIcon::Off);
    });
}

QIcon choiceIcon(const QString &name)
{
    return once("choice", name, IconPlace::Alone, [](QIcon &icon, const QPixmap &picture) {
        add(icon, tint(picture, quietColour), QIcon::Off);
        add(icon, tint(picture, textColour), QIcon::On);
    });
}

QIcon darkIcon(const QString &name)
{
    return once("dark", name, IconPlace::BeforeText, [](QIcon &icon, const QPixmap &picture) {
        add(icon, tint(picture, darkColour), QIcon::Off);
    });
}
