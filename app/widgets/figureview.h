// A figure painted straight from the shapes its canvas recorded, at its
// natural size or smaller when the column is narrower, never distorted: for
// figures redrawn at every slider step, where an SVG renderer would lay out
// and stroke every label anew. Letters come from the glyph cache; a label's
// halo is widened from them once per text and font and kept as an image.
#pragma once

#include "fl/fig/canvas.h"

#include <QWidget>

#include <vector>

class QPainter;

namespace app {

// Paints `shapes` in the current figure colours, each coordinate times
// `scale` and moved by `offset`.
void paintShapes(QPainter& p, const std::vector<fl::Shape>& shapes, double scale, QPointF offset);

class FigureView : public QWidget {
    Q_OBJECT
  public:
    explicit FigureView(QWidget* parent = nullptr);

    // A figure without a body shows nothing and takes no room.
    void setFigure(fl::FigureOut figure);
    const fl::FigureOut& figure() const { return fig; }
    bool isEmpty() const { return natural.isEmpty(); }

    QSize sizeHint() const override;
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    fl::FigureOut fig;
    QSize natural;
};

} // namespace app
