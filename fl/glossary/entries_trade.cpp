// The last three sections of the glossary: energy and price, the
// mathematics an electrician uses, and the installation with its tests and
// protective devices. The limits named here are the ones the installation
// test page lists with their sources (insttest.cpp).
#include "fl/glossary/entries.h"

namespace fl::entries {

namespace {

std::vector<Group> economyAndMaths() {
    return {
        {"Energi og pris",
         "Økonomi",
         {
             {"Elpris", "k_el", "kr/kWh", "Pris = E · k_el",
              "Elprisen er det, man betaler for hver kilowatttime. Den består af selve elektriciteten, nettarif, "
              "afgifter og moms, og for en dansk husstand ligger den samlet typisk på 2–3 kr. pr. kWh, men den "
              "svinger over døgnet og året. En elradiator på 1 kW, der er tændt i 10 timer, koster ved 2,50 kr./kWh "
              "25 kr.",
              {"enPris", "energi"}},
             {"Besparelse", "B", "kr", "B = (P₁ − P₂) · t · k_el",
              "Besparelsen er det, man sparer ved at skifte til et apparat med mindre effekt eller bruge det "
              "kortere tid. Skiftes en 60 W glødepære til en 8 W LED-pære, der lyser 1000 timer om året, spares "
              "52 kWh – ved 2,50 kr./kWh 130 kr. om året for én pære.",
              {"enBes", "energi"}},
             {"Tilbagebetalingstid", "T", "år", "T = Investering / B",
              "Tilbagebetalingstiden er, hvor lang tid der går, før en investering har tjent sig hjem gennem "
              "besparelsen. Koster en varmepumpe 30 000 kr. og sparer 6000 kr. om året, er tilbagebetalingstiden "
              "5 år. Jo kortere tilbagebetalingstid, jo bedre en forretning – hvis apparatet holder længere end det.",
              {"enTilb", "energi"}},
             {"Standby-forbrug", "P_standby", "W", "E = P · t",
              "Standby-forbrug er den effekt, apparater bruger, når de er slukket med fjernbetjeningen eller bare "
              "står klar. Hver for sig er det få watt, men de er tændt døgnet rundt: 5 W hele året er ca. 44 kWh. "
              "Et hjem med mange apparater kan have 30–50 W i standby. Nye apparater må højst bruge 0,5–1 W i "
              "standby efter EU's regler.",
              {"enAar", "energi"}},
         }},
        {"Matematik",
         "Trekanter",
         {
             {"Retvinklet trekant", "", "", "",
              "En retvinklet trekant har én vinkel på 90°. Den lange side over for den rette vinkel hedder "
              "hypotenusen, og de to andre sider hedder kateter. Retvinklede trekanter dukker op overalt i "
              "elfaget: spændingstrekanten, strømtrekanten og effekttrekanten er alle retvinklede.",
              {"tri", "pyth"}},
             {"Pythagoras", "", "", "c² = a² + b²",
              "Pythagoras' sætning siger, at i en retvinklet trekant er hypotenusen i anden lig med summen af "
              "kateterne i anden. Med kateterne 3 og 4 er hypotenusen 5. I elfaget bruges den til impedans "
              "(Z² = R² + X²) og effekt (S² = P² + Q²).",
              {"pyth", "SPQ", "tri"}},
             {"Sinus, cosinus og tangens", "", "", "cos V = hos.kat / hyp",
              "Sinus, cosinus og tangens forbinder vinklerne i en retvinklet trekant med forholdet mellem "
              "siderne: sin V = modstående katete / hypotenuse, cos V = hosliggende katete / hypotenuse og "
              "tan V = modstående / hosliggende. cos φ i elfaget er netop cosinus til vinklen i effekttrekanten: "
              "P / S.",
              {"sinV", "cosV", "tanV", "tri"}},
             {"Vinkelsum", "", "", "A + B + C = 180°",
              "Vinklerne i en trekant giver tilsammen altid 180°. I en retvinklet trekant er den ene 90°, så de to "
              "andre giver tilsammen 90°. I en polygon med n sider er vinkelsummen (n − 2) · 180°.",
              {"polyS", "tri"}},
             {"Grader og radianer", "", "rad", "1 rad = 180° / π",
              "Vinkler kan måles i grader, hvor en hel omgang er 360°, eller i radianer, hvor en hel omgang er "
              "2π ≈ 6,28. 90° er π/2 radianer. Programmet regner vinkler i grader; radianer bruges i "
              "vinkelfrekvensen ω = 2πf. Lommeregnere har en knap til at skifte – tjek altid, at den står på "
              "grader (DEG).",
              {"acW", "calc"}},
         }},
        {"Matematik",
         "Vektorer og figurer",
         {
             {"Vektor", "", "", "|v| = √(x² + y²)",
              "En vektor er en størrelse, der har både en længde og en retning – tegnet som en pil. Spændinger og "
              "strømme i vekselstrøm tegnes som vektorer i et vektordiagram, hvor længden er effektværdien og "
              "retningen faseforskydningen. Vektorer lægges sammen ved at sætte pilene i forlængelse af hinanden.",
              {"vecL", "vec"}},
             {"Komposant", "", "", "x = |v| · cos V",
              "En komposant er en vektors bidrag langs en akse: x-komposanten vandret og y-komposanten lodret. "
              "En vektor på 10 med vinklen 30° har x-komposanten 8,66 og y-komposanten 5. Aktiv og reaktiv strøm er "
              "komposanterne af den samlede strøm.",
              {"vecX", "vecY", "vec"}},
             {"Areal og omkreds", "A", "m²", "A = l · b",
              "Arealet er, hvor stor en flade er, og omkredsen er, hvor lang kanten rundt om den er. Et rum på "
              "4 m × 5 m har arealet 20 m² og omkredsen 18 m. Elektrikeren bruger det til at beregne gulvvarme, "
              "belysning pr. m² og kabellængder langs væggene.",
              {"rect", "triA", "trap"}},
             {"Cirkel", "r", "m", "A = π · r²",
              "En cirkel er bestemt ved sin radius r eller diameter d = 2r. Omkredsen er π · d og arealet π · r². "
              "En leders tværsnit er en cirkel: en tråd med diameteren 1,38 mm har tværsnittet π · 1,38² / 4 ≈ "
              "1,5 mm².",
              {"circA", "circO", "qd"}},
         }},
        {"Matematik",
         "Regning",
         {
             {"Omskrivning af formler", "", "", "U = R · I ⇔ I = U / R",
              "At omskrive en formel er at isolere den størrelse, man vil finde, ved at gøre det samme på begge "
              "sider af lighedstegnet. Fra U = R · I fås I ved at dividere begge sider med R. Programmet viser "
              "omskrivningen trin for trin, når du lader feltet for den søgte størrelse stå tomt.",
              {"ohm", "finder"}},
             {"Kvadratrod", "√", "", "√x · √x = x",
              "Kvadratroden af et tal er det tal, der ganget med sig selv giver tallet: √25 = 5. Den bruges, når "
              "en størrelse står i anden potens, fx i Pythagoras eller i P = U² / R. √3 ≈ 1,73 dukker op i alle "
              "trefasede formler, og √2 ≈ 1,41 mellem effekt- og maksimalværdi.",
              {"calc", "pyth"}},
             {"Procent", "%", "", "del / helhed · 100 %",
              "Procent betyder hundrededele: 5 % af 230 V er 11,5 V. Spændingsfald, virkningsgrad og slip angives "
              "i procent. Man finder procenten ved at dividere delen med helheden og gange med 100: 6,9 V af "
              "230 V er 3 %.",
              {"vd3", "calc"}},
             {"Tierpotenser", "10ⁿ", "", "10³ = 1000",
              "Tierpotenser gør meget store og meget små tal overskuelige: 10³ er 1000 og 10⁻³ er 0,001. "
              "4,7 · 10⁻⁶ F er 4,7 µF. Præfikserne følger tierpotenserne i spring på tre: kilo (10³), mega (10⁶), "
              "milli (10⁻³) og mikro (10⁻⁶). På lommeregneren skrives de med knappen ×10ˣ eller E.",
              {"calc", "enheder"}},
             {"Afrunding og betydende cifre", "", "", "",
              "Et resultat skal ikke have flere cifre, end målingerne kan bære. Er spændingen målt til 230 V og "
              "strømmen til 2,2 A, giver det ikke mening at skrive effekten som 506,0000 W – 506 W er nok. Rund "
              "først af til sidst, og regn med alle cifre undervejs. Programmet kan vise fem betydende cifre eller "
              "to decimaler som i formelsamlingen.",
              {"calc"}},
         }},
    };
}

std::vector<Group> installation() {
    return {
        {"Installation",
         "Test af installation",
         {
             {"Verifikation", "", "", "",
              "Verifikation er den kontrol, der skal laves, før en ny eller ændret installation tages i brug: "
              "eftersyn, afprøvning og rapportering. Kravet står i installationsbekendtgørelsen, og metoden i "
              "DS/HD 60364-6. Eftersynet laves først, uden spænding; derefter måles og afprøves der i en fast "
              "rækkefølge. Verifikationen laves af en sagkyndig person.",
              {"insttest"}},
             {"Installationstester", "", "", "",
              "En installationstester er det instrument, der klarer verifikationens målinger: gennemgang, "
              "isolationsmodstand, sløjfeimpedans, fejlstrømsafbryder, jordmodstand, fasefølge og spænding. "
              "Instrumenterne skal opfylde DS/EN 61557, så målingerne kan bruges i rapporten. Tjek altid "
              "instrumentets ledninger og sikringer, før du går i gang.",
              {"insttest"}},
             {"Blæksprutte (kortslutningssæt)", "", "", "",
              "En blæksprutte er et sæt korte ledninger med klemmer, der forbinder flere ledere midlertidigt, fx "
              "alle faser og nul i tavlen. Så kan isolationsmodstanden mellem de spændingsførende ledere og PE "
              "måles i én måling, eller fase og PE forbindes i tavlen, så gennemgangen kan måles ude ved hver "
              "stikkontakt. Husk at fjerne den igen, før der sættes spænding på.",
              {"insttest"}},
             {"Spændingsløs tilstand", "", "", "",
              "Før man arbejder på en installation, skal den gøres spændingsløs: afbryd, sikr mod genindkobling "
              "(lås eller skilt), og konstatér med en topolet spændingstester, at der ikke er spænding mellem alle "
              "ledere. Afprøv spændingstesteren på en kendt spænding før og efter. Et multimeter på den forkerte "
              "indstilling er ikke en spændingsprøver.",
              {"insttest"}},
             {"Beskyttelsesleder-kontinuitet", "R_PE", "Ω", "R ≈ ρ · l / A",
              "Gennemgangsmålingen viser, at beskyttelseslederen er hel og forbundet fra hovedjordklemmen ud til "
              "hver stikkontakt og hvert udsat metaldel. Der måles med en lille spænding (4–24 V) og en strøm på "
              "mindst 0,2 A. Værdien skal passe til ledningens længde og tværsnit: 20 m 1,5 mm² kobber giver ca. "
              "0,23 Ω. En uendelig værdi betyder en afbrudt jord – livsfarligt.",
              {"insttest", "wire"}},
             {"Isolationsmodstand", "R_iso", "MΩ", "R_iso ≥ 1 MΩ ved 500 V DC",
              "Isolationsmodstanden er modstanden mellem lederne gennem isolationen. Den skal være meget stor, så "
              "der ikke løber strøm, hvor der ikke skal. Den måles på en spændingsløs installation med "
              "jævnspænding fra isolationstesteren. For kredse op til 500 V måles med 500 V DC, og modstanden skal "
              "være mindst 1 MΩ (DS/HD 60364-6, tabel 6.1). Typisk måler man langt mere, ofte over 200 MΩ.",
              {"insttest"}},
             {"Testspænding", "", "V", "",
              "Testspændingen er den jævnspænding, isolationstesteren påtrykker. Den vælges efter kredsens "
              "spænding: 250 V DC for SELV og PELV, 500 V DC for kredse op til 500 V (fx 230/400 V) og 1000 V DC "
              "for kredse over 500 V. Følsomt udstyr som dæmpere, overspændingsbeskyttelse og elektronik skal "
              "kobles fra, før der måles.",
              {"insttest"}},
             {"SELV, PELV og FELV", "", "", "",
              "SELV og PELV er ekstra lav spænding – højst 50 V vekselspænding eller 120 V jævnspænding – fra en "
              "sikkerhedstransformer eller anden sikker kilde, adskilt fra nettet. SELV er ikke jordet, PELV må "
              "være jordet. FELV er lav spænding uden sikker adskillelse; den beskyttes som almindelig "
              "lavspænding. Ringeanlæg og LED-strips på 12–24 V er typisk SELV.",
              {"insttest"}},
             {"Polaritet", "", "", "",
              "Polaritetsprøven viser, at fase og nul sidder rigtigt: enpolede afbrydere og sikringer skal sidde i "
              "fasen, ikke i nullen, og stikkontakter og lampeudtag skal være forbundet korrekt. Sidder "
              "afbryderen i nul, er lampen slukket, men fatningen står stadig under spænding – farligt for den, der "
              "skifter pæren.",
              {"insttest"}},
             {"Fejlstrømsafbryder (RCD)", "IΔn", "mA", "",
              "En fejlstrømsafbryder (RCD, tidligere kaldt HFI eller HPFI) sammenligner strømmen ud i faserne med "
              "strømmen tilbage i nul. Løber en del af strømmen en anden vej, fx gennem et menneske til jord, "
              "slår den fra. En RCD på 30 mA beskytter mennesker mod dødelige stød. Siden 1. juli 2008 skal alle "
              "bygninger i Danmark have en HFI- eller HPFI-afbryder (stærkstrømsbekendtgørelsen, afsnit 8). Tryk "
              "på testknappen et par gange om året.",
              {"insttest", "instRe"}},
             {"Mærkeudløserstrøm", "IΔn", "mA", "",
              "Mærkeudløserstrømmen IΔn er den fejlstrøm, RCD'en er bygget til at slå fra ved. Til beskyttelse af "
              "personer bruges 30 mA; 300 mA bruges som brandbeskyttelse. En RCD må ikke slå fra ved halvdelen af "
              "IΔn og skal slå fra senest ved IΔn; ved afprøvning med IΔn skal en almindelig RCD slå fra inden for "
              "300 ms.",
              {"insttest", "instRe"}},
             {"RCD-typer (AC, A, B)", "", "", "",
              "Typen fortæller, hvilke slags fejlstrøm RCD'en kan se. Type AC reagerer kun på ren vekselstrøm. "
              "Type A reagerer også på pulserende jævnstrøm fra ensrettere i almindelig elektronik, og den er "
              "mindstekravet i nye installationer. Type B reagerer også på glat jævnstrøm og bruges foran "
              "frekvensomformere, solcelleanlæg og elbilladere uden indbygget jævnstrømsovervågning.",
              {"insttest"}},
             {"Berøringsspænding", "U_L", "V", "R_A · IΔn ≤ U_L",
              "Berøringsspændingen er den spænding, et menneske kan komme til at stå i, hvis det rører en udsat "
              "del under en fejl. Den må højst være 50 V vekselspænding, og 25 V i særlige områder som landbrug. "
              "I et TT-system sørger jordelektroden og RCD'en tilsammen for, at grænsen holdes.",
              {"instRe", "insttest"}},
             {"Overgangsmodstand til jord", "R_A", "Ω", "R_A ≤ U_L / IΔn",
              "Overgangsmodstanden til jord er modstanden fra installationens jordelektrode ud i jorden. I et "
              "TT-system skal den være så lille, at berøringsspændingen ikke overstiger 50 V, før RCD'en slår "
              "fra: med 30 mA må den højst være 50 / 0,03 ≈ 1667 Ω. Man tilstræber en langt lavere værdi, fordi "
              "jorden tørrer ud om sommeren og fryser om vinteren.",
              {"instRe", "insttest"}},
             {"Jordelektrode og hjælpeelektroder", "", "", "",
              "Jordelektroden er det jordspyd eller den fundamentsjord, der forbinder installationen med jorden. "
              "Dens modstand måles med en jordmodstandsmåler og to hjælpeelektroder i en lige linje: et strømspyd "
              "langt væk og et spændingsspyd midt imellem. Flyttes spændingsspyddet et par meter frem og tilbage "
              "uden at resultatet ændrer sig, er målingen god.",
              {"insttest"}},
             {"Jordsløjfeimpedans", "Z_s", "Ω", "Z_s ≤ U<sub>0</sub> / I_a",
              "Jordsløjfeimpedansen er impedansen i den sløjfe, en fejlstrøm løber i ved en fejl mellem fase og "
              "jord: fra transformeren gennem fasen til fejlstedet og tilbage gennem beskyttelseslederen. Den skal "
              "være så lille, at fejlstrømmen bliver stor nok til, at sikringen slår fra i tide. For en C16 ved "
              "230 V må den højst være 230 / 160 ≈ 1,44 Ω.",
              {"instZs", "instIa", "insttest"}},
             {"TN- og TT-system", "", "", "",
              "Systemjordingen fortæller, hvordan nettet og installationen er jordet. I et TN-system er "
              "installationens beskyttelsesleder forbundet til forsyningens jordede nulpunkt, så en fejl bliver "
              "til en kortslutning, som sikringen bryder. I et TT-system har installationen sin egen jordelektrode, "
              "og fejlstrømmen er lille, så det er RCD'en, der beskytter. Begge findes i Danmark.",
              {"insttest", "ikmin"}},
             {"Fasefølge", "", "", "L1 → L2 → L3",
              "Fasefølgen er den rækkefølge, faserne når deres top i: L1, L2, L3. Den afgør, hvilken vej en "
              "trefaset motor drejer. Den kontrolleres med en fasefølgeindikator i trefasede stikkontakter og ved "
              "motortilslutninger, så alt, der sættes i, drejer den rigtige vej. Byttes to faser, vender "
              "drejefeltet.",
              {"insttest"}},
             {"Udsatte ledende dele", "", "", "",
              "Udsatte ledende dele er de metaldele på elektrisk materiel, man kan røre ved, og som normalt ikke "
              "har spænding, men kan få det ved en fejl – fx kabinettet på en vaskemaskine eller en "
              "metalarmatur. De skal forbindes til beskyttelseslederen, så en fejl får sikringen eller RCD'en til "
              "at slå fra.",
              {"insttest"}},
             {"Fremmede ledende dele", "", "", "",
              "Fremmede ledende dele er metaldele, der ikke hører til elinstallationen, men som kan føre et "
              "potential ind i bygningen – typisk jord – som vandrør, fjernvarmerør, gasrør og metalkonstruktioner. "
              "De forbindes til hovedjordklemmen med beskyttende potentialudligning, så der ikke kan opstå "
              "farlige spændinger mellem dem og udsatte dele.",
              {"insttest"}},
             {"Potentialudligning", "", "", "",
              "Potentialudligning er at forbinde udsatte og fremmede ledende dele, så de har samme potential, og "
              "ingen kan få stød ved at røre to af dem på én gang. Hovedudligningen samler vand, varme, gas og "
              "bygningens metal ved hovedjordklemmen; supplerende udligning bruges fx i badeværelser og stalde. "
              "Lederne er grøn/gule.",
              {"insttest", "install"}},
             {"Spændingsfald (test)", "ΔU%", "%", "ΔU% = ΔU · 100 / U",
              "Ved verifikationen kontrolleres det, at spændingsfaldet ikke er for stort. Det kan måles som "
              "forskellen mellem spændingen i tavlen og ude i kredsen under belastning, eller regnes ud fra den "
              "målte impedans. Vejledende grænser for en installation forsynet fra det offentlige net er 3 % til "
              "belysning og 5 % til andet (DS/HD 60364-5-52, anneks G).",
              {"sf1", "sf3", "insttest"}},
             {"Rapport", "", "", "",
              "Verifikationen afsluttes med en rapport over eftersyn, målinger og resultater. Den opbevares i "
              "virksomhedens kvalitetsledelsessystem (KLS), som installationsbekendtgørelsen kræver. Rapporten "
              "dokumenterer, at installationen var i orden, da den blev afleveret – også hvis der senere opstår "
              "tvivl.",
              {"insttest"}},
         }},
        {"Installation",
         "Sikringer",
         {
             {"Automatsikring", "I_n", "A", "",
              "En automatsikring (MCB, kredsløbsafbryder) beskytter ledningen mod overbelastning og kortslutning "
              "og kan slås til igen efter udløsning. Den har en termisk udløser, der reagerer langsomt på "
              "overbelastning, og en magnetisk udløser, der slår fra med det samme ved store strømme. Boligens "
              "grupper er typisk B- eller C-automater på 10, 13 eller 16 A.",
              {"instIa", "ikmin"}},
             {"Karakteristik B, C og D", "k", "", "I_a = k · I_n",
              "Karakteristikken fortæller, ved hvilken strøm automatsikringen slår magnetisk fra med det samme: "
              "B mellem 3 og 5 gange mærkestrømmen, C mellem 5 og 10 gange og D mellem 10 og 20 gange. B bruges "
              "til almindelige grupper, C til motorer og lysstofarmaturer med startstrøm, D til store "
              "startstrømme. En C16 skal altså have 160 A for at slå sikkert fra med det samme.",
              {"instIa", "instZs"}},
             {"Smeltesikring", "I_n", "A", "",
              "En smeltesikring har en tråd, der smelter over, når strømmen bliver for stor, og skal udskiftes "
              "bagefter. Proppesikringer (D-sikringer) findes i ældre boligtavler, knivsikringer (NH) i "
              "hovedtavler og kabelskabe. Sikringer af typen gG beskytter ledninger i hele strømområdet. Brug "
              "aldrig en større prop end den, gruppen er beregnet til.",
              {"ikmin"}},
             {"Udløsestrøm", "I_a", "A", "I_a = k · I_n",
              "Udløsestrømmen I_a er den strøm, der sikrer, at beskyttelsen slår fra inden for den krævede tid – "
              "for en gruppe til stikkontakter 0,4 s i et TN-system ved 230 V. For en automatsikring er det den "
              "øverste grænse for den magnetiske udløsning; for en RCD er det IΔn. Fejlstrømmen U<sub>0</sub> / Z_s skal "
              "være mindst I_a.",
              {"instIa", "instZs"}},
             {"Brydeevne", "I_cn", "kA", "",
              "Brydeevnen er den største kortslutningsstrøm, sikringen kan bryde uden selv at gå i stykker eller "
              "give lysbue. Den skal være større end den kortslutningsstrøm, der kan opstå, hvor sikringen "
              "sidder. Automatsikringer har typisk 6 eller 10 kA, smeltesikringer 50 kA eller mere.",
              {"ikmax"}},
             {"Selektivitet", "", "", "",
              "Selektivitet betyder, at det kun er den sikring, der sidder nærmest fejlen, der slår fra, mens "
              "resten af installationen fortsætter. Det opnås ved at vælge sikringer, der er større eller "
              "langsommere, jo tættere man kommer på forsyningen – fx en 35 A stikledningssikring foran 13 A "
              "grupper.",
              {"ikmax", "ikmin"}},
         }},
    };
}

} // namespace

std::vector<Group> trade() {
    std::vector<Group> out = economyAndMaths();
    for (Group& g : installation())
        out.push_back(std::move(g));
    return out;
}

} // namespace fl::entries
