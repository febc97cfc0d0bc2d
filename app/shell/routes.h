// The page factory: which page each route gets. Formula families are looked
// up first; then the fixed table of the program's other routes. A page is
// made on the first visit to its route and kept by the main window.
#pragma once

#include <QString>

#include <functional>
#include <map>
#include <string>

namespace app {

class Page;
class PageHost;

using PageCreator = std::function<Page*(PageHost*)>;

// The fixed routes with their creators, built once.
const std::map<std::string, PageCreator>& pageFactory();

// A new page for the route, parented to nothing yet; null for a route
// without a creator or when the creator fails.
Page* createPage(const std::string& route, PageHost* host);

}  // namespace app
