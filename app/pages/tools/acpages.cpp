#include "app/pages/tools/acpages.h"

#include "app/widgets/helpers.h"
#include "app/widgets/page.h"
#include "app/widgets/figureview.h"
#include "app/widgets/valuefield.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSlider>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace app {

namespace {

QString qs(const std::string& s) {
    return QString::fromStdString(s);
}

QLabel* label(const QString& text, const QString& cls) {
    auto* l = new QLabel(text);
    l->setTextFormat(Qt::RichText);
    l->setWordWrap(true);
    l->setProperty("class", cls);
    return l;
}

} // namespace

// A QLabel asks its layout for a new pass at every setText, and for this page
// that pass cost more than drawing the figures. The label sits alone in this
// box, which asks only when the text needs another height.
class LiveText : public QWidget {
  public:
    explicit LiveText(const QString& cls) : text(label(QString(), cls)) {
        text->setParent(this);
        QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
        policy.setHeightForWidth(true);
        setSizePolicy(policy);
    }
    QLabel* inner() const { return text; }

    void setText(const QString& t) {
        if (t == text->text()) return;
        text->setText(t);
        const QSize least = text->minimumSizeHint();
        const int tall = text->heightForWidth(width());
        if (least != shownLeast || tall != shownTall) {
            shownLeast = least, shownTall = tall;
            updateGeometry();
        }
    }

    QSize sizeHint() const override { return text->sizeHint(); }
    QSize minimumSizeHint() const override { return text->minimumSizeHint(); }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override { return text->heightForWidth(width); }

  protected:
    void resizeEvent(QResizeEvent*) override {
        text->setGeometry(rect());
        shownTall = text->heightForWidth(width());
    }

  private:
    QLabel* text;
    QSize shownLeast; // what the layout was last told
    int shownTall = -1;
};

AcPage::AcPage(PageHost* h, QWidget* parent)
    : ToolPage(h, QStringLiteral("Vekselstrømskreds (R, L, C i serie)"),
               QStringLiteral("Skriv R, L og C – et felt, der står tomt, er en del, der ikke er med – og "
                              "frekvensen. Giv spændingen U eller strømmen I. Du får X<sub>L</sub>, X<sub>C</sub>, Z, "
                              "strømmen, spændingen over hver del, φ, effekterne og resonansfrekvensen, med "
                              "vektordiagram og modstandstrekant."),
               QStringLiteral("Vekselstrømskredsen"),
               QStringLiteral("Værktøj · formelsamling s. 11–20"), parent) {
    addField(QStringLiteral("R"), QStringLiteral("Modstand"), QStringLiteral("Ω"));
    addField(QStringLiteral("L"), QStringLiteral("Spolens induktans – 9 mH skrives 9m"), QStringLiteral("H"));
    addField(QStringLiteral("C"), QStringLiteral("Kondensatorens kapacitet – 50 µF skrives 50u"), QStringLiteral("F"));
    addField(QStringLiteral("f"), QStringLiteral("Frekvens"), QStringLiteral("Hz"), QStringLiteral("50"));
    addField(QStringLiteral("U"), QStringLiteral("Spændingen over hele kredsen"), QStringLiteral("V"),
             QStringLiteral("230"));
    addField(QStringLiteral("I"), QStringLiteral("…eller strømmen (lad så U stå tom)"), QStringLiteral("A"));
    addRunButton(QStringLiteral("Beregn"), true);
}

fl::ToolOut AcPage::compute(const fl::FormMap& form) const {
    return fl::acSeries(form);
}

