// The constant lists: the tile table's lookups, the cross-references between
// sections, topics, the finder tree and the tile table, and the walk of the
// finder by path.
#include "fl/formulas/lists.h"

#include <gtest/gtest.h>

#include <functional>
#include <set>

namespace {

void forEachNode(const fl::FinderNode& node, const std::string& path,
                 const std::function<void(const fl::FinderNode&, const std::string&)>& fn) {
    fn(node, path);
    for (const fl::FinderNode& c : node.children)
        forEachNode(c, path.empty() ? c.id : path + "/" + c.id, fn);
}

// A route in any list that the tile table doesn't know would be a dead entry
// in the sidebar, a topic that closes nothing or a chip to nowhere. (A route
// twice in the table draws the same icon twice, which the icon set refuses.)
TEST(Lists, everyNamedRouteIsANamedTile) {
    for (const fl::Tile& t : fl::tiles())
        EXPECT_FALSE(t.name.empty()) << t.route;
    for (const fl::Section& s : fl::sections())
        for (const std::string& r : s.routes) {
            SCOPED_TRACE("section " + s.id + ": " + r);
            EXPECT_NE(fl::findTile(r), nullptr);
        }
    for (const fl::Topic& t : fl::topics())
        for (const std::string& r : t.routes) {
            SCOPED_TRACE("topic " + t.id + ": " + r);
            EXPECT_NE(fl::findTile(r), nullptr);
        }
    forEachNode(fl::finderTree(), "", [](const fl::FinderNode& n, const std::string& path) {
        for (const std::string& r : n.routes) {
            SCOPED_TRACE("finder " + path + ": " + r);
            EXPECT_NE(fl::findTile(r), nullptr);
        }
    });
}

// What each key closes is checked beside the glossary, which knows them all.
TEST(Topics, uniqueIdsNamedAndDescribed) {
    std::set<std::string> ids;
    for (const fl::Topic& t : fl::topics()) {
        SCOPED_TRACE(t.id);
        EXPECT_TRUE(ids.insert(t.id).second);
        EXPECT_FALSE(t.name.empty());
        EXPECT_FALSE(t.description.empty());
        EXPECT_FALSE(t.routes.empty());
    }
}

// Known paths are walked by the finder's own markup tests; here what isn't one.
TEST(FinderTree, findNodeRefusesWhatIsNoPath) {
    for (const char* unknown : {"dc/nosuch", "dc/ohm/x", "dc/", "DC"})
        EXPECT_EQ(fl::findNode(unknown), nullptr) << unknown;
    // "wire" stands under both "dc/led" and "inst/fald"; the whole tree lists it once.
    const std::vector<std::string> all = fl::subtreeKeys(fl::finderTree());
    EXPECT_EQ(std::set<std::string>(all.begin(), all.end()).size(), all.size());
}

TEST(FinderTree, everyNodeIsTitledAndBlurbedAndSiblingsAreDistinct) {
    forEachNode(fl::finderTree(), "", [](const fl::FinderNode& n, const std::string& path) {
        SCOPED_TRACE(path);
        if (!path.empty()) {
            EXPECT_FALSE(n.title.empty());
            EXPECT_FALSE(n.blurb.empty());
            EXPECT_NE(n.keys.empty(), n.children.empty()) << "a node holds either families or subjects";
        }
        std::set<std::string> ids;
        for (const fl::FinderNode& c : n.children)
            EXPECT_TRUE(ids.insert(c.id).second) << c.id;
        std::set<std::string> keys(n.keys.begin(), n.keys.end());
        EXPECT_EQ(keys.size(), n.keys.size());
    });
}

} // namespace
