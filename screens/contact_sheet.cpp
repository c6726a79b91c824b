// contact_sheet SHEET.png FOLDER...: the pictures of the same name side by side, one column a folder,
// smaller.

#include "Palette.h"

#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>

#include <cstdio>

namespace
{
constexpr int width = 180;
constexpr int gap = 8;
constexpr int captionHeight = 22;
const QColor ground(0x2b, 0x33, 0x3d);
const QColor ink(0xee, 0xf2, 0xf6);
} // namespace

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    const QStringList folders = application.arguments().mid(2);
    if (folders.isEmpty())
        return 2;
    const QStringList names = QDir(folders.first()).entryList({"*.png"}, QDir::Files, QDir::Name);
    if (names.isEmpty())
        return 1;
    const QImage first(QDir(folders.first()).filePath(names.first()));
    const QSize size = first.size().scaled(width, first.height(), Qt::KeepAspectRatio);
    const QSize cell = size + QSize(gap, gap + captionHeight);
    // one row a page would be a ribbon: several groups of columns side by side
    const int groups = qMax(1, qRound(names.size() / 12.0));
    const int rows = (names.size() + groups - 1) / groups;
    QImage sheet(groups * (folders.size() * cell.width() + gap), rows * cell.height() + gap,
                 QImage::Format_RGB32);
    sheet.fill(ground);
    QPainter painter(&sheet);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setPen(ink);
    for (int i = 0; i < names.size(); ++i) {
        QPoint at(gap + i / rows * (folders.size() * cell.width() + gap), gap + i % rows * cell.height());
        painter.drawText(QRect(at, QSize(cell.width() * folders.size(), captionHeight)), Qt::AlignVCenter,
                         QFileInfo(names[i]).completeBaseName());
        at.ry() += captionHeight;
        for (const QString &folder : folders) {
            const QImage page(QDir(folder).filePath(names[i]));
            if (page.isNull())
                std::fprintf(stderr, "%s has no %s\n", qPrintable(folder), qPrintable(names[i]));
            else
                painter.drawImage(at, page.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
            at.rx() += cell.width();
        }
    }
    painter.end();
    return withPalette(sheet, 256).save(application.arguments().at(1), nullptr, 0) ? 0 : 1;
}
