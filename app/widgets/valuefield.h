// One labelled input for a quantity: symbol, line edit, unit, and under the
// edit a description and the interpretation line ("= 5,5·10³"), which the
// page fills after reading the text. The field itself never parses.
#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;

namespace app {

class ValueField : public QWidget {
    Q_OBJECT
public:
    // `key` is both the name the page asks for and the symbol shown;
    // `label` names the quantity under the edit, `desc` adds to it.
    ValueField(const QString& key, const QString& label, const QString& unit, const QString& def = QString(),
               const QString& desc = QString(), QWidget* parent = nullptr);

    QString text() const;
    void setText(const QString& text);
    // A red frame until the next edit.
    void setInvalid(bool invalid);
    // Empty html clears the line.
    void setInterp(const QString& html);

    QString key;
    QString unit;
    QLineEdit* edit = nullptr;
    QLabel* interp = nullptr;
    QLabel* symbol = nullptr;
    QLabel* desc = nullptr;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    void enterPressed();
    void changed();
};

}  // namespace app