AcDemoPage::AcDemoPage(PageHost* h, QWidget* parent) : Page(parent), host(h) {
    Card* card = addCard();
    card->addLabel(QStringLiteral("Demonstration · R, L og C i serie på %1 V").arg(fl::DemoSetting{}.U), QStringLiteral("crumb"));
    card->addLabel(QStringLiteral("Vekselstrøm – interaktiv"), QStringLiteral("h2"));
    card->addLabel(QStringLiteral("Skru på R, L, C og f og se spændingen u og strømmen i over tid, viserne og "
                                  "resonanskurven ændre sig med det samme. Ved resonansfrekvensen er X<sub>L</sub> = "
                                  "X<sub>C</sub>, og strømmen er størst."),
                   QStringLiteral("hint"));

    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(12);
    grid->setVerticalSpacing(6);
    grid->setColumnStretch(1, 1);
    const auto& ranges = fl::demoRanges();
    for (int q = 0; q < 4; ++q) {
        const fl::DemoRange& r = ranges[static_cast<size_t>(q)];
        auto* name = label(qs(r.symbol), QStringLiteral("sym"));
        name->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        name->setMinimumWidth(40);
        name->setToolTip(qs(r.name));
        auto* s = new QSlider(Qt::Horizontal);
        s->setRange(0, fl::kSliderSteps);
        s->setSingleStep(1);
        s->setPageStep(fl::kSliderSteps / 20);
        s->setAccessibleName(qs(r.name));
        auto* v = new LiveText(QStringLiteral("unit"));
        v->setMinimumWidth(90);
        grid->addWidget(name, q, 0);
        grid->addWidget(s, q, 1);
        grid->addWidget(v, q, 2);
        sliders[static_cast<size_t>(q)] = s;
        values[static_cast<size_t>(q)] = v;
        connect(s, &QSlider::valueChanged, this, [this, q] { moved(static_cast<Quantity>(q)); });
    }
    card->layout->addLayout(grid);

    QHBoxLayout* buttons = card->addButtonRow();
    toResonance = card->addButton(buttons, QStringLiteral("Sæt f til resonansfrekvensen"), QStringLiteral("primary"));
    QPushButton* reset = card->addButton(buttons, QStringLiteral("Start forfra"));
    connect(toResonance, &QPushButton::clicked, this, [this] {
        fl::DemoSetting s = now;
        s.f = fl::seriesRlc({s.R, s.L, s.C, s.f, s.U, NAN}).f0;
        show(s);
    });
    connect(reset, &QPushButton::clicked, this, [this] { show(fl::DemoSetting{}); });
    readoutText = new LiveText(QStringLiteral("hint0"));
    card->layout->addWidget(readoutText);

    Card* pictures = addCard();
    auto* figures = new QGridLayout;
    figures->setHorizontalSpacing(14);
    figures->setVerticalSpacing(8);
    curveView = new FigureView;
    phasorView = new FigureView;
    resonanceView = new FigureView;
    figures->addWidget(label(QStringLiteral("Spænding og strøm over tid"), QStringLiteral("sh")), 0, 0);
    figures->addWidget(label(QStringLiteral("Visere"), QStringLiteral("sh")), 0, 1);
    figures->addWidget(curveView, 1, 0);
    figures->addWidget(phasorView, 1, 1);
    figures->addWidget(label(QStringLiteral("Resonanskurve: strømmen ved alle frekvenser"), QStringLiteral("sh")), 2, 0,
                       1, 2);
    figures->addWidget(resonanceView, 3, 0, 1, 2);
    pictures->layout->addLayout(figures);

    show(fl::DemoSetting{});
}

QLabel* AcDemoPage::readout() const {
    return readoutText->inner();
}

void AcDemoPage::show(const fl::DemoSetting& s) {
    const auto& ranges = fl::demoRanges();
    now = s;
    double* value[] = {&now.R, &now.L, &now.C, &now.f};
    settling = true;
    for (size_t q = 0; q < 4; ++q) {
        *value[q] = std::clamp(*value[q], ranges[q].lo, ranges[q].hi);
        sliders[q]->setValue(fl::sliderPosition(*value[q], fl::kSliderSteps, ranges[q].lo, ranges[q].hi));
    }
    settling = false;
    redraw();
}

void AcDemoPage::moved(Quantity q) {
    if (settling) return;
    const fl::DemoRange& r = fl::demoRanges()[q];
    const double v = fl::sliderValue(sliders[q]->value(), fl::kSliderSteps, r.lo, r.hi);
    (q == R ? now.R : q == L ? now.L : q == C ? now.C : now.f) = v;
    redraw();
}

void AcDemoPage::redraw() {
    const auto& ranges = fl::demoRanges();
    const double v[] = {now.R, now.L, now.C, now.f};
    for (size_t q = 0; q < 4; ++q)
        values[q]->setText(qs(fl::tool::formatValue(v[q], ranges[q].unit)));
    fl::DemoView view = fl::demoView(now);
    readoutText->setText(qs(view.readout));
    curveView->setFigure(std::move(view.curves));
    phasorView->setFigure(std::move(view.phasors));
    resonanceView->setFigure(std::move(view.resonance));
    toResonance->setEnabled(!view.resonant);
}

void AcDemoPage::onSettings() {
    redraw();
}

void AcDemoPage::onTheme() {
    redraw();
}

} // namespace app
