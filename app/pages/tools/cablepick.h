// The small chooser that fills a tool's R and X fields from the cable
// tables: conductor, cross-section and (optionally) cable type. What the
// student chose is kept in the store under <key>_mat, <key>_q and
// <key>_type, so the page opens with the same cable next time.
#pragma once

#include <QObject>
#include <QString>

class QComboBox;

namespace app {

class ToolPage;
class ValueField;

class CablePick : public QObject {
    Q_OBJECT
  public:
    // Adds "<label>: leder", "<label>: tværsnit" and, with `withType`,
    // "<label>: kabeltype" to the page's form, set from the store or the defaults.
    CablePick(ToolPage* page, const QString& label, const QString& storeKey, bool withType,
              const QString& defaultType, double defaultMm2);

    // The fields to fill (x may be null); fills them now if either is empty.
    void bind(ValueField* r, ValueField* x);
    // Stores the choice and writes the table values, or empties a field
    // with a placeholder where the table has none.
    void apply();

    QComboBox* material() const { return mat; }
    QComboBox* section() const { return mm2; }
    QComboBox* type() const { return kind; }

  private:
    QString key;
    QComboBox* mat = nullptr;
    QComboBox* mm2 = nullptr;
    QComboBox* kind = nullptr;
    ValueField* rField = nullptr;
    ValueField* xField = nullptr;
};

} // namespace app
