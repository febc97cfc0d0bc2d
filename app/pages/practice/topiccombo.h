// The list of practice topics as the exam and the worksheet offer it: every
// topic, the weak ones, then the topics under their part of the book as
// headings that can't be chosen. Topics the teacher has closed are left out.
#pragma once

#include <QString>

class QComboBox;

namespace app {

// Fills `box` and selects `chosen` (a category key), or the first entry.
void fillPracticeTopics(QComboBox* box, const QString& chosen);
// The chosen entry's label without the indentation of the list.
QString chosenTopicLabel(const QComboBox* box);

} // namespace app
