// The explanations of the guide: why a step is taken and how to do it on
// paper. Keys are tested in this order, and the first one a title holds
// wins, so a longer key must stand before a shorter one it contains
// ("Ohms lov for hele kredsen" before "Ohms lov").
#include "fl/circuit/sheets/walkthrough.h"

namespace fl {

namespace {

struct Why {
    const char* key;
    const char* text;
};

const Why kWhy[] = {
    {"Serieforbindelse",
     "I en serieforbindelse sidder komponenterne efter hinanden på én strømvej, så den samme strøm løber gennem dem "
     "alle, og modstandene lægges bare sammen. <b>Sådan:</b> læg værdierne for de komponenter, der sidder i serie, "
     "sammen – resultatet er gruppens samlede modstand."},
    {"Parallelforbindelse",
     "I en parallelforbindelse deler strømmen sig i flere veje, så den samlede modstand bliver mindre end den "
     "mindste af grenene. <b>Sådan:</b> tag 1 divideret med hver modstand, læg tallene sammen, og tag 1 divideret "
     "med summen."},
    {"Serie: strømmen",
     "I en serie er der kun én strømvej, så strømmen er den samme gennem alle delene. <b>Sådan:</b> skriv den "
     "kendte strøm i serien ned for hver del – der skal ikke regnes."},
    {"Parallel: spændingen",
     "Grene, der sidder parallelt, er forbundet til de samme to punkter, så de har den samme spænding. "
     "<b>Sådan:</b> brug gruppens spænding som spændingen over hver gren."},
    {"Ohms lov for hele kredsen",
     "Når hele kredsen er samlet til én modstand, hænger kildespændingen og den samlede strøm sammen med Ohms lov. "
     "<b>Sådan:</b> brug U = I · R med den samlede modstand, og isolér den størrelse, du mangler."},
    {"Ohms lov",
     "Ohms lov gælder for hver enkelt del: spændingen over den er strømmen gennem den gange dens modstand. "
     "<b>Sådan:</b> sæt den kendte strøm eller spænding og delens modstand ind i U = I · R, og isolér det, du "
     "mangler."},
    {"Kirchhoffs 2. lov",
     "Kirchhoffs 2. lov (spændingsloven): i en lukket strømvej er summen af delspændingerne lig kildespændingen. "
     "<b>Sådan:</b> læg de kendte spændinger i serien sammen; mangler én, er den resten op til kildespændingen. "
     "Brug den også som kontrol til sidst."},
    {"Kirchhoffs 1. lov",
     "Kirchhoffs 1. lov (strømloven): den strøm, der løber ind i et forgreningspunkt, løber også ud igen. "
     "<b>Sådan:</b> læg grenstrømmene sammen – det giver strømmen før forgreningen. Mangler én gren, er den "
     "resten."},
    {"Effektloven",
     "Effekten i en del er spændingen over den gange strømmen gennem den. <b>Sådan:</b> gang delens spænding med "
     "dens strøm – P = U · I."},
    {"P = I²·R",
     "Kender du strømmen og modstanden, kan effekten findes uden spændingen, fordi U = I · R. <b>Sådan:</b> sæt "
     "ind i P = I² · R – husk at sætte strømmen i anden."},
    {"P = U²/R",
     "Kender du spændingen og modstanden, kan effekten findes uden strømmen, fordi I = U / R. <b>Sådan:</b> sæt "
     "ind i P = U² / R – husk at sætte spændingen i anden."},
    {"Effekterne lægges sammen",
     "Al effekt bliver til varme i modstandene, så den samlede effekt er summen af effekterne i delene. "
     "<b>Sådan:</b> læg effekterne i komponenterne sammen; det skal give det samme som U · I for hele kredsen."},
    {"kapacitive reaktans",
     "En kondensator lader vekselstrøm gå lettere, jo højere frekvensen og jo større kapaciteten er. "
     "<b>Sådan:</b> sæt ind i X<sub>C</sub> = 1 / (2 · π · f · C), med C i farad."},
    {"induktive reaktans",
     "En spole bremser vekselstrøm mere, jo højere frekvensen og jo større induktansen er. <b>Sådan:</b> sæt ind i "
     "X<sub>L</sub> = 2 · π · f · L, med L i henry."},
    {"Spolens impedans",
     "En spole har både reaktans og en ohmsk modstand i tråden, og de to står vinkelret på hinanden. "
     "<b>Sådan:</b> find spolens impedans med Pythagoras: Z = √(R² + X²)."},
    {"Ohms lov med impedans",
     "I vekselstrøm bruges impedansen Z i stedet for modstanden i Ohms lov. <b>Sådan:</b> brug U = I · Z for den "
     "del, du regner på, og isolér den størrelse, du mangler."},
    {"Samlet impedans: I = U / z",
     "Når den samlede strøm og spændingen kendes, giver Ohms lov kredsens impedans. <b>Sådan:</b> divider "
     "kildespændingen med den samlede strøm."},
    {"modstandstrekanten",
     "R, X og Z danner en retvinklet trekant, og vinklen φ mellem R og Z er faseforskydningen. <b>Sådan:</b> "
     "cos φ = R / Z; vinklen findes med cos⁻¹ på lommeregneren."},
    {"Effektfaktor",
     "Effektfaktoren cos φ siger, hvor stor en del af strømmen der giver aktiv effekt. <b>Sådan:</b> divider den "
     "aktive del med det hele – R med Z, eller den aktive strøm med den samlede strøm."},
    {"Faseforskydningsvinkel",
     "Vinklen φ mellem spænding og strøm findes ud fra effektfaktoren. <b>Sådan:</b> tag cos⁻¹ af cos φ på "
     "lommeregneren (i grader)."},
    {"Spænding over",
     "Spændingen over en del er strømmen gennem den gange dens modstand, reaktans eller impedans. <b>Sådan:</b> "
     "gang strømmen med delens R, X eller Z."},
    {"Spændingen over",
     "Spændingen over en del findes med Ohms lov ud fra strømmen og delens impedans. <b>Sådan:</b> gang strømmen "
     "med delens impedans."},
    {"Strømmen i",
     "Hver gren får sin strøm ud fra spændingen over grenen og grenens modstand eller impedans. <b>Sådan:</b> "
     "divider grenens spænding med dens Z."},
    {"Seriekreds i grenen",
     "En gren med flere dele i serie regnes først sammen til én impedans. <b>Sådan:</b> læg de ohmske dele for "
     "sig og reaktanserne for sig, og brug Pythagoras."},
    {"strømtrekanten",
     "Den aktive og den reaktive strøm står vinkelret på hinanden, så den samlede strøm findes med Pythagoras. "
     "<b>Sådan:</b> I = √(I<sub>R</sub>² + (I<sub>L</sub> − I<sub>C</sub>)²)."},
    {"reaktive strømme sammen",
     "Strømmen i en spole og i en kondensator peger modsat, så de trækkes fra hinanden. <b>Sådan:</b> tag "
     "spolestrømmen minus kondensatorstrømmen."},
    {"Aktiv effekt ud fra den aktive strøm",
     "Kun den del af strømmen, der er i fase med spændingen, giver aktiv effekt. <b>Sådan:</b> gang spændingen "
     "med den aktive strøm: P = U · I<sub>v</sub>."},
    {"kun modstandene bruger aktiv effekt",
     "Spoler og kondensatorer bruger ingen aktiv effekt, så al den aktive effekt går i modstandene. <b>Sådan:</b> "
     "gang spændingen med strømmen i modstandene: P = U · I<sub>R</sub>."},
    {"Effekt (tab",
     "En spole med egen modstand taber effekt som varme i kobbertråden. <b>Sådan:</b> brug P = I² · R med "
     "spolens egen modstand."},
    {"Effekt i ",
     "Effekten i en modstand bliver til varme og findes ud fra strømmen gennem den. <b>Sådan:</b> brug "
     "P = I² · R med strømmen gennem delen."},
    {"cos φ = 1",
     "En ren modstand har strøm og spænding i fase, så φ = 0° og cos φ = 1. <b>Sådan:</b> al effekten er aktiv: "
     "P = U · I."},
    {"Aktiv effekt ud fra strøm og modstand",
     "Den aktive effekt bliver til varme i de ohmske modstande. <b>Sådan:</b> brug P = I² · R med den samlede "
     "strøm og kredsens ækvivalente modstand."},
    {"Aktiv effekt",
     "Den aktive effekt er den effekt, der bliver til varme, lys eller arbejde. <b>Sådan:</b> P = U · I · cos φ "
     "(formelsamlingen s. 13)."},
    {"Reaktiv effekt",
     "Den reaktive effekt svinger frem og tilbage mellem kilden og spoler eller kondensatorer og udfører intet "
     "arbejde. <b>Sådan:</b> Q = U · I · sin φ."},
    {"Tilsyneladende effekt",
     "Den tilsyneladende effekt er det, kilden og ledningerne skal kunne klare. <b>Sådan:</b> S = U · I – den "
     "skal også give √(P² + Q²)."},
    {"hele kredsen regnes igennem",
     "Når alle komponentværdier kendes, kan resten findes med de almindelige formler. <b>Sådan:</b> regn kredsen "
     "igennem forfra, og sammenlign til sidst med de tal, opgaven gav."},
    {"ikke opgivet",
     "Mangler kildespændingen, kan man regne med en valgt spænding, fordi forholdene i kredsen er de samme ved "
     "alle spændinger. <b>Sådan:</b> vælg fx 100 V, find impedansen, og regn tilbage til den rigtige spænding."},
    {"kan ikke isoleres",
     "Her hænger de ukendte sammen gennem hele kredsen, så de kan ikke findes én ad gangen. På papir gør du det "
     "samme som programmet: gæt på den ukendte, regn kredsen igennem, og ret gættet, til de udregnede tal passer "
     "med de opgivne – eller opstil to ligninger og løs dem sammen."},
    {"Reaktanserne",
     "Først skal hver spole og kondensator have sin reaktans ved kredsens frekvens. <b>Sådan:</b> "
     "X<sub>L</sub> = 2 · π · f · L og X<sub>C</sub> = 1 / (2 · π · f · C)."},
    {"hjælpespænding",
     "En hjælpespænding bruges, fordi strømmene er proportionale med spændingen, så impedansen er den samme ved "
     "alle spændinger. <b>Sådan:</b> regn med 100 V, find Z = U / I, og brug så den rigtige strøm eller "
     "spænding."},
    {"Spændingen: U = I · Z",
     "Når kredsens impedans og strømmen kendes, giver Ohms lov spændingen. <b>Sådan:</b> gang den samlede strøm "
     "med Z."},
    {"Impedans og vinkel",
     "En gren med både modstand og reaktans har en impedans og en vinkel, der begge findes i modstandstrekanten. "
     "<b>Sådan:</b> z = √(R² + X²) og cos φ = R / z."},
    {"Impedans",
     "Impedansen samler den ohmske modstand og reaktansen, som står vinkelret på hinanden. <b>Sådan:</b> "
     "Z = √(R² + X²) med de ækvivalente værdier."},
    {"strøm og effekt",
     "Hver gren regnes for sig med spændingen over grenen. <b>Sådan:</b> find grenens strøm med I = U / z, og "
     "dens effekter med cos φ og sin φ."},
    {"Grenene lagt sammen",
     "Grenstrømmene er forskudt, så de lægges sammen som vektorer. <b>Sådan:</b> læg de aktive dele sammen for "
     "sig og de reaktive for sig, og brug Pythagoras."},
    {"Effekten for hele kredsen",
     "Den samlede aktive effekt er summen af grenenes aktive effekter. <b>Sådan:</b> læg P sammen gren for gren, "
     "og Q sammen med de kapacitive grene trukket fra."},
    {"Effekt og effektfaktor",
     "Grenens vinkel bestemmer, hvor meget af dens effekt der er aktiv. <b>Sådan:</b> P = U · I · cos φ, "
     "Q = U · I · sin φ og S = U · I for grenen."},
    {"Grenenes effekter",
     "Den aktive og den reaktive effekt kan lægges sammen gren for gren, men den tilsyneladende kan ikke. "
     "<b>Sådan:</b> læg P sammen, og Q med de kapacitive grene som minus."},
    {"komplekse tal",
     "Grenstrømmene er faseforskudt, så impedanserne i en parallel lægges sammen som komplekse tal. "
     "<b>Sådan:</b> skriv hver gren som z∠φ, tag 1/z = (1/z)∠−φ, læg reelle og imaginære dele sammen hver for "
     "sig, og vend summen om igen."},
    {"Parallel (",
     "En parallelgruppe regnes om til én impedans, så den kan lægges i serie med resten. <b>Sådan:</b> brug "
     "1/z = 1/z₁ + 1/z₂ + … med komplekse tal."},
    {"er ens",
     "Ens grupper opfører sig ens: de deler strøm eller spænding ligeligt. <b>Sådan:</b> regn den ene gruppe "
     "igennem – så kendes de andre uden udregning."},
    {"Måler",
     "Et amperemeter sidder i serie og viser strømmen i grenen; et voltmeter sidder parallelt og viser spændingen "
     "over det, det er sat over. <b>Sådan:</b> brug målerens visning som en kendt strøm eller spænding på det sted "
     "i kredsen."},
    {"måler",
     "En måler viser strømmen eller spændingen det sted, den sidder. <b>Sådan:</b> læs værdien som en kendt "
     "størrelse, eller regn ud, hvad måleren skal vise."},
    {"Spændingstrekant",
     "Spændingen over den ohmske del og over den reaktive del står vinkelret på hinanden. <b>Sådan:</b> "
     "U = √(U<sub>R</sub>² + U<sub>X</sub>²) skal give kildespændingen."},
};

} // namespace

std::string whyText(const std::string& title, bool isAc) {
    for (const Why& w : kWhy)
        if (title.find(w.key) != std::string::npos) return w.text;
    return isAc ? "Brug formlen med de værdier, du allerede kender eller har fundet i trinnene ovenfor. Husk at "
                  "vinkler og reaktanser skal med, når strøm og spænding er forskudt."
                : "Brug formlen med de værdier, du allerede kender eller har fundet i trinnene ovenfor. Isolér den "
                  "størrelse, du mangler, før du sætter tal ind.";
}

} // namespace fl
