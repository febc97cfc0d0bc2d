// Build-time helper: renders the logo drawing to the PNG shown in the header,
// to the window icon and to the menu icons of the package, so that no binary
// image has to be kept in the tree. The format follows each file's suffix.
//   render_logo <in.svg> <out> <size> [<out> <size>]...
#include <QCoreApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdio>

static bool render(QSvgRenderer& svg, const QString& path, int size) {
    if (size <= 0) return false;
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    svg.render(&painter);
    painter.end();
    return image.save(path);
}

int main(int argc, char** argv) {
    if (argc < 4 || argc % 2 != 0) {
        std::fprintf(stderr, "usage: %s in.svg out size [out size]...\n", argv[0]);
        return 2;
    }
    // The drawing has no text, so no platform and no fonts are needed.
    QCoreApplication app(argc, argv);
    QSvgRenderer svg(QString::fromLocal8Bit(argv[1]));
    if (!svg.isValid()) {
        std::fprintf(stderr, "render_logo: cannot read %s\n", argv[1]);
        return 1;
    }
    for (int i = 2; i + 1 < argc; i += 2) {
        if (!render(svg, QString::fromLocal8Bit(argv[i]), QByteArray(argv[i + 1]).toInt())) {
            std::fprintf(stderr, "render_logo: cannot write %s\n", argv[i]);
            return 1;
        }
    }
    return 0;
}
