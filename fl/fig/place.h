// Room for labels: what a drawing has put down so far (lines, arrow heads,
// arcs, circles and the boxes of texts), and where a new label can go
// without covering any of it. Grid lines are no obstacle: a text's halo
// covers them. Drawings that place labels keep one of these beside their
// elements; the writers in fl/fig/canvas.h can keep it for them.
#pragma once

#include <optional>
#include <vector>

namespace fl {

struct Pt {
    double x = 0, y = 0;
};

struct Box {
    double x0 = 0, y0 = 0, x1 = 0, y1 = 0;
    bool overlaps(const Box& o) const { return x0 < o.x1 && o.x0 < x1 && y0 < o.y1 && o.y0 < y1; }
};

// Whether the segment a→b passes through the box.
bool crosses(Pt a, Pt b, const Box& r);

struct LabelSpace {
    std::vector<std::pair<Pt, Pt>> segments;
    std::vector<Box> taken;
    // The frame a label must stay inside, `inset` from its edges; 0 by 0 for none.
    double W = 0, H = 0, inset = 4;

    bool free(const Box& b) const;

    void segment(Pt a, Pt b) { segments.push_back({a, b}); }
    // An arrow's line and the two sides of a head `head` long and `width` wide.
    void arrow(Pt a, Pt b, double head = 13, double width = 9);
    // A bow from a0 to a1 (radians, counter-clockwise, y up as in the model)
    // as short chords; a sector adds its two radii.
    void bow(Pt c, double r, double a0, double a1, bool sector);

    // A w by h box whose top-left corner is `at` plus the first free offset
    // of `preferred`; failing all, with `search`, the free place nearest to
    // the first of them on rings around it, no further than `reach` (0: as
    // far as the frame goes). Nothing when there is none.
    std::optional<Box> place(Pt at, double w, double h, const std::vector<Pt>& preferred, bool search = true,
                             double reach = 0) const;
    // The same; where nothing is free, the first preferred place, held inside the frame.
    Box placeAnyway(Pt at, double w, double h, const std::vector<Pt>& preferred, double reach = 0) const;
};

} // namespace fl
