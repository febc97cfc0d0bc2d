// The page shown instead of one the teacher has switched off: which topic,
// under which profile, and why the program isn't broken.
#pragma once

#include "app/widgets/page.h"

class QLabel;

namespace app {

class PageHost;

class LockedPage : public Page {
    Q_OBJECT
public:
    explicit LockedPage(PageHost* host, QWidget* parent = nullptr);
    void onEnter() override;

    QLabel* text = nullptr;

private:
    PageHost* host;
};

// The explanation for a topic id and a profile name, as the page shows it.
QString lockedText(const std::string& topicId, const std::string& profile);

}  // namespace app
