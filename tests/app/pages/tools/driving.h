// Driving a tool page as a student would: clicking a link in a sheet,
// typing key by key, and reading back the sheet as text.
#pragma once

#include "app/pages/tools/toolpage.h"
#include "app/sheet/resultarea.h"
#include "app/sheet/sheetview.h"
#include "app/widgets/valuefield.h"
#include "fl/expr/markup.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTest>
#include <QTextBlock>
#include <QTextDocument>

#include <string>

namespace app::test {

inline bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

// Clicks the first anchor in the view that leads to `href`, as a user would.
inline bool clickLink(SheetView* view, const QString& href) {
    QTextDocument* doc = view->document();
    for (QTextBlock block = doc->begin(); block.isValid(); block = block.next())
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment frag = it.fragment();
            if (!frag.charFormat().isAnchor() || frag.charFormat().anchorHref() != href) continue;
            QTextCursor cursor(doc);
            cursor.setPosition(frag.position() + frag.length() / 2);
            QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, view->cursorRect(cursor).center());
            return true;
        }
    return false;
}

// Clears the edit and types as on a keyboard, one key at a time.
inline void type(ValueField* field, const QString& text) {
    QTest::mouseClick(field->edit, Qt::LeftButton);
    field->edit->selectAll();
    QTest::keyClick(field->edit, Qt::Key_Delete);
    for (const QChar c : text) {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, QString(c));
        QApplication::sendEvent(field->edit, &press);
    }
}

inline std::string sheetOf(const ToolPage* page) {
    return fl::stripTags(page->resultArea()->view()->markup());
}

} // namespace app::test
