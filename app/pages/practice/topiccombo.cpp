#include "app/pages/practice/topiccombo.h"

#include "app/shell/locks.h"
#include "fl/practice/categories.h"

#include <QComboBox>
#include <QSignalBlocker>
#include <QStandardItemModel>

namespace app {

void fillPracticeTopics(QComboBox* box, const QString& chosen) {
    QSignalBlocker block(box);
    box->clear();
    std::string group;
    for (const fl::PracticeCategory& c : fl::practiceCategories()) {
        if (!c.lockKey.empty() && !isOpenKey(c.lockKey)) continue;
        if (!c.group.empty() && c.group != group) {
            group = c.group;
            box->insertSeparator(box->count());
            box->addItem(QString::fromStdString(group));
            if (auto* model = qobject_cast<QStandardItemModel*>(box->model()))
                model->item(box->count() - 1)->setEnabled(false);
        }
        const QString label = QString::fromStdString(c.label);
        box->addItem(c.group.empty() ? label : QStringLiteral("   ") + label, QString::fromStdString(c.key));
    }
    const int at = box->findData(chosen);
    box->setCurrentIndex(at >= 0 ? at : 0);
}

QString chosenTopicLabel(const QComboBox* box) {
    return box->currentText().trimmed();
}

} // namespace app
