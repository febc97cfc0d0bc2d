// The alternating-current section of the glossary: the sine curve, the
// components, series and parallel circuits, power and cos φ, the
// transformer, motors and the three-phase system.
#include "fl/glossary/entries.h"

namespace fl::entries {

namespace {

std::vector<Group> sineAndComponents() {
    return {
        {"Vekselstrøm",
         "Sinuskurven",
         {
             {"Vekselspænding (AC)", "u", "V", "u = U_max · sin α",
              "Vekselspænding skifter hele tiden mellem plus og minus og følger en sinuskurve. I Danmark svinger "
              "nettet 50 gange i sekundet. Når man siger 230 V, mener man effektværdien; toppen af kurven når op på "
              "ca. 325 V. Vekselspænding kan transformeres, og derfor bruges den til at fordele el fra kraftværk "
              "til stikkontakt.",
              {"eff", "acdemo", "ac"}},
             {"Frekvens", "f", "Hz", "f = 1 / T",
              "Frekvensen er antallet af hele svingninger pr. sekund. Det danske og europæiske net har 50 Hz; i "
              "USA er det 60 Hz. En frekvensomformer kan ændre frekvensen og dermed en motors omdrejningstal. "
              "Symbolet er f, og enheden er hertz (Hz): 1 Hz er én svingning pr. sekund.",
              {"acT", "acdemo"}},
             {"Periode", "T", "s", "T = 1 / f",
              "Perioden (periodetiden) er den tid, én hel svingning tager. Ved 50 Hz er den 1/50 s = 20 ms. På et "
              "oscilloskop kan man måle perioden mellem to toppe og regne frekvensen ud. Symbolet er T, og enheden "
              "er sekund (s); periodetider skrives ofte i millisekunder.",
              {"acT", "acdemo"}},
             {"Vinkelfrekvens", "ω", "rad/s", "ω = 2 · π · f",
              "Vinkelfrekvensen er frekvensen målt i radianer pr. sekund: én hel svingning er 2π radianer. Ved "
              "50 Hz er ω = 2 · π · 50 ≈ 314 rad/s. Den indgår i reaktanserne: X_L = ω · L og X_C = 1 / (ω · C). "
              "Symbolet er det græske bogstav ω (omega).",
              {"acW", "XL", "XC"}},
             {"Effektværdi", "U_eff", "V", "U_eff = U_max / √2",
              "Effektværdien er den jævnspænding, der ville give samme varme i en modstand. Det er den værdi, "
              "multimetre viser, og den værdi, man mener, når man siger 230 V. For en sinus er effektværdien "
              "maksimalværdien divideret med √2, altså ca. 0,707 gange toppen. Den kaldes også RMS-værdien.",
              {"eff", "acdemo"}},
             {"Maksimalværdi (peak)", "U_max", "V", "U_max = √2 · U_eff",
              "Maksimalværdien er toppen af sinuskurven, den største øjebliksværdi. For nettets 230 V er den "
              "√2 · 230 ≈ 325 V. Isolationen i kabler og komponenter skal tåle maksimalværdien, ikke kun "
              "effektværdien. Den kaldes også spidsværdien eller amplituden.",
              {"eff", "acSS"}},
             {"Spids-spids-værdi", "U_ss", "V", "U_ss = 2 · U_max",
              "Spids-spids-værdien er spændingen fra bunden til toppen af kurven: to gange maksimalværdien. For "
              "230 V er den ca. 650 V. Det er den, man ofte aflæser direkte på et oscilloskop.",
              {"acSS"}},
             {"Middelværdi", "U_mid", "V", "U_mid = 2 / π · U_max",
              "Middelværdien af en hel sinusperiode er nul, fordi plus- og minushalvdelen ophæver hinanden. Derfor "
              "regner man middelværdien over én halvperiode (ensrettet): 2/π ≈ 0,637 gange maksimalværdien. For "
              "230 V er den ca. 207 V. Forholdet mellem effektværdi og middelværdi kaldes formfaktoren og er 1,11 "
              "for en sinus.",
              {"acMid", "acForm"}},
             {"Øjebliksværdi", "u", "V", "u = U_max · sin α",
              "Øjebliksværdien er spændingen lige netop i et bestemt øjeblik. Den skifter hele tiden og følger "
              "sinuskurven: ved 0° er den 0, ved 90° er den maksimalværdien, ved 270° er den minus "
              "maksimalværdien. Efter 2,5 ms ved 50 Hz er kurven nået 45°, og øjebliksværdien er 325 · sin 45° ≈ "
              "230 V. Øjebliksværdier skrives med lille bogstav.",
              {"acInst", "acVinkel", "acdemo"}},
             {"Fase", "φ", "°", "",
              "Fasen fortæller, hvor langt en sinuskurve er nået i sin svingning, målt i grader. To kurver med "
              "samme frekvens kan være forskudt i forhold til hinanden – faseforskydningen. Ordet fase bruges også "
              "om de tre ledere L1, L2 og L3 i det trefasede net, der hver er forskudt 120° fra hinanden.",
              {"acdemo", "phi"}},
         }},
        {"Vekselstrøm",
         "Komponenter",
         {
             {"Ohmsk modstand i vekselstrøm", "R", "Ω", "I = U / R",
              "En ren ohmsk modstand, for eksempel et varmelegeme, opfører sig ved vekselstrøm som ved jævnstrøm: "
              "strøm og spænding er i fase, og Ohms lov gælder med effektværdierne. Al effekten bliver til varme, "
              "og cos φ = 1. Modstanden afhænger ikke af frekvensen.",
              {"ohm", "ac"}},
             {"Spole", "L", "H", "X_L = 2 · π · f · L",
              "En spole er en leder viklet i vindinger, ofte om en jernkerne. Den modsætter sig ændringer i "
              "strømmen, og ved vekselstrøm får den en reaktans, der vokser med frekvensen. Strømmen i en ideel "
              "spole er 90° efter spændingen. Spoler findes i motorer, transformere, forkoblinger og filtre. "
              "Induktansen måles i henry (H).",
              {"XL", "ac"}},
             {"Selvinduktion", "L", "H", "",
              "Selvinduktion er spolens evne til at inducere en spænding i sig selv, når strømmen ændrer sig. Den "
              "inducerede spænding modarbejder ændringen – spolen er \"træg\" over for strømmen, som et tungt "
              "svinghjul. Når man afbryder strømmen i en stor spole, kan der opstå en høj spændingsspids, som kan "
              "give gnister ved kontakten. Størrelsen kaldes induktansen og måles i henry (H).",
              {"XL"}},
             {"Induktiv reaktans", "X_L", "Ω", "X_L = 2 · π · f · L",
              "Den induktive reaktans er spolens \"vekselstrømsmodstand\". Den stiger med frekvensen: dobbelt "
              "frekvens giver dobbelt reaktans. En spole på 0,1 H har ved 50 Hz en reaktans på 31,4 Ω. Reaktans "
              "giver ingen varme, men den begrænser strømmen. Symbolet er X_L, og enheden er ohm.",
              {"XL", "ULX"}},
             {"Spolens egen modstand", "R_s", "Ω", "Z = √(R² + X_L²)",
              "En rigtig spole er viklet af kobbertråd og har derfor også en almindelig ohmsk modstand. Den kan "
              "måles med et ohmmeter ved jævnstrøm. Ved vekselstrøm regnes spolen som en modstand i serie med en "
              "ideel spole, og strømmen er så mindre end 90° efter spændingen. Den egen modstand giver varme i "
              "viklingen.",
              {"Zcoil"}},
             {"Kondensator", "C", "F", "X_C = 1 / (2 · π · f · C)",
              "En kondensator består af to ledende plader adskilt af en isolator. Den kan oplagre ladning og "
              "spærrer for jævnstrøm, men lader vekselstrøm passere. Strømmen i en ideel kondensator er 90° før "
              "spændingen. Kondensatorer bruges til kompensering, i motorer og i elektronik. Kapacitansen måles i "
              "farad (F), i praksis µF.",
              {"XC", "ac", "kompC"}},
             {"Kapacitiv reaktans", "X_C", "Ω", "X_C = 1 / (2 · π · f · C)",
              "Den kapacitive reaktans er kondensatorens \"vekselstrømsmodstand\". Den falder, når frekvensen "
              "stiger: ved høj frekvens går strømmen let igennem. En kondensator på 10 µF har ved 50 Hz en "
              "reaktans på ca. 318 Ω. Symbolet er X_C, og enheden er ohm.",
              {"XC", "UCX"}},
             {"Reaktans", "X", "Ω", "X = X_L − X_C",
              "Reaktans er fællesbetegnelsen for den modstand, spoler og kondensatorer yder mod vekselstrøm. Den "
              "omsætter ingen energi til varme; energien svinger frem og tilbage mellem kilden og komponenten. I "
              "serie trækker de to slags fra hinanden, så X = X_L − X_C. Reaktans måles i ohm.",
              {"XL", "XC", "QX"}},
         }},
    };
}

std::vector<Group> circuitsAndPower() {
    return {
        {"Vekselstrøm",
         "Serie og parallel",
         {
             {"Impedans", "Z", "Ω", "Z = √(R² + X²)",
              "Impedansen er den samlede vekselstrømsmodstand af modstand og reaktans. Man kan ikke bare lægge R "
              "og X sammen, fordi de er forskudt 90°; de lægges sammen som siderne i en retvinklet trekant. En "
              "motor med R = 30 Ω og X_L = 40 Ω har en impedans på 50 Ω. Ohms lov gælder med impedansen: I = U / Z.",
              {"ZRL", "ZRC", "ZRLC", "ac"}},
             {"Faseforskydning", "φ", "°", "cos φ = R / Z",
              "Faseforskydningen φ er vinklen mellem spænding og strøm. I en ren modstand er den 0°, i en ideel "
              "spole 90° (strømmen efter) og i en ideel kondensator 90° (strømmen før). En motor har typisk "
              "φ = 30–40°. Jo større faseforskydning, jo mere strøm skal der til for den samme aktive effekt.",
              {"phi", "cosZ", "acdemo"}},
             {"Seriekredsløb (vekselstrøm)", "", "", "Z = √(R² + (X_L − X_C)²)",
              "I et seriekredsløb med R, L og C løber den samme strøm gennem alle dele, men spændingerne over dem "
              "er forskudt i forhold til hinanden. Derfor kan spændingerne over spolen og kondensatoren hver for "
              "sig være større end kildens spænding. Man regner med impedansen og spændingstrekanten.",
              {"ZRLC", "URLC", "kredsac"}},
             {"Parallelkredsløb (vekselstrøm)", "", "", "I = √(I_R² + (I_C − I_L)²)",
              "I et parallelkredsløb har alle grene den samme spænding, men strømmene i grenene er forskudt. "
              "Strømmen fra kilden findes med strømtrekanten, ikke ved at lægge grenstrømmene sammen. En "
              "kondensator parallelt med en motor er et parallelkredsløb, og det er sådan, man kompenserer.",
              {"pRL", "pRC", "pRLC", "kredsac"}},
             {"Blandet vekselstrømskreds", "", "", "",
              "En blandet vekselstrømskreds har både serie- og parallelkoblede R, L og C. Den regnes ud ved at "
              "samle grenene til impedanser og vinkler trin for trin – eller med komplekse tal. Programmet kan "
              "tegne og regne sådanne kredse og vise fremgangsmåden.",
              {"kredsac", "kredsguideac"}},
             {"Aktiv og reaktiv strøm", "I_v, I_r", "A", "I_v = I · cos φ",
              "Strømmen i et vekselstrømskredsløb kan deles i to dele: den aktive strøm I_v, der er i fase med "
              "spændingen og udfører arbejde, og den reaktive strøm I_r, der er 90° forskudt og blot svinger "
              "energi frem og tilbage. Begge belaster ledningerne. Kompensering fjerner den reaktive strøm, så "
              "ledningerne kun skal føre den aktive.",
              {"pcos", "komp"}},
             {"Spændingstrekant", "", "", "U² = U_R² + U_X²",
              "I et seriekredsløb danner spændingerne en retvinklet trekant: U_R vandret, U_L − U_C lodret og "
              "kildespændingen U som hypotenusen. Derfor er U = √(U_R² + U_X²) og ikke summen. Har modstanden 120 V "
              "og spolen 160 V over sig, er kildespændingen 200 V.",
              {"URL", "URC", "URLC"}},
             {"Strømtrekant", "", "", "I² = I_R² + I_X²",
              "I et parallelkredsløb danner strømmene en retvinklet trekant: strømmen i modstanden vandret, "
              "forskellen mellem kondensatorens og spolens strøm lodret og den samlede strøm som hypotenusen. "
              "Med 3 A i modstanden og 4 A i spolen er den samlede strøm 5 A.",
              {"pRL", "pRC", "pRLC"}},
             {"Vektordiagram", "", "", "",
              "Et vektordiagram tegner spændinger og strømme som pile, hvor længden er effektværdien og vinklen "
              "faseforskydningen. Det gør det let at se, hvordan størrelserne skal lægges sammen. Strømmen i en "
              "spole tegnes 90° efter spændingen, i en kondensator 90° før. Programmets kredsløbsside tegner "
              "vektordiagrammet for dig.",
              {"kredsac", "vec"}},
             {"Resonans", "f<sub>0</sub>", "Hz", "f<sub>0</sub> = 1 / (2 · π · √(L · C))",
              "Resonans opstår ved den frekvens, hvor spolens og kondensatorens reaktanser er lige store og "
              "ophæver hinanden. I et seriekredsløb bliver impedansen så mindst (kun R), og strømmen størst; i et "
              "parallelkredsløb bliver impedansen størst. Resonans bruges i radioer og filtre, men kan give "
              "farligt høje spændinger i anlæg, der ikke er beregnet til det.",
              {"reson"}},
             {"Komplekse tal", "j", "", "Z = R + jX",
              "Komplekse tal er en regnemåde, hvor en vekselstørrelse skrives med en reel del og en imaginær del, "
              "fx Z = 30 + j40 Ω. Den reelle del er modstanden, den imaginære reaktansen. Så kan man lægge "
              "impedanser sammen og dividere dem som almindelige tal, også i blandede kredse. Elektrikere skriver "
              "j i stedet for matematikkens i, fordi i bruges om strøm.",
              {"kredsac"}},
         }},
        {"Vekselstrøm",
         "Effekt og cos φ",
         {
             {"Effektfaktor", "cos φ", "", "cos φ = P / S",
              "Effektfaktoren cos φ fortæller, hvor stor en del af den tilsyneladende effekt der er aktiv effekt. "
              "Et varmelegeme har cos φ = 1, en motor typisk 0,8–0,9, og en ukompenseret lysstofarmatur ca. 0,5. "
              "Lav cos φ betyder større strøm for den samme nytte, og elselskabet kan kræve betaling for den "
              "reaktive effekt hos store forbrugere.",
              {"cosP", "cosZ", "cosU"}},
             {"Aktiv effekt", "P", "W", "P = U · I · cos φ",
              "Den aktive effekt er den del af effekten, der faktisk bliver til arbejde, varme eller lys. Det er "
              "den, elmåleren tæller og man betaler for. En motor på 230 V, der trækker 10 A ved cos φ = 0,8, "
              "optager 1840 W. Symbolet er P, og enheden er watt (W).",
              {"Pac", "tfP"}},
             {"Reaktiv effekt", "Q", "var", "Q = U · I · sin φ",
              "Den reaktive effekt er den effekt, der svinger frem og tilbage mellem kilden og spoler eller "
              "kondensatorer uden at udføre arbejde. Den belaster alligevel ledninger og transformere. Spoler "
              "optager reaktiv effekt, kondensatorer afgiver den. Symbolet er Q, og enheden er var (voltampere "
              "reaktiv).",
              {"Qac", "QX", "tfQ"}},
             {"Tilsyneladende effekt", "S", "VA", "S = U · I",
              "Den tilsyneladende effekt er spænding gange strøm uden hensyn til faseforskydningen. Det er den, "
              "ledninger, transformere og generatorer skal dimensioneres efter, fordi de skal føre hele strømmen. "
              "En transformer på 10 kVA kan levere 10 kVA, uanset om belastningen har cos φ = 1 eller 0,7. "
              "Symbolet er S, og enheden er voltampere (VA).",
              {"S", "tfS", "SPQ"}},
             {"Effekttrekant", "", "", "S² = P² + Q²",
              "P, Q og S danner en retvinklet trekant: P vandret, Q lodret og S som hypotenusen. Vinklen mellem P "
              "og S er φ. Kender man to af størrelserne, kan man finde resten: med P = 8 kW og Q = 6 kvar er "
              "S = 10 kVA og cos φ = 0,8.",
              {"SPQ", "cosP"}},
             {"tan φ", "tan φ", "", "tan φ = Q / P",
              "tan φ er forholdet mellem reaktiv og aktiv effekt. Den bruges ved kompensering, fordi den "
              "kondensatoreffekt, der skal til, er Q_C = P · (tan φ₁ − tan φ₂). Ved cos φ = 0,8 er tan φ = 0,75; "
              "ved cos φ = 0,95 er den ca. 0,33.",
              {"kompQ"}},
             {"Kompensering", "Q_C", "var", "Q_C = P · (tan φ₁ − tan φ₂)",
              "Kompensering er at forbedre cos φ ved at sætte kondensatorer parallelt med induktive belastninger "
              "som motorer. Kondensatoren leverer den reaktive effekt lokalt, så nettet kun skal levere den "
              "aktive. Strømmen i tilledningen falder, og det samme gør tabene. Typisk kompenserer man til "
              "cos φ ≈ 0,95.",
              {"kompQ", "kompC", "komp"}},
             {"Overkompensering", "", "", "",
              "Overkompensering er, når man sætter for meget kondensator på, så anlægget bliver kapacitivt og "
              "strømmen kommer før spændingen. Så stiger strømmen igen, og spændingen kan stige i nettet. Derfor "
              "kompenserer man ikke helt til cos φ = 1, og store anlæg bruger automatiske kompenseringsanlæg, der "
              "kobler trin ind og ud efter behov.",
              {"komp"}},
         }},
    };
}

std::vector<Group> machines() {
    return {
        {"Vekselstrøm",
         "Transformer",
         {
             {"Primær- og sekundærside", "", "", "",
              "Primærsiden er den vikling, der tilsluttes nettet og tager energi ind; sekundærsiden er den "
              "vikling, der leverer til belastningen. De er ikke forbundet elektrisk – energien overføres gennem "
              "det magnetiske felt i jernkernen. En ringetransformer har fx 230 V på primærsiden og 8 V på "
              "sekundærsiden.",
              {"trU", "trafo"}},
             {"Omsætningsforhold", "n", "", "n = U₁ / U₂ = N₁ / N₂",
              "Omsætningsforholdet er forholdet mellem spændingerne og mellem antallet af vindinger på primær- og "
              "sekundærsiden. Strømmene forholder sig omvendt: ned i spænding betyder op i strøm. En transformer "
              "fra 230 V til 23 V har n = 10, og 1 A på primærsiden giver ca. 10 A på sekundærsiden.",
              {"trR", "trU", "trI"}},
             {"Vindinger pr. volt", "N/V", "", "N/V = N₁ / U₁",
              "Vindinger pr. volt er et tal, der gælder for begge viklinger i samme transformer. Kender man det, "
              "kan man regne ud, hvor mange vindinger en ny vikling skal have: med 4 vindinger pr. volt kræver 12 V "
              "48 vindinger. Tallet afhænger af jernkernens størrelse.",
              {"trU", "trafo"}},
             {"Mærkeeffekt", "S_N", "VA", "S = U · I",
              "Mærkeeffekten er den tilsyneladende effekt, transformeren er bygget til at levere varigt uden at "
              "blive for varm. Den står på mærkepladen i VA eller kVA. En transformer på 100 VA til 12 V kan "
              "levere ca. 8,3 A. Overbelastes den, bliver viklingerne for varme, og isolationen ældes hurtigt.",
              {"S", "trafo"}},
             {"Tab i transformeren", "P_tab", "W", "",
              "Tabene i en transformer er jerntab og kobbertab. Jerntabet (tomgangstabet) skyldes hvirvelstrømme "
              "og ommagnetisering i kernen og er der, så længe transformeren er tilsluttet. Kobbertabet skyldes "
              "strømmen i viklingernes modstand og vokser med strømmen i anden. Store transformere har "
              "virkningsgrader over 98 %.",
              {"trafo", "enEta"}},
         }},
        {"Vekselstrøm",
         "Motorer",
         {
             {"Asynkronmotor", "", "", "",
              "Asynkronmotoren er den mest brugte motor i industrien: robust, billig og næsten uden "
              "vedligeholdelse. Statoren laver et drejefelt, der trækker rotoren med rundt, men rotoren drejer "
              "altid lidt langsommere end feltet – den er asynkron. Forskellen kaldes slip. Den findes fra få "
              "hundrede watt i ventilatorer til mange megawatt i pumper og kompressorer.",
              {"motor", "motSlip"}},
             {"Stator og rotor", "", "", "",
              "Statoren er den faste del af motoren med viklingerne, der tilsluttes nettet. Rotoren er den "
              "drejende del på akslen. I en asynkronmotor er rotoren oftest en kortslutningsrotor (et "
              "\"egernbur\") af aluminiumsstave, der er kortsluttet i enderne; strømmen i den induceres af "
              "statorens felt.",
              {"motor"}},
             {"Drejefelt", "", "", "",
              "Et drejefelt er et magnetfelt, der roterer. Det dannes, når tre viklinger, der er forskudt 120° i "
              "statoren, får strøm fra de tre faser. Feltet drejer med det synkrone omdrejningstal. Bytter man to "
              "faser, skifter drejefeltet retning, og motoren kører den anden vej.",
              {"motNs", "motor"}},
             {"Mærkeplade", "", "", "",
              "Mærkepladen sidder på motoren og fortæller dens mærkedata: spænding (fx 400/690 V Δ/Y), strøm, "
              "akseleffekt i kW, cos φ, omdrejningstal og frekvens. Effekten på pladen er den mekaniske effekt på "
              "akslen, ikke den elektriske effekt, motoren optager. Mærkepladen er udgangspunktet for valg af "
              "kabel og beskyttelse.",
              {"motI3", "motI1", "motor"}},
             {"Synkront omdrejningstal", "n_s", "o/min", "n_s = 60 · f / p",
              "Det synkrone omdrejningstal er drejefeltets hastighed. Det afhænger kun af frekvensen og antallet "
              "af polpar: ved 50 Hz giver 1 polpar 3000 o/min, 2 polpar 1500 o/min og 3 polpar 1000 o/min. "
              "Rotoren i en asynkronmotor når aldrig helt op på det synkrone omdrejningstal.",
              {"motNs"}},
             {"Polpar", "p", "", "p = 60 · f / n_s",
              "Et polpar er en nordpol og en sydpol i statorens magnetfelt. Jo flere polpar, jo langsommere drejer "
              "feltet. En motor med 1440 o/min på mærkepladen har 2 polpar (4 poler), fordi det nærmeste synkrone "
              "omdrejningstal ved 50 Hz er 1500 o/min. Symbolet er p.",
              {"motNs"}},
             {"Slip", "s", "%", "s = (n_s − n) / n_s · 100 %",
              "Slippet er, hvor meget rotoren sakker bagud i forhold til drejefeltet, i procent af det synkrone "
              "omdrejningstal. Uden slip ville der ikke blive induceret strøm i rotoren, og motoren ville ikke "
              "give moment. Typisk er slippet 2–6 % ved fuld belastning: 1440 o/min på en 1500 o/min-motor giver "
              "4 %.",
              {"motSlip"}},
             {"Rotorfrekvens", "f_r", "Hz", "f_r = s · f",
              "Rotorfrekvensen er frekvensen af den strøm, der induceres i rotoren. Den er slippet gange "
              "nettets frekvens: med 4 % slip ved 50 Hz er den 2 Hz. Ved start, når rotoren står stille, er "
              "rotorfrekvensen lig nettets frekvens.",
              {"motFr"}},
             {"Akseleffekt", "P₂", "W", "P₂ = η · P₁",
              "Akseleffekten er den mekaniske effekt, motoren afgiver på akslen – det tal, der står på "
              "mærkepladen. Den elektriske effekt, motoren optager fra nettet (P₁), er større, fordi der er tab. "
              "En motor på 5,5 kW med en virkningsgrad på 88 % optager ca. 6,25 kW.",
              {"motEta", "motM"}},
             {"Tab i motoren", "P_tab", "W", "P_tab = P₁ − P₂",
              "Tabene i en motor er kobbertab i viklingerne, jerntab i blikpakken og mekaniske tab i lejer og "
              "ventilator. De bliver til varme, som motorens ventilator skal føre væk. Tabet er forskellen mellem "
              "den optagne og den afgivne effekt. Moderne IE3-motorer har mindre tab end ældre motorer.",
              {"motTab"}},
             {"Moment", "M", "Nm", "M = P₂ / ω",
              "Momentet er den drejende kraft på akslen. Effekt er moment gange vinkelhastighed, så ved samme "
              "effekt giver en langsom motor et større moment end en hurtig. En motor på 4 kW ved 1450 o/min "
              "giver ca. 26 Nm. Symbolet er M, og enheden er newtonmeter (Nm).",
              {"motM"}},
             {"Startstrøm", "I_start", "A", "I_start = k · I_N",
              "Når en asynkronmotor startes direkte, trækker den en stor strøm, typisk 6–8 gange mærkestrømmen, "
              "indtil den er kommet op i fart. Startstrømmen kan give spændingsdyk i nettet og få sikringer til "
              "at springe. Derfor bruger man til større motorer stjerne-trekant-start, softstarter eller "
              "frekvensomformer.",
              {"motStart"}},
             {"Stjerne-trekant-start", "", "", "I<sub>start,Y</sub> = I<sub>start,Δ</sub> / 3",
              "Ved stjerne-trekant-start startes motoren i stjerne og kobles om til trekant, når den er kommet op "
              "i fart. I stjerne får hver vikling kun 230 V i stedet for 400 V, og startstrømmen og momentet "
              "bliver en tredjedel af direkte start i trekant. Motoren skal kunne køre i trekant på nettets "
              "spænding, fx 400/690 V.",
              {"motYD"}},
             {"Frekvensomformer", "", "", "n_s = 60 · f / p",
              "En frekvensomformer laver nettets 50 Hz om til en variabel frekvens og spænding, så motorens "
              "omdrejningstal kan reguleres trinløst. Den giver blød start uden stor startstrøm og kan spare meget "
              "energi på pumper og ventilatorer. Frekvensomformere kan give lækstrømme med jævnstrømsindhold, og "
              "derfor kræves ofte en RCD af type B foran dem.",
              {"motor", "motNs"}},
         }},
    };
}

std::vector<Group> threePhase() {
    return {
        {"Vekselstrøm",
         "Systemet",
         {
             {"Trefaset system", "", "", "",
              "Det trefasede system har tre faseledere, L1, L2 og L3, hvis spændinger er forskudt 120° fra "
              "hinanden, og ofte en nulleder. Med tre faser kan man overføre meget effekt med lidt kobber og lave "
              "et drejefelt til motorer. Danske boliger får normalt tre faser ind, fordelt på grupperne.",
              {"trefase"}},
             {"Netspænding", "U_N", "V", "U_N = √3 · U_F",
              "Netspændingen er spændingen mellem to faser. I Danmark er den 400 V. Den er √3 gange "
              "fasespændingen, fordi de to fasespændinger er forskudt 120°. Komfurer, varmepumper og store motorer "
              "tilsluttes ofte netspændingen.",
              {"tfUY", "trefase"}},
             {"Fasespænding", "U_F", "V", "U_F = U_N / √3",
              "Fasespændingen er spændingen mellem en fase og nul (eller stjernepunktet). I Danmark er den 230 V. "
              "Det er den spænding, stikkontakterne har. I en stjernekobling ligger fasespændingen over hver "
              "belastning.",
              {"tfUY"}},
             {"Netstrøm og fasestrøm", "I_N, I_F", "A", "I_N = √3 · I_F (trekant)",
              "Netstrømmen er strømmen i tilledningens faseledere; fasestrømmen er strømmen i hver enkelt "
              "belastning. I stjerne er de ens. I trekant er netstrømmen √3 gange fasestrømmen, fordi to "
              "fasestrømme mødes i hver fase. Sikringer og kabler skal vælges efter netstrømmen.",
              {"tfID", "trefase"}},
             {"Nulleder", "N", "", "",
              "Nullederen er lederen, der fører strømmen tilbage fra enfasede belastninger til "
              "transformerens stjernepunkt. Ved symmetrisk belastning er strømmen i nul 0 A, men ved skæv "
              "belastning fører den forskellen. Nullederen er blå og må aldrig afbrydes alene, for så kan "
              "spændingen på de enkelte faser blive meget skæv.",
              {"trefase", "install"}},
             {"Stjernepunkt", "", "", "",
              "Stjernepunktet er det fælles punkt, hvor de tre viklinger eller belastninger i en stjernekobling "
              "er forbundet. I forsyningstransformeren er stjernepunktet jordet og forbundet til nullederen. Ved "
              "symmetrisk belastning har stjernepunktet samme potentiale som nul.",
              {"trefase"}},
         }},
        {"Vekselstrøm",
         "Stjerne og trekant",
         {
             {"Stjerne (Y)", "Y", "", "U_F = U_N / √3, I_F = I_N",
              "I en stjernekobling er de tre belastninger samlet i et fælles stjernepunkt, og hver belastning får "
              "fasespændingen, 230 V. Strømmen i hver belastning er den samme som i tilledningen. Stjerne bruges, "
              "når belastningerne er beregnet til 230 V, eller når en motor skal startes med lavere strøm.",
              {"tfUY", "trefase"}},
             {"Trekant (Δ)", "Δ", "", "U_F = U_N, I_N = √3 · I_F",
              "I en trekantkobling er belastningerne forbundet i en ring mellem faserne, så hver belastning får "
              "netspændingen, 400 V. Netstrømmen er √3 gange strømmen i hver belastning. En motor, der er mærket "
              "400/690 V Δ/Y, skal køre i trekant på det danske net.",
              {"tfID", "trefase"}},
             {"Omkobling mellem stjerne og trekant", "", "", "P<sub>Δ</sub> = 3 · P<sub>Y</sub>",
              "Kobles de samme tre modstande om fra stjerne til trekant, får hver modstand √3 gange så stor "
              "spænding, og effekten bliver tre gange så stor. Det er derfor, stjerne-trekant-start virker, og "
              "det er derfor, en fejlkobling kan brænde en belastning af. 3 kW i stjerne bliver 9 kW i trekant.",
              {"tfPDY", "tfIDY"}},
             {"Symmetrisk belastning", "", "", "P = √3 · U_N · I_N · cos φ",
              "Belastningen er symmetrisk, når de tre faser er belastet ens, med samme impedans og samme cos φ – "
              "som en trefaset motor. Så er strømmene lige store, nulstrømmen er 0 A, og den samlede effekt kan "
              "regnes med én formel. Man tilstræber symmetrisk belastning, når grupperne fordeles på faserne.",
              {"tfP", "tfS", "trefase"}},
             {"Usymmetrisk belastning", "", "", "",
              "Belastningen er usymmetrisk, når faserne er belastet forskelligt, som i en bolig, hvor der er "
              "tændt mere på én fase end på de andre. Så løber der strøm i nullederen, og hver fase må regnes for "
              "sig. Uden nul (eller med afbrudt nul) kan spændingerne på faserne blive meget forskellige.",
              {"trefase"}},
         }},
        {"Vekselstrøm",
         "Effekt og fejl",
         {
             {"Trefaset effekt", "P", "W", "P = √3 · U_N · I_N · cos φ",
              "Den samlede effekt i et symmetrisk trefaset anlæg er √3 gange netspænding gange netstrøm gange "
              "cos φ. Den er den samme, uanset om belastningen er koblet i stjerne eller trekant, når man regner "
              "med netstørrelserne. En motor, der trækker 10 A ved 400 V og cos φ = 0,85, optager ca. 5,9 kW.",
              {"tfP", "tfPf", "trefase"}},
             {"Fejl i stjerne", "", "", "P_fejl = U_N² / (R + R)",
              "Hvis en fase falder ud i en stjernekobling uden nul, ligger de to tilbageværende belastninger i "
              "serie over netspændingen, og effekten falder til halvdelen. Med nul tilsluttet arbejder de to "
              "andre faser videre som før, og effekten falder til to tredjedele.",
              {"tfFY", "tfHalf"}},
             {"Fejl i trekant", "", "", "P_fejl = U_N²/R + U_N²/(R + R)",
              "Falder en fase ud i en trekantkobling, får én belastning stadig netspændingen, mens de to andre "
              "kommer i serie over den samme spænding; effekten falder til halvdelen. Afbrydes i stedet én "
              "belastning, arbejder de to andre videre, og effekten falder til to tredjedele.",
              {"tfFD1", "tfFD2", "tf23"}},
         }},
    };
}

} // namespace

std::vector<Group> alternating() {
    std::vector<Group> out;
    for (auto part : {sineAndComponents, circuitsAndPower, machines, threePhase})
        for (Group& g : part())
            out.push_back(std::move(g));
    return out;
}

} // namespace fl::entries
