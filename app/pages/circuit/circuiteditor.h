// The drawing surface of the circuit page: the schematic of a circuit,
// rendered from its SVG, with the block under the pointer highlighted and a
// click reported as the id of the block hit. It builds nothing itself: the
// page's buttons call fl::edit on the selection and then refresh() this
// widget. The picture is drawn at its natural size and shrinks with a narrow
// window; clicks are mapped back through the same factor.
#pragma once

#include "fl/circuit/model.h"
#include "fl/fig/schematic.h"

#include <QImage>
#include <QSvgRenderer>
#include <QWidget>

#include <array>
#include <string>
#include <vector>

namespace app {

class CircuitEditor : public QWidget {
    Q_OBJECT
  public:
    // Draws the working circuit (fl::currentCircuit()) unless told otherwise.
    explicit CircuitEditor(QWidget* parent = nullptr);

    // The circuit to draw, which must outlive the editor; null means the
    // working circuit. Refreshes.
    void setCircuit(fl::Circuit* circuit);
    fl::Circuit& circuit() const;

    // Draws the circuit again with its present selection: after every edit, a
    // change of theme, and a solve (names may have changed).
    void refresh();

    QSize sizeHint() const override;

    // For the page and for tests.
    const std::vector<fl::HitBox>& hitBoxes() const { return hits; }
    // The index in hitBoxes() under the pointer, -1 for none.
    int hoverIndex() const { return hover; }
    // The schematic's natural size in SVG units.
    double naturalWidth() const { return natW; }
    double naturalHeight() const { return natH; }
    // Pixels per SVG unit at the present width: 1 at the natural size, less when narrow.
    double scaleFactor() const;
    // The index in hitBoxes() at a point of the widget: a component before
    // the group around it, the innermost group before the outer; -1 for none.
    int hitAt(QPointF pos) const;
    // Where a point of the schematic (SVG units) lies in the widget.
    QPointF toWidget(QPointF svgPoint) const;
    const std::string& svgText() const { return svg; }

  signals:
    // A click: the id of the block hit, or empty for a click on nothing.
    void selected(const QString& id);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;

  private:
    // The height the picture takes at the present width.
    int pictureHeight() const;

    fl::Circuit* source = nullptr;
    QSvgRenderer renderer;
    QImage picture; // the rendered schematic at the present size
    std::string svg;
    std::vector<fl::HitBox> hits;
    double natW = 400, natH = 200;
    int hover = -1;
    std::array<std::string, 15> drawnColors; // the figure palette of the drawing shown
};

} // namespace app
