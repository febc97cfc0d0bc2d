// A figure drawn live: an SVG document from the core painted at its natural
// size, or smaller when the column is narrower, never distorted. For figures
// that follow a form or a slider without a sheet around them. The picture is
// rendered once per document and size and kept, because the renderer lays
// out and strokes every label anew on each paint.
#pragma once

#include <QImage>
#include <QWidget>

#include <string>

class QSvgRenderer;

namespace app {

class SvgView : public QWidget {
    Q_OBJECT
  public:
    explicit SvgView(QWidget* parent = nullptr);

    // An empty text shows nothing and takes no room.
    void setSvg(const std::string& svg);
    bool isEmpty() const { return natural.isEmpty(); }
    const std::string& svg() const { return text; }

    QSize sizeHint() const override;
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QSvgRenderer* renderer = nullptr;
    QSize natural;
    std::string text;
    QImage rendered; // empty when the document or the size has changed
};

} // namespace app
