// Renders an SVG file to a square PNG: renderIcon SOURCE.svg EDGE TARGET.png

#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdio>

int main(int argc, char **argv) {
    if (argc != 4) {
        std::fputs("usage: renderIcon SOURCE.svg EDGE TARGET.png\n", stderr);
        return 2;
    }
    QSvgRenderer drawing(QString::fromLocal8Bit(argv[1]));
    const int edge = QByteArray(argv[2]).toInt();
    QImage image(edge, edge, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    drawing.render(&painter);
    painter.end();
    if (!drawing.isValid() || !image.save(QString::fromLocal8Bit(argv[3]))) {
        std::fprintf(stderr, "renderIcon: cannot render %s\n", argv[1]);
        return 1;
    }
    return 0;
}
