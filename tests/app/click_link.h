// Test support: a click on a link in a sheet view, where a user would click it.
#pragma once

#include "app/sheet/sheetview.h"

#include <QTest>
#include <QTextBlock>
#include <QTextDocument>

// Clicks the first anchor in the view that leads to `href`, as a user would,
// at the middle of its text. False when the view has no such link.
inline bool clickLink(app::SheetView* view, const QString& href) {
    // A long sheet's later pieces arrive with the event loop; a user waits for them.
    view->finishLoading();
    QTextDocument* doc = view->document();
    for (QTextBlock block = doc->begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment frag = it.fragment();
            if (!frag.charFormat().isAnchor() || frag.charFormat().anchorHref() != href) continue;
            QTextCursor cursor(doc);
            cursor.setPosition(frag.position() + frag.length() / 2);
            const QPoint at = view->cursorRect(cursor).center();
            QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, at);
            return true;
        }
    }
    return false;
}
