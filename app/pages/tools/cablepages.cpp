#include "app/pages/tools/cablepages.h"

#include "app/pages/tools/cablepick.h"
#include "app/widgets/valuefield.h"
#include "fl/tools/cable.h"
#include "fl/tools/tables.h"

#include <QComboBox>

namespace app {

namespace {

const char kRun[] = "Beregn";

} // namespace

KabelPage::KabelPage(PageHost* h, QWidget* parent)
    : ToolPage(h, QStringLiteral("Kabeldimensionering"),
               QStringLiteral("Finder det mindste standardtværsnit, hvor spændingsfaldet holder sig under grænsen. "
                              "Skriv den største tilladte grænse for jeres installationstype. Giv strømmen I – "
                              "eller effekten P og cos φ."),
               QStringLiteral("Kabeldimensionering (spændingsfald)"), QStringLiteral("Værktøj · formelsamling s. 6"),
               parent) {
    system = addChoice(QStringLiteral("System"), {{QStringLiteral("1"), QStringLiteral("1-faset (frem og tilbage)")},
                                                  {QStringLiteral("3"), QStringLiteral("3-faset, symmetrisk belastning")}},
                       QStringLiteral("system"));
    addField(QStringLiteral("U"), QStringLiteral("1-faset: spændingen U · 3-faset: netspændingen U<sub>N</sub>"),
             QStringLiteral("V"));
    addField(QStringLiteral("I"), QStringLiteral("Belastningsstrøm"), QStringLiteral("A"));
    addField(QStringLiteral("P"), QStringLiteral("…eller effekten (hvis I ikke er givet)"), QStringLiteral("W"));
    addField(QStringLiteral("cosphi"), QStringLiteral("Effektfaktor (bruges kun sammen med P)"), QString(),
             QStringLiteral("1"));
    addField(QStringLiteral("Lk"), QStringLiteral("Kabellængde (enkelt vej)"), QStringLiteral("m"));
    addField(QStringLiteral("dUpmax"), QStringLiteral("Største tilladte spændingsfald – afhænger af installationstypen"),
             QStringLiteral("%"), QStringLiteral("4"));
    conductor = addChoice(QStringLiteral("Leder"), {{QStringLiteral("0.0175"), QStringLiteral("Kobber (ρ = 0,0175)")},
                                                    {QStringLiteral("0.0287"), QStringLiteral("Aluminium (ρ = 0,0287)")}},
                          QStringLiteral("rho"));
    addRunButton(QStringLiteral("Find kablet"), false);
    connect(system, &QComboBox::currentIndexChanged, this, &KabelPage::systemChanged);
    systemChanged();
}

void KabelPage::systemChanged() {
    followNet(field(QStringLiteral("U")), system->currentData().toString() == QLatin1String("3"));
}

fl::ToolOut KabelPage::compute(const fl::FormMap& form) const {
    auto choice = [&](const char* key) {
        auto it = form.find(key);
        return it == form.end() ? std::string() : it->second;
    };
    const double rho = choice("rho") == "0.0287" ? fl::kRhoAluminium : fl::kRhoCopper;
    return fl::dimensionCable(form, choice("system") == "3", rho);
}

DropPage::DropPage(bool threePhase, PageHost* h, QWidget* parent)
    : ToolPage(h, threePhase ? QStringLiteral("Spændingsfald 3-faset") : QStringLiteral("Spændingsfald 1-faset"),
               threePhase ? QStringLiteral("Spændingsfaldet mellem to faser ved symmetrisk belastning: ΔU = √3 · "
                                           "I<sub>B,dim</sub> · L · (R<sub>l</sub> · cos φ + X<sub>l</sub> · sin φ). "
                                           "Vælg kablet, så kommer R og X fra tabellerne – eller skriv dem selv.")
                          : QStringLiteral("Spændingsfaldet frem i fasen og tilbage i nul: ΔU = 2 · I<sub>B,dim</sub> · "
                                           "L · (R<sub>l</sub> · cos φ + X<sub>l</sub> · sin φ). Vælg kablet, så kommer "
                                           "R og X fra tabellerne – eller skriv dem selv."),
               threePhase ? QStringLiteral("Spændingsfald 3-faset") : QStringLiteral("Spændingsfald 1-faset"),
               QStringLiteral("Dimensionering"), parent),
      three(threePhase) {
    if (three)
        addField(QStringLiteral("U_N"), QStringLiteral("Netspænding"), QStringLiteral("V"), QStringLiteral("400"));
    else
        addField(QStringLiteral("U_F"), QStringLiteral("Fasespænding"), QStringLiteral("V"), QStringLiteral("230"));
    addField(QStringLiteral("I_B"),
             QStringLiteral("Belastningsstrøm – eller sikringens størrelse, hvis I dimensionerer efter den"),
             QStringLiteral("A"));
    addField(QStringLiteral("sf"), QStringLiteral("Samtidighedsfaktor (1, hvis den ikke bruges)"), QString(),
             QStringLiteral("1"));
    addField(QStringLiteral("uf"), QStringLiteral("Udvidelsesfaktor (1, hvis den ikke bruges)"), QString(),
             QStringLiteral("1"));
    addField(QStringLiteral("cosphi"), QStringLiteral("Effektfaktor cos φ"), QString(), QStringLiteral("0,9"));
    addField(QStringLiteral("l"), QStringLiteral("Kabellængde (enkelt vej)"), QStringLiteral("m"));
    pick = new CablePick(this, QStringLiteral("Kabel"), three ? QStringLiteral("sf3") : QStringLiteral("sf1"), true,
                         three ? QStringLiteral("pvik5") : QStringLiteral("pvik3"), 1.5);
    ValueField* r = addField(QStringLiteral("R_l"),
                             QStringLiteral("Modstand pr. km (tabel 13, 50 Hz) – fra tabellen, eller skriv selv"),
                             QStringLiteral("Ω/km"));
    ValueField* x = addField(QStringLiteral("X_l"),
                             QStringLiteral("Reaktans pr. km (tabel 16/17, 50 Hz) – fra tabellen, eller skriv selv"),
                             QStringLiteral("Ω/km"));
    addRunButton(QString::fromUtf8(kRun), true);
    pick->bind(r, x);
}

fl::ToolOut DropPage::compute(const fl::FormMap& form) const {
    return fl::voltageDrop(form, three);
}

void DropPage::afterClear() {
    pick->apply();
}

IkmaxPage::IkmaxPage(PageHost* h, QWidget* parent)
    : ToolPage(h, QStringLiteral("Ik max"),
               QStringLiteral("Den største kortslutningsstrøm i gruppetavlen ud fra Ik max ved kabelskabet (oplyst i "
                              "FR) og stikledningen: I<sub>k,max</sub> = U<sub>N</sub> / (√3 · √(ΣR² + ΣX²)). Brug den "
                              "til at vælge sikringer med en stor nok brydeevne."),
               QStringLiteral("Ik max (største kortslutningsstrøm)"), QStringLiteral("Dimensionering"), parent) {
    addField(QStringLiteral("U_N"), QStringLiteral("Netspænding"), QStringLiteral("V"), QStringLiteral("400"));
    addField(QStringLiteral("Ik_fr"), QStringLiteral("Ik max ved kabelskabet (FR) – 16 kA skrives 16k"),
             QStringLiteral("A"), QStringLiteral("16k"));
    addField(QStringLiteral("cosphi_k"), QStringLiteral("cos φ ved kortslutning (FR)"), QString(),
             QStringLiteral("0,3"));
    addField(QStringLiteral("l"), QStringLiteral("Stikledningens længde"), QStringLiteral("m"));
    pick = new CablePick(this, QStringLiteral("Stikledning"), QStringLiteral("ikmax"), true, QStringLiteral("pvik3"),
                         10);
    ValueField* r = addField(QStringLiteral("R_l"), QStringLiteral("Stikledningens modstand pr. km (tabel 13)"),
                             QStringLiteral("Ω/km"));
    ValueField* x = addField(QStringLiteral("X_l"), QStringLiteral("Stikledningens reaktans pr. km (tabel 16/17)"),
                             QStringLiteral("Ω/km"));
    addRunButton(QString::fromUtf8(kRun), true);
    pick->bind(r, x);
}

fl::ToolOut IkmaxPage::compute(const fl::FormMap& form) const {
    return fl::shortCircuitMax(form);
}

void IkmaxPage::afterClear() {
    pick->apply();
}

IkminPage::IkminPage(PageHost* h, QWidget* parent)
    : ToolPage(h, QStringLiteral("Ik min"),
               QStringLiteral("Den mindste kortslutningsstrøm i gruppetavlen og ved brugsgenstanden. Ik min ved "
                              "kabelskabet er 5 · I<sub>N</sub> (FR). Der regnes kun med modstanden – fase og nul (· 2) "
                              "– og ledningerne er varme efter kortslutningen (· 1,5)."),
               QStringLiteral("Ik min (mindste kortslutningsstrøm)"), QStringLiteral("Dimensionering"), parent) {
    addField(QStringLiteral("U_F"), QStringLiteral("Fasespænding"), QStringLiteral("V"), QStringLiteral("230"));
    addField(QStringLiteral("I_Nks"), QStringLiteral("Sikringen i kabelskabet (I<sub>N</sub>)"), QStringLiteral("A"));
    addField(QStringLiteral("k_fr"), QStringLiteral("Faktor for Ik min ved kabelskabet (FR: 5 · I<sub>N</sub>)"),
             QString(), QStringLiteral("5"));
    addField(QStringLiteral("k_v"), QStringLiteral("Varmeudviklingsfaktor (50 % = 1,5)"), QString(),
             QStringLiteral("1,5"));
    addField(QStringLiteral("l_stik"), QStringLiteral("Stikledningens længde"), QStringLiteral("m"));
    service = new CablePick(this, QStringLiteral("Stikledning"), QStringLiteral("ikmin_stik"), false, QString(), 10);
    ValueField* rs = addField(QStringLiteral("R_lstik"), QStringLiteral("Stikledningens modstand pr. km (tabel 13)"),
                              QStringLiteral("Ω/km"));
    addField(QStringLiteral("l_grp"), QStringLiteral("Gruppeledningens længde"), QStringLiteral("m"));
    group = new CablePick(this, QStringLiteral("Gruppeledning"), QStringLiteral("ikmin_grp"), false, QString(), 1.5);
    ValueField* rg = addField(QStringLiteral("R_lgrp"), QStringLiteral("Gruppeledningens modstand pr. km (tabel 13)"),
                              QStringLiteral("Ω/km"));
    addField(QStringLiteral("I_Ngrp"), QStringLiteral("Gruppeafbryderens mærkestrøm – til kontrollen (kan stå tom)"),
             QStringLiteral("A"));
    addChoice(QStringLiteral("Karakteristik"),
              {{QStringLiteral("5"), QStringLiteral("B – slår fra ved 5 × mærkestrømmen")},
               {QStringLiteral("10"), QStringLiteral("C – slår fra ved 10 × mærkestrømmen")},
               {QStringLiteral("20"), QStringLiteral("D – slår fra ved 20 × mærkestrømmen")}},
              QStringLiteral("k_a"));
    addRunButton(QString::fromUtf8(kRun), true);
    service->bind(rs, nullptr);
    group->bind(rg, nullptr);
}

fl::ToolOut IkminPage::compute(const fl::FormMap& form) const {
    return fl::shortCircuitMin(form);
}

void IkminPage::afterClear() {
    service->apply();
    group->apply();
}

} // namespace app
