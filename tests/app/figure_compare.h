// Whether a figure painted from its shapes looks as the SVG renderer draws
// the same figure: both on the panel colour, compared block by block.
#pragma once

#include "fl/fig/canvas.h"
#include "fl/fig/style.h"

#include <QColor>
#include <QImage>

#include <algorithm>
#include <cstdlib>

namespace app::test {

// An image of `w` by `h` in the panel colour, on which figures are shown.
inline QImage panelImage(int w, int h) {
    QImage img(w, h, QImage::Format_ARGB32_Premultiplied);
    img.fill(QColor(QLatin1String(fl::figColors().slot[1].c_str())));
    return img;
}

// The largest difference of the mean colour over blocks of 8 by 8 pixels,
// 0 … 255: a glyph edge averages out, a missing or misplaced element or a
// wrong colour does not.
inline double blockDifference(const QImage& a, const QImage& b) {
    constexpr int kBlock = 8;
    double worst = 0;
    for (int by = 0; by + kBlock <= a.height(); by += kBlock / 2)
        for (int bx = 0; bx + kBlock <= a.width(); bx += kBlock / 2) {
            int sum[2][3] = {};
            for (int y = by; y < by + kBlock; ++y)
                for (int x = bx; x < bx + kBlock; ++x) {
                    const QRgb pa = a.pixel(x, y), pb = b.pixel(x, y);
                    sum[0][0] += qRed(pa), sum[0][1] += qGreen(pa), sum[0][2] += qBlue(pa);
                    sum[1][0] += qRed(pb), sum[1][1] += qGreen(pb), sum[1][2] += qBlue(pb);
                }
            for (int c = 0; c < 3; ++c)
                worst = std::max(worst, std::abs(sum[0][c] - sum[1][c]) / double(kBlock * kBlock));
        }
    return worst;
}

// Below it: the same picture. The demonstration's figures measure up to
// about 23 (glyph edges and sub-pixel placement); every broken row of the
// figure view's test lies above 50.
constexpr double kSame = 36;

} // namespace app::test
