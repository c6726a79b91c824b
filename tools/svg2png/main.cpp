// svg2png IN.svg OUT.png: renders a picture at its own size. Runs without a display, as a step of the build.

#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <cstdio>

int main(int argc, char **argv)
{
    if (argc != 3) {
        std::fprintf(stderr, "usage: svg2png IN.svg OUT.png\n");
        return 2;
    }
    QSvgRenderer renderer(QString::fromLocal8Bit(argv[1]));
    if (!renderer.isValid() || renderer.defaultSize().isEmpty()) {
        std::fprintf(stderr, "svg2png: no picture in %s\n", argv[1]);
        return 1;
    }
    QImage image(renderer.defaultSize(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer.render(&painter);
    painter.end();
    if (!image.save(QString::fromLocal8Bit(argv[2]), "PNG")) {
        std::fprintf(stderr, "svg2png: cannot write %s\n", argv[2]);
        return 1;
    }
    return 0;
}
