#include "app/widgets/valuefield.h"

#include "app/widgets/helpers.h"
#include "fl/expr/symbols.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QEvent>
#include <QHash>
#include <QVBoxLayout>

namespace app {

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

    interp = new QLabel(this);
    interp->setTextFormat(Qt::RichText);
    interp->setProperty("class", "interp");
    // The line keeps its room while empty, so that it doesn't push the fields
    // below down as it appears under the student's typing.
    QSizePolicy keep = interp->sizePolicy();
    keep.setRetainSizeWhenHidden(true);
    interp->setSizePolicy(keep);
    interp->installEventFilter(this);
    interp->hide();

    auto* below = new QVBoxLayout;
    below->setContentsMargins(0, 0, 0, 0);
    below->setSpacing(0);
    below->addWidget(desc);
    below->addWidget(interp);

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
    }
    return QWidget::eventFilter(watched, event);
}

QString ValueField::text() const { return edit->text(); }

void ValueField::setText(const QString& text) { edit->setText(text); }

void ValueField::setInvalid(bool invalid) { setClass(edit, invalid ? QStringLiteral("err") : QString()); }

void ValueField::setInterp(const QString& html) {
    interp->setText(html);
    interp->setVisible(!html.isEmpty());
}

}  // namespace app
