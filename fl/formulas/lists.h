// The constant lists that say what exists and how a user reaches it: the tile
// table (every route that isn't a formula family), the sidebar's sections, the
// topics a teacher can switch off and the finder's subject tree. All are built
// once on first use and never change. The pages that show them live in app/;
// the icon drawings come from the icon set (tileIcon is the one lookup).
#pragma once

#include <string>
#include <vector>

namespace fl {

struct Tile {
    std::string route;
    std::string name;
    std::string search;   // lower-case words separated by blanks
    std::string subtitle; // empty when the route has none
    std::string icon;     // inner SVG of a 48 × 48 drawing; empty when none
};

struct Section {
    std::string id;
    std::string title;
    std::vector<std::string> routes;
};

struct Topic {
    std::string id;
    std::string name;
    std::string description;
    std::vector<std::string> routes;
    // Finer things the topic closes: "sub:", "circ:", "tekst:", "gl:", "gle:"
    // keys; one ending in "|" matches by prefix.
    std::vector<std::string> keys;
};

struct FinderNode {
    std::string id;
    std::string title;
    std::string blurb;
    std::string icon;
    std::vector<std::string> keys;   // family keys, in order
    std::vector<std::string> routes; // tools, in order
    std::vector<FinderNode> children;
};

const std::vector<Tile>& tiles();
const Tile* findTile(const std::string& route);
// A family's tile (its title and search words, the "formel" icon unless the
// key has one of its own) first, then the tile table; null if neither. This
// decides whether a route is known at all.
const Tile* findFamilyOrTile(const std::string& route);

std::string tileSubtitle(const std::string& route);
std::string tileIcon(const std::string& route);

const std::vector<Section>& sections();
const std::vector<Topic>& topics();

// The root has the empty id and the title "Alle emner"; its children are the
// six subjects.
const FinderNode& finderTree();
// Ids separated by "/"; the empty path is the root; null for an unknown path.
const FinderNode* findNode(const std::string& path);
// The family keys of a node and all below it, each once, in order of first
// appearance: a family listed under two leaves of a subject counts once.
std::vector<std::string> subtreeKeys(const FinderNode& node);

} // namespace fl
