// The first two sections of the glossary: the basic quantities and the
// direct-current circuit with its wires and batteries.
#include "fl/glossary/entries.h"

namespace fl::entries {

std::vector<Group> basics() {
    return {
        {"Grundbegreber",
         "Størrelser og enheder",
         {
             {"Spænding", "U", "V", "U = I · R",
              "Spændingen er den \"trykforskel\", der får strømmen til at løbe gennem et kredsløb – ligesom "
              "vandtrykket får vand til at løbe i et rør. Den måles mellem to punkter, aldrig i ét punkt alene, og "
              "derfor sættes et voltmeter parallelt med det, man vil måle over. Jo større spænding over en "
              "modstand, jo større strøm løber der igennem den. I Danmark er spændingen i stikkontakten 230 V, "
              "mellem to faser 400 V, og et almindeligt batteri giver 1,5 V. Symbolet er U, og enheden er volt (V).",
              {"ohm", "kreds"}},
             {"Strøm", "I", "A", "I = U / R",
              "Strøm er elektroner, der bevæger sig gennem en leder – mængden af ladning, der passerer et punkt "
              "pr. sekund. Tænk på vandmængden, der løber gennem et rør: spændingen er trykket, strømmen er "
              "mængden. Et amperemeter sættes i serie, så hele strømmen løber igennem det. En elkedel trækker ca. "
              "9 A, en LED-pære under 0,1 A, og en almindelig gruppe i en bolig er sikret med 10 eller 13 A. "
              "Symbolet er I, og enheden er ampere (A).",
              {"ohm", "kreds"}},
             {"Modstand", "R", "Ω", "R = U / I",
              "Modstand er det, der bremser strømmen – ligesom et smalt rør bremser vandet. Jo større modstand, jo "
              "mindre strøm ved samme spænding. Al modstand omsætter elektrisk energi til varme; det udnyttes i "
              "varmelegemer og er et tab i ledninger. Et 2000 W varmelegeme på 230 V har ca. 26 Ω, og en meter "
              "1,5 mm² kobberleder ca. 0,012 Ω. Symbolet er R, og enheden er ohm (Ω).",
              {"ohm", "res"}},
             {"Ohms lov", "", "", "U = R · I",
              "Ohms lov siger, at spændingen over en modstand er modstanden gange strømmen. Kender man to af de "
              "tre størrelser, kan man altid finde den tredje: I = U / R og R = U / I. Eksempel: 230 V over 46 Ω "
              "giver 5 A. Loven gælder for ohmske modstande, hvor modstanden ikke ændrer sig med strømmen; en "
              "glødetråd er et eksempel på det modsatte, fordi den får større modstand, når den bliver varm.",
              {"ohm", "kreds"}},
             {"Effekt", "P", "W", "P = U · I",
              "Effekt er, hvor hurtigt energien omsættes – hvor meget arbejde der udføres pr. sekund. En elkedel "
              "på 2000 W koger vandet hurtigere end en på 1000 W, fordi den omsætter dobbelt så meget energi pr. "
              "sekund. Effekten kan også regnes som P = I² · R eller P = U² / R. En LED-pære bruger 5–10 W, en "
              "ovn 2–3 kW. Symbolet er P, og enheden er watt (W); 1 kW = 1000 W.",
              {"power", "powerR", "powerU"}},
             {"Energi", "E", "kWh", "E = P · t",
              "Energi er effekt gange tid: det, elmåleren tæller, og det, man betaler for. En radiator på 1 kW, "
              "der er tændt i 3 timer, bruger 3 kWh. I fysik måles energi i joule (J), og 1 kWh er 3 600 000 J. "
              "En dansk familie i et parcelhus bruger typisk 3000–5000 kWh om året. Symbolet er E, og enheden er "
              "kilowatttime (kWh) eller joule (J).",
              {"enE", "enJ", "energi"}},
             {"Ladning", "Q", "C", "Q = I · t",
              "Ladning er mængden af elektricitet – et bestemt antal elektroner. Én coulomb er den ladning, der "
              "passerer, når 1 A løber i 1 sekund, og svarer til ca. 6,24 · 10¹⁸ elektroner. Batteriers "
              "kapacitet angives i ampere-timer (Ah): et batteri på 2 Ah kan levere 2 A i en time, svarende til "
              "7200 C. Symbolet er Q, og enheden er coulomb (C).",
              {"batt"}},
             {"Konduktans", "G", "S", "G = 1 / R",
              "Konduktans er det omvendte af modstand: hvor let strømmen har ved at komme igennem. En modstand på "
              "10 Ω har en konduktans på 0,1 S. Konduktans er praktisk ved parallelforbindelser, hvor de enkelte "
              "konduktanser blot lægges sammen. Symbolet er G, og enheden er siemens (S).",
              {"par2"}},
             {"Potentiale", "V", "V", "",
              "Potentialet er spændingen i et punkt målt i forhold til et fælles nulpunkt, for eksempel jord "
              "eller minus på et batteri. Spændingen mellem to punkter er forskellen mellem deres potentialer – "
              "ligesom højdeforskellen mellem to trappetrin. Har punkt A et potentiale på 9 V og punkt B 3 V, er "
              "spændingen mellem dem 6 V. Potentiale måles i volt (V).",
              {"kreds"}},
             {"Præfikser", "", "", "k = 10³, m = 10⁻³",
              "Præfikser er forstavelser, der gør store og små tal lette at skrive: k (kilo) er tusind, M (mega) "
              "er en million, m (milli) er en tusindedel og µ (mikro) en milliontedel. 4,7 kΩ er 4700 Ω, og 30 mA "
              "er 0,03 A. Store og små bogstaver betyder noget: m er milli, M er mega. I programmet kan du skrive "
              "præfikset direkte efter tallet, fx 4,7k eller 30m.",
              {"enheder"}},
             {"Virkningsgrad", "η", "", "η = P_ud / P_ind",
              "Virkningsgraden fortæller, hvor stor en del af den tilførte effekt der bliver til nyttig effekt; "
              "resten bliver til varme og andre tab. Den er altid mindre end 1 (eller 100 %). En motor, der "
              "optager 10 kW og afgiver 9 kW på akslen, har en virkningsgrad på 0,9 = 90 %. En transformer har "
              "typisk over 95 %, en glødepære under 5 % (resten er varme). Symbolet er det græske bogstav η (eta).",
              {"enEta", "motEta"}},
         }},
        {"Grundbegreber",
         "Kredsløbet",
         {
             {"Kredsløb", "", "", "",
              "Et kredsløb er en lukket vej, som strømmen kan løbe rundt i: fra kildens ene pol gennem ledninger "
              "og belastning og tilbage til den anden pol. Brydes vejen et sted, for eksempel med en afbryder, "
              "holder strømmen op med at løbe overalt i kredsen. Det svarer til et vandkredsløb med pumpe, rør og "
              "radiator. I programmet kan du tegne et kredsløb og få alle strømme og spændinger regnet ud.",
              {"kreds", "kredsac"}},
             {"Kilde og belastning", "", "", "",
              "Kilden leverer energien – et batteri, en generator eller elnettet. Belastningen bruger den – en "
              "pære, en motor eller et varmelegeme. Kilden har en spænding, og belastningen bestemmer, hvor stor "
              "strømmen bliver: jo mindre modstand i belastningen, jo større strøm. En stikkontakt på 230 V er "
              "kilden for alt, hvad der sættes i den.",
              {"kreds"}},
             {"Leder og isolator", "", "", "",
              "En leder lader strømmen passere let, fordi den har mange frie elektroner – kobber, aluminium og "
              "andre metaller. En isolator har næsten ingen frie elektroner og standser strømmen – PVC, gummi, "
              "glas og porcelæn. En ledning er en kobberleder inde i en isolerende kappe. Rent vand leder dårligt, "
              "men vand fra hanen indeholder salte og leder godt nok til at være farligt.",
              {"wire"}},
             {"Jævnstrøm og vekselstrøm", "", "", "",
              "Jævnstrøm (DC) løber hele tiden samme vej, som fra et batteri eller en solcelle. Vekselstrøm (AC) "
              "skifter retning mange gange i sekundet; i det danske net 50 gange, altså 50 Hz. Vekselspænding kan "
              "transformeres op og ned, og derfor bruges den i elnettet. Elektronik som computere og LED-lys "
              "laver internt vekselstrømmen om til jævnstrøm.",
              {"kreds", "kredsac", "ac"}},
             {"Kortslutning", "", "", "I_k = U / R",
              "En kortslutning er en forbindelse med næsten ingen modstand mellem to punkter, der har spænding "
              "imellem sig – for eksempel fase og nul, der rører hinanden. Da modstanden er lille, bliver strømmen "
              "meget stor, ofte hundreder eller tusinder af ampere, og ledningen kan blive glødende på få sekunder. "
              "Derfor skal sikringen kunne bryde kortslutningsstrømmen hurtigt.",
              {"ik", "ikmax", "ikmin"}},
             {"Effekttab", "P_tab", "W", "P_tab = I² · R",
              "Effekttab er den effekt, der går til spilde som varme i ledninger, transformere og motorer. I en "
              "ledning er tabet I² · R: dobbelt strøm giver fire gange så stort tab. Det er grunden til, at el "
              "transporteres over lange afstande ved høj spænding og lav strøm. 16 A gennem en ledning med 0,5 Ω "
              "giver 128 W tab – varme, som man betaler for uden at få glæde af.",
              {"powerR", "motTab"}},
         }},
        {"Jævnstrøm",
         "Forbindelser",
         {
             {"Serieforbindelse", "R_total", "Ω", "R_total = R₁ + R₂ + R₃",
              "I en serieforbindelse sidder modstandene efter hinanden, så den samme strøm løber gennem dem alle. "
              "Den samlede modstand er summen af de enkelte, og spændingen deles mellem dem i forhold til deres "
              "størrelse. Går én modstand i stykker, stopper strømmen i hele kredsen – som i gamle julelyskæder. "
              "Eksempel: 10 Ω og 20 Ω i serie giver 30 Ω.",
              {"kreds", "res"}},
             {"Parallelforbindelse", "R_total", "Ω", "1/R_total = 1/R₁ + 1/R₂",
              "I en parallelforbindelse er modstandene forbundet mellem de samme to punkter, så de har samme "
              "spænding over sig. Strømmen deler sig, og den samlede modstand bliver mindre end den mindste af "
              "dem. Sådan er alle stikkontakter i et hus forbundet: hvert apparat får 230 V, uanset hvad der ellers "
              "er tændt. To ens modstande på 20 Ω i parallel giver 10 Ω.",
              {"par2", "kreds", "res"}},
             {"Blandet forbindelse", "", "", "",
              "En blandet forbindelse har både serie- og parallelkoblede dele. Man regner den ud indefra: først "
              "erstattes hver parallelgruppe af én modstand, så lægges seriedelene sammen, og til sidst findes "
              "strømme og spændinger i de enkelte dele ved at gå baglæns. Tegner du kredsløbet i programmet, "
              "viser fremgangsmåden hvert trin.",
              {"kreds", "kredsguide"}},
             {"Kirchhoffs 1. lov", "", "", "ΣI_ind = ΣI_ud",
              "Kirchhoffs 1. lov (strømloven) siger, at den strøm, der løber ind i et knudepunkt, er lig med den "
              "strøm, der løber ud. Der forsvinder ingen elektroner på vejen – som vand, der deler sig i to rør og "
              "samles igen. Løber der 10 A ind, og 4 A går ud i den ene gren, må der gå 6 A i den anden.",
              {"kreds"}},
             {"Kirchhoffs 2. lov", "", "", "ΣU = 0",
              "Kirchhoffs 2. lov (spændingsloven) siger, at summen af spændingerne rundt i en lukket sløjfe er nul: "
              "kildens spænding bliver brugt op i modstandene undervejs. Med 12 V fra et batteri og to modstande i "
              "serie kan der for eksempel ligge 8 V over den ene og 4 V over den anden – aldrig mere eller mindre "
              "end 12 V i alt.",
              {"kreds"}},
             {"Knudepunkt", "", "", "",
              "Et knudepunkt er et sted i kredsløbet, hvor tre eller flere ledninger mødes, og hvor strømmen kan "
              "dele sig eller samles. I en installation er en samledåse eller en klemrække typiske knudepunkter. "
              "Kirchhoffs 1. lov gælder i hvert knudepunkt.",
              {"kreds"}},
             {"Spændingsdeler", "U₂", "V", "U₂ = U · R₂ / (R₁ + R₂)",
              "En spændingsdeler er to modstande i serie, hvor man tager en del af spændingen ud over den ene. "
              "Spændingen deler sig i forhold til modstandene: med 12 V over 1 kΩ og 2 kΩ ligger der 8 V over den "
              "store og 4 V over den lille. Spændingsdelere bruges i elektronik og måleinstrumenter, for eksempel "
              "til at tilpasse et signal til en indgang.",
              {"kreds", "formod"}},
         }},
        {"Jævnstrøm",
         "Ledninger",
         {
             {"Resistivitet", "ρ", "Ω·mm²/m", "R = ρ · l / A",
              "Resistiviteten er materialets egen modstand: modstanden i en leder på 1 m med et tværsnit på 1 mm². "
              "Kobber har 0,0175 Ω·mm²/m og aluminium 0,0287 Ω·mm²/m ved 20 °C; derfor skal en aluminiumsleder "
              "være tykkere for at have samme modstand. Resistiviteten stiger, når lederen bliver varm. Symbolet er "
              "det græske bogstav ρ (rho).",
              {"wire", "kabel"}},
             {"Tværsnit", "A", "mm²", "A = π · d² / 4",
              "Tværsnittet er arealet af lederen, som man ser det, hvis man skærer den over. Jo større tværsnit, "
              "jo mindre modstand og jo mere strøm kan lederen tåle uden at blive for varm. Almindelige tværsnit i "
              "installationer er 1,5 mm² til lys og stikkontakter, 2,5 mm² til større grupper og 6–10 mm² til "
              "komfurer og elbilladere. Tværsnittet måles i mm².",
              {"qd", "kabel"}},
             {"Ledningsmodstand", "R_L", "Ω", "R_L = ρ · l / A",
              "Ledningsmodstanden er modstanden i selve ledningen. Den vokser med længden og falder med "
              "tværsnittet. Husk at strømmen skal både frem og tilbage: en 1-faset gruppe på 20 m har 40 m leder. "
              "40 m 1,5 mm² kobber har 0,0175 · 40 / 1,5 ≈ 0,47 Ω. Ledningsmodstanden giver spændingsfald og "
              "effekttab.",
              {"wire", "vd1"}},
             {"Spændingsfald", "ΔU", "V", "ΔU = I · R_L",
              "Spændingsfaldet er den del af spændingen, der bliver brugt op i ledningen, før strømmen når frem til "
              "belastningen. Er det for stort, lyser lamper svagere, og motorer starter dårligt. Det angives ofte i "
              "procent af nettets spænding; vejledende grænser er 3 % til belysning og 5 % til andet i en "
              "installation, der forsynes direkte fra det offentlige net. 10 A gennem 0,5 Ω giver 5 V fald – 2,2 % "
              "af 230 V.",
              {"vd1", "vd3", "sf1", "sf3"}},
         }},
        {"Jævnstrøm",
         "Batterier",
         {
             {"Elektromotorisk kraft (EMK)", "E", "V", "E = U_k + I · R_i",
              "EMK er den spænding, som batteriet eller generatoren skaber indvendigt – den spænding, man måler, "
              "når der ikke trækkes strøm. Når der trækkes strøm, falder en del af spændingen over batteriets "
              "indre modstand, og klemmespændingen bliver mindre end EMK. Et nyt alkalisk batteri har en EMK på "
              "ca. 1,5–1,6 V, en bilakkumulator ca. 12,6 V. Symbolet er E, og enheden er volt.",
              {"batt", "battE"}},
             {"Indre modstand", "R_i", "Ω", "R_i = (E − U_k) / I",
              "Den indre modstand er modstanden inde i selve batteriet. Den begrænser, hvor stor strøm batteriet "
              "kan levere, og den giver et spændingsfald, når der trækkes strøm. Et brugt batteri har større indre "
              "modstand end et nyt; derfor kan det vise fin spænding uden belastning, men falder sammen, når "
              "lommelygten tændes. En bilakkumulator har kun nogle få milliohm.",
              {"batt", "battE", "ik"}},
             {"Klemmespænding", "U_k", "V", "U_k = E − I · R_i",
              "Klemmespændingen er spændingen mellem batteriets poler, når det leverer strøm. Den er EMK minus "
              "spændingsfaldet i den indre modstand, og den falder, jo mere strøm der trækkes. Et batteri med "
              "EMK 12 V og indre modstand 0,1 Ω har ved 20 A en klemmespænding på 12 − 20 · 0,1 = 10 V.",
              {"battE"}},
             {"Kortslutningsstrøm", "I_k", "A", "I_k = E / R_i",
              "Kortslutningsstrømmen er den strøm, der løber, hvis polerne forbindes direkte. Så er det kun den "
              "indre modstand, der begrænser strømmen. En bilakkumulator kan levere flere hundrede ampere – nok til "
              "at svejse en skruenøgle fast – og derfor skal man altid være forsigtig med værktøj ved polerne. I "
              "installationer er kortslutningsstrømmen afgørende for valget af sikringer.",
              {"ik", "ikmax", "ikmin"}},
             {"Celler i serie", "E_total", "V", "E_total = n · E",
              "Sættes battericeller i serie, lægges deres spændinger sammen, mens kapaciteten i Ah er den samme "
              "som for én celle. Seks celler på 2 V giver en bilakkumulator på 12 V, og fire AA-batterier på 1,5 V "
              "giver 6 V. Den indre modstand lægges også sammen. Sættes celler parallelt, får man i stedet mere "
              "kapacitet ved samme spænding.",
              {"cells"}},
         }},
    };
}

} // namespace fl::entries
