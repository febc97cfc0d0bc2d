// The circuit as data: a tree of one source and nested series/parallel
// groups of components and meters, the single working circuit of the
// process, its editing primitive and its persistence in the store. Solvers,
// drawings and pages only read it; the file form is in fl/circuit/json.h.
#pragma once

#include <complex>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace fl {

struct CNode;
using CNodePtr = std::shared_ptr<CNode>;

// Outer width, total height and height above the axis of a drawn block.
struct Extent {
    double w = 0.0, h = 0.0, above = 0.0;
};

struct CNode {
    std::string k;  // "S", "P", "R", "L", "C", "A", "V"
    std::string id; // "root" or "n" + counter; never reused within a run
    bool group = false;
    std::vector<CNodePtr> ch; // drawing order
    std::string v;            // typed value (leaf): Ω, H, F, or a meter's reading
    std::string U, I, P;      // typed known quantities, empty when not given
    std::string r;            // leaf: own resistance of a coil, inner resistance of a meter
    std::string R;            // group: known total resistance

    // Not stored.
    std::string name;
    Extent extent, innerExtent;
    std::complex<double> z; // cached by the map-based forward pass
};

struct Circuit {
    std::string mode = "dc"; // "dc" or "ac"
    std::map<std::string, std::string> src;
    CNodePtr root;
    std::string sel;
    // True only while a solve has put the meter-free copy in place of `root`:
    // nothing is saved or renumbered then.
    bool solving = false;
};

// A node of kind `k` with a fresh id; groups for "S" and "P".
CNodePtr makeNode(const std::string& k);
// The same with its typed value and, for a group, its children: a drawing
// built in code.
CNodePtr makeNode(const std::string& k, const std::string& v, std::vector<CNodePtr> ch = {});
// Raises the id counter above every "n<digits>" id in the tree.
void noteIds(const CNodePtr& root);

// Root "S" with one resistor, every source key at its default.
Circuit defaultCircuit(const std::string& mode = "dc");
std::map<std::string, std::string> defaultSource();

// Pre-order over a node and all its descendants; each child list is copied
// before descending, so `fn` may change the tree.
void walk(const CNodePtr& root, const std::function<void(const CNodePtr&)>& fn);
bool find(const CNodePtr& root, const std::string& id, CNodePtr* outNode, CNodePtr* outParent);
CNodePtr deepCopy(const CNodePtr& node);
int treeDepth(const CNodePtr& root);
size_t treeSize(const CNodePtr& root);

// Display names in pre-order: groups "A", "B", …; leaves "R1", "L1", "A1", …
void nameNodes(const CNodePtr& root);
// The same on a circuit, unless it is being solved.
void nameCircuit(Circuit& c);

// Dissolves same-kind child groups and replaces one-child groups (never the root).
void normalise(const CNodePtr& root);

// op: "up", "del", "ser", "par"; kind: the leaf kind for "ser"/"par".
void edit(Circuit& c, const std::string& op, const std::string& kind);

// The working circuit, read from the store on first use.
Circuit& currentCircuit();
void setCircuit(const Circuit& c);
void saveCircuit();
void switchMode(const std::string& mode);
// Reads the circuit of `mode` ("" for whatever "kreds" holds) from the store,
// moving an alternating-current circuit out of the direct-current key.
Circuit loadCircuit(const std::string& mode);
std::string storeKeyFor(const std::string& mode);
// Drops the working circuit so that the next use reads the store again.
void resetCurrentCircuitForTest();

// The student's saved circuits, one store object "kreds_saved" from name to
// circuit. Names are trimmed; an empty one is refused. A same name is
// overwritten without asking.
std::vector<std::string> savedCircuitNames();
bool saveCircuitAs(const std::string& name, const Circuit& c);
// False when the name is missing or what it holds is no circuit.
bool openSavedCircuit(const std::string& name, Circuit& out);
// False, with nothing changed, for an empty, unchanged or missing name.
bool renameSavedCircuit(const std::string& from, const std::string& to);
void removeSavedCircuit(const std::string& name);

} // namespace fl
