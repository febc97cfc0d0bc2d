// Driving a page as a student would: clicking a link in a sheet, typing key
// by key, and reading back the sheet as text.
#pragma once

#include "app/pages/tools/toolpage.h"
#include "app/sheet/resultarea.h"
#include "app/sheet/sheetview.h"
#include "app/widgets/figureview.h"
#include "app/widgets/valuefield.h"
#include "fl/expr/markup.h"
#include "tests/app/click_link.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTest>

#include <string>

namespace app::test {

using ::clickLink;

inline bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

// Clears the edit and types as on a keyboard, one key at a time, also "√" and "·".
inline void type(QLineEdit* edit, const QString& text) {
    QTest::mouseClick(edit, Qt::LeftButton);
    edit->selectAll();
    QTest::keyClick(edit, Qt::Key_Delete);
    for (const QChar c : text) {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, QString(c));
        QApplication::sendEvent(edit, &press);
    }
}

inline void type(ValueField* field, const QString& text) {
    type(field->edit, text);
}

// The sheet of any page with a result area, as plain text.
template <typename Page> std::string sheetOf(const Page* page) {
    return fl::stripTags(page->resultArea()->view()->markup());
}

inline std::string noteOf(const ToolPage* page) {
    return fl::htmlToPlain(page->noteView()->markup());
}

// The page's live figure, if it has one.
inline const FigureView* figureOf(const ToolPage* page) {
    return page->findChild<FigureView*>();
}

} // namespace app::test
