// The circuit editor: an edit of a 20-component circuit until the drawing is
// painted again (the target is 16 ms), and a hover that repaints one box.
#include "app/pages/circuit/circuiteditor.h"
#include "app/shell/theme.h"

#include <benchmark/benchmark.h>

#include <QApplication>

namespace {

fl::CNodePtr node(const std::string& k, std::vector<fl::CNodePtr> ch = {}) {
    fl::CNodePtr n = fl::makeNode(k);
    n->v = k == "R" ? "47" : "";
    n->ch = std::move(ch);
    return n;
}

// Twenty components in nested series and parallel groups.
fl::Circuit twenty() {
    fl::Circuit c = fl::defaultCircuit("dc");
    c.root->ch.clear();
    for (int k = 0; k < 5; ++k)
        c.root->ch.push_back(node("P", {node("R"), node("S", {node("R"), node("P", {node("R"), node("R")})})}));
    fl::nameCircuit(c);
    return c;
}

// One resistor added beside the selected one and taken away again: each
// half is an edit, a new schematic and a synchronous paint.
void BM_editToPainted(benchmark::State& state) {
    fl::Circuit c = twenty();
    app::CircuitEditor editor;
    editor.setCircuit(&c);
    editor.resize(1000, 700);
    editor.show();
    QApplication::processEvents();
    const std::string target = c.root->ch[2]->ch[0]->id;
    for (auto _ : state) {
        c.sel = target;
        fl::edit(c, "ser", "R");
        editor.refresh();
        editor.repaint();
        fl::edit(c, "del", "");
        editor.refresh();
        editor.repaint();
    }
    state.SetItemsProcessed(2 * state.iterations());
}
BENCHMARK(BM_editToPainted)->Unit(benchmark::kMillisecond);

void BM_hoverRepaint(benchmark::State& state) {
    fl::Circuit c = twenty();
    app::CircuitEditor editor;
    editor.setCircuit(&c);
    editor.resize(1000, 700);
    editor.show();
    QApplication::processEvents();
    for (auto _ : state)
        editor.repaint();
}
BENCHMARK(BM_hoverRepaint)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    app::installFontSubstitutions();
    app::applyTheme();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
