#include "app/widgets/valuefield.h"

#include "app/widgets/helpers.h"
#include "fl/expr/symbols.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QEvent>
#include <QHash>
#include <QVBoxLayout>

#include <algorithm>

namespace app {

namespace {

// The interpretation line changes at every keystroke, and a QLabel asks its
// layout for a new pass at every setText: on a page of wrapped texts that
// pass costs more than the rest of the keystroke. The line sits alone in this
// box, which asks only when the line needs another height or more width than
// it has.
class LineBox : public QWidget {
  public:
    explicit LineBox(QWidget* parent) : QWidget(parent) {
        setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    }

    QSize sizeHint() const override { return told; }
    QSize minimumSizeHint() const override { return told; }

    void fit(const QLabel* line) {
        const QSize want = line->sizeHint();
        QSize next(std::max(told.width(), want.width() > width() ? want.width() : 0),
                   std::max(line->minimumHeight(), want.height()));
        if (next != told) {
            told = next;
            updateGeometry();
        }
    }

  protected:
    void resizeEvent(QResizeEvent*) override {
        for (QWidget* child : findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
            child->setGeometry(rect());
    }

  private:
    QSize told{0, 0}; // what the layout was last told
};

} // namespace

ValueField::ValueField(const QString& key_, const QString& label, const QString& unit_, const QString& def,
                       const QString& descText, QWidget* parent)
    : QWidget(parent), key(key_), unit(unit_) {
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(10);
    grid->setVerticalSpacing(1);

    // The same display form as in the worked sheets: "XL" reads X with index L.
    symbol = new QLabel(QString::fromStdString(fl::symbolDisplay(key.toStdString())), this);
    symbol->setTextFormat(Qt::RichText);
    symbol->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    symbol->setMinimumWidth(80);
    symbol->setProperty("class", "sym");

    edit = new QLineEdit(def, this);
    edit->setMinimumWidth(180);
    edit->setMaximumWidth(260);
    edit->setClearButtonEnabled(false);

    auto* unitLabel = new QLabel(unit, this);
    unitLabel->setMinimumWidth(48);
    unitLabel->setProperty("class", "unit");

    QString about = label;
    if (!descText.isEmpty()) about = about.isEmpty() ? descText : about + " – " + descText;
    desc = new QLabel(about, this);
    desc->setTextFormat(Qt::RichText);
    desc->setWordWrap(true);
    desc->setProperty("class", "desc");
    desc->setVisible(!about.isEmpty());

    auto* lineBox = new LineBox(this);
    interp = new QLabel(lineBox);
    interp->setTextFormat(Qt::RichText);
    interp->setProperty("class", "interp");
    // The box keeps the line's room while it is empty, so that it doesn't
    // push the fields below down as it appears under the student's typing.
    interp->installEventFilter(this);
    interp->hide();

    auto* below = new QVBoxLayout;
    below->setContentsMargins(0, 0, 0, 0);
    below->setSpacing(0);
    below->addWidget(desc);
    below->addWidget(lineBox);

    grid->addWidget(symbol, 0, 0);
    grid->addWidget(edit, 0, 1);
    grid->addWidget(unitLabel, 0, 2);
    grid->addLayout(below, 1, 1, 1, 3);
    grid->setColumnStretch(3, 1);

    connect(edit, &QLineEdit::textChanged, this, [this] {
        setClass(edit, QString());
        emit changed();
    });
    connect(edit, &QLineEdit::returnPressed, this, &ValueField::enterPressed);
}

bool ValueField::eventFilter(QObject* watched, QEvent* event) {
    // One line of its own font, which the stylesheet and the text size decide.
    if (watched == interp && (event->type() == QEvent::FontChange || event->type() == QEvent::Polish)) {
        // Measured once per font: a page has many fields, and a new text size
        // tells each of them.
        static QHash<QString, int> heights;
        const QString font = interp->font().key();
        auto it = heights.constFind(font);
        if (it == heights.constEnd()) {
            QLabel line;
            line.setTextFormat(Qt::RichText);
            line.setFont(interp->font());
            line.setText(QStringLiteral("= 0"));
            it = heights.insert(font, line.sizeHint().height());
        }
        interp->setMinimumHeight(*it);
        static_cast<LineBox*>(interp->parentWidget())->fit(interp);
    }
    return QWidget::eventFilter(watched, event);
}

QString ValueField::text() const { return edit->text(); }

void ValueField::setText(const QString& text) { edit->setText(text); }

void ValueField::setInvalid(bool invalid) { setClass(edit, invalid ? QStringLiteral("err") : QString()); }

void ValueField::setInterp(const QString& html) {
    if (html == interp->text()) return;
    interp->setText(html);
    interp->setVisible(!html.isEmpty());
    static_cast<LineBox*>(interp->parentWidget())->fit(interp);
}

}  // namespace app
