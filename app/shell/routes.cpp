#include "app/shell/routes.h"

#include "app/pages/circuit/kredspage.h"
#include "app/pages/class/opgaverpage.h"
#include "app/pages/formulas/calcpage.h"
#include "app/pages/formulas/finderpage.h"
#include "app/pages/formulas/formulapage.h"
#include "app/pages/formulas/homepage.h"
#include "app/pages/practice/eksamenpage.h"
#include "app/pages/practice/formelkortpage.h"
#include "app/pages/practice/opgavearkpage.h"
#include "app/pages/practice/ovelserpage.h"
#include "app/pages/practice/statistikpage.h"
#include "app/pages/practice/tekstpage.h"
#include "app/pages/reference/installpage.h"
#include "app/pages/reference/insttestpage.h"
#include "app/pages/reference/minformpage.h"
#include "app/pages/reference/ordlistepage.h"
#include "app/pages/support/datapage.h"
#include "app/pages/tools/acpages.h"
#include "app/pages/tools/cablepages.h"
#include "app/pages/tools/farvepage.h"
#include "app/pages/tools/machinepages.h"
#include "app/pages/tools/smallpages.h"
#include "app/shell/lockedpage.h"
#include "app/widgets/page.h"
#include "fl/formulas/catalogue.h"


namespace app {

const std::map<std::string, PageCreator>& pageFactory() {
    // One line per route.
    static const std::map<std::string, PageCreator> table = {
        {"hjem", [](PageHost* h) -> Page* { return new HomePage(h); }},
        {"kreds", [](PageHost* h) -> Page* { return new KredsPage(false, false, h); }},
        {"kredsguide", [](PageHost* h) -> Page* { return new KredsPage(true, false, h); }},
        {"kredsac", [](PageHost* h) -> Page* { return new KredsPage(false, true, h); }},
        {"kredsguideac", [](PageHost* h) -> Page* { return new KredsPage(true, true, h); }},
        {"opgaver", [](PageHost* h) -> Page* { return new OpgaverPage(h); }},
        {"trafo", [](PageHost* h) -> Page* { return new TrafoPage(h); }},
        {"trefase", [](PageHost* h) -> Page* { return new TrefasePage(h); }},
        {"komp", [](PageHost* h) -> Page* { return new KompPage(h); }},
        {"kabel", [](PageHost* h) -> Page* { return new KabelPage(h); }},
        {"sf1", [](PageHost* h) -> Page* { return new DropPage(false, h); }},
        {"sf3", [](PageHost* h) -> Page* { return new DropPage(true, h); }},
        {"ikmax", [](PageHost* h) -> Page* { return new IkmaxPage(h); }},
        {"ikmin", [](PageHost* h) -> Page* { return new IkminPage(h); }},
        {"motor", [](PageHost* h) -> Page* { return new MotorPage(h); }},
        {"ac", [](PageHost* h) -> Page* { return new AcPage(h); }},
        {"res", [](PageHost* h) -> Page* { return new ResPage(h); }},
        {"tri", [](PageHost* h) -> Page* { return new TriPage(h); }},
        {"vec", [](PageHost* h) -> Page* { return new VecPage(h); }},
        {"energi", [](PageHost* h) -> Page* { return new EnergiPage(h); }},
        {"enheder", [](PageHost* h) -> Page* { return new EnhederPage(h); }},
        {"farve", [](PageHost* h) -> Page* { return new FarvePage(h); }},
        {"acdemo", [](PageHost* h) -> Page* { return new AcDemoPage(h); }},
        {"calc", [](PageHost* h) -> Page* { return new CalcPage(h); }},
        {"ovelser", [](PageHost* h) -> Page* { return new OvelserPage(h); }},
        {"eksamen", [](PageHost* h) -> Page* { return new EksamenPage(h); }},
        {"statistik", [](PageHost* h) -> Page* { return new StatistikPage(h); }},
        {"opgaveark", [](PageHost* h) -> Page* { return new OpgavearkPage(h); }},
        {"formelkort", [](PageHost* h) -> Page* { return new FormelkortPage(h); }},
        {"tekstopgaver", [](PageHost* h) -> Page* { return new TekstPage(h); }},
        {"finder", [](PageHost* h) -> Page* { return new FinderPage(0, h); }},
        {"udregnere", [](PageHost* h) -> Page* { return new FinderPage(1, h); }},
        {"ordliste", [](PageHost* h) -> Page* { return new OrdlistePage(h); }},
        {"minform", [](PageHost* h) -> Page* { return new MinformPage(h); }},
        {"install", [](PageHost* h) -> Page* { return new InstallPage(h); }},
        {"insttest", [](PageHost* h) -> Page* { return new InstTestPage(h); }},
        {"laast", [](PageHost* h) -> Page* { return new LockedPage(h); }},
        {"minedata", [](PageHost* h) -> Page* { return new DataPage(h); }},
    };
    return table;
}

Page* createPage(const std::string& route, PageHost* host) {
    try {
        if (const fl::Formula* f = fl::findFormula(route)) return new FormulaPage(f, host);
        const auto& table = pageFactory();
        auto it = table.find(route);
        return it == table.end() ? nullptr : it->second(host);
    } catch (...) {
        // A page that can't be built must not take the window down.
        return nullptr;
    }
}

}  // namespace app
