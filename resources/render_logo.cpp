// Build-time helper: renders the logo drawing to the PNG shown in the header
// and to the window icon, so that no binary image has to be kept in the tree.
//   render_logo <in.svg> <out.png> <png size> <out.ico> <ico size>
#include <QCoreApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdio>

static bool render(QSvgRenderer& svg, const QString& path, int size, const char* format) {
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    svg.render(&painter);
    painter.end();
    return image.save(path, format);
}

int main(int argc, char** argv) {
    if (argc != 6) {
        std::fprintf(stderr, "usage: %s in.svg out.png size out.ico size\n", argv[0]);
        return 2;
    }
    // The drawing has no text, so no platform and no fonts are needed.
    QCoreApplication app(argc, argv);
    QSvgRenderer svg(QString::fromLocal8Bit(argv[1]));
    if (!svg.isValid()) {
        std::fprintf(stderr, "render_logo: cannot read %s\n", argv[1]);
        return 1;
    }
    if (!render(svg, QString::fromLocal8Bit(argv[2]), QByteArray(argv[3]).toInt(), "PNG") ||
        !render(svg, QString::fromLocal8Bit(argv[4]), QByteArray(argv[5]).toInt(), "ICO")) {
        std::fprintf(stderr, "render_logo: cannot write the images\n");
        return 1;
    }
    return 0;
}
