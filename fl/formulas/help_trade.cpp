// Explanations for the trade's own families: three-phase power, star and
// delta with their faults, compensation, energy and price, motors, the
// alternating-voltage waveform and the limits of installation testing.
#include "fl/formulas/help_blocks.h"

namespace fl::help {

// clang-format off
std::vector<FamilyHelp> tradeBlocks() {
    return {
        {"tfS", "Finder den tilsyneladende effekt for en trefaset belastning ud fra netspænding og netstrøm – bruges til at vælge transformer, generator og forsyning.", {
            {"S", "Samlet for alle tre faser, i VA eller kVA. Den bestemmer strømmen og dermed kabel og sikringer."},
            {"U_N", "I Danmark normalt 400 V – den spænding, trefasede apparater er mærket til."},
            {"I_N", "Strømmen i hver faseleder, som tangamperemeteret viser ved symmetrisk belastning."},
        }},
        {"tfP", "Finder den nyttige effekt i en symmetrisk trefaset belastning, fx en motor eller et trefaset varmelegeme, ud fra netstørrelserne.", {
            {"P", "Den samlede aktive effekt i alle tre faser, i W eller kW."},
            {"U_N", "Spændingen mellem to faser, normalt 400 V i Danmark."},
            {"I_N", "Strømmen i én af de tre faseledere. Ved symmetrisk last er den lige stor i alle tre."},
            {"cosphi", "Belastningens effektfaktor: 1 for varmelegemer, ca. 0,8–0,9 for motorer ved fuld last."},
        }},
        {"tfQ", "Finder den reaktive effekt i en symmetrisk trefaset belastning – fx det, en motor trækker til magnetisering, og som kan kompenseres.", {
            {"Q", "Samlet reaktiv effekt for tre faser, i VAr eller kVAr."},
            {"U_N", "Netspændingen mellem faserne, typisk 400 V."},
            {"I_N", "Strømmen i én faseleder."},
            {"phi", "Faseforskydningen mellem strøm og spænding i hver fase, i grader. cos φ = 0,85 svarer til ca. 31,8°."},
        }},
        {"tfUY", "Omregner mellem net- og fasespænding i en stjernekobling – forklarer, hvorfor en 230 V belastning kan sidde mellem fase og nul i et 400 V net.", {
            {"U_F", "Spændingen mellem en faseleder og stjernepunktet (nul). I det danske net 230 V."},
            {"U_N", "Spændingen mellem to faseledere, 400 V – altid √3 ≈ 1,73 gange fasespændingen i stjerne."},
        }},
        {"tfID", "Omregner mellem strømmen i hver belastning og strømmen i ledningen, når belastningerne er koblet i trekant.", {
            {"I_F", "Strømmen gennem hver enkelt belastning eller vikling. Den er mindre end strømmen i tilledningen."},
            {"I_N", "Strømmen i faselederen, √3 gange fasestrømmen: i hvert hjørne mødes to fasestrømme, der er 120° forskudt."},
        }},
        {"tfR", "Ohms lov for én fase af en trefaset belastning – fx modstanden i hvert af de tre varmelegemer i en trefaset vandvarmer.", {
            {"R", "Modstanden i én af de tre belastninger. I en symmetrisk belastning er de ens."},
            {"U_F", "Spændingen over den ene belastning: 230 V i stjerne og 400 V i trekant på det danske net."},
            {"I_F", "Strømmen gennem den ene belastning – ikke nødvendigvis den samme som strømmen i faselederen."},
        }},
        {"tfPf", "Finder den samlede trefasede effekt ved at gange effekten i én fase med tre – gælder både stjerne og trekant.", {
            {"P", "Summen af de tre fasers aktive effekt."},
            {"U_F", "Spændingen over hver belastning: U<sub>N</sub> / √3 i stjerne, U<sub>N</sub> i trekant."},
            {"I_F", "Strømmen gennem hver belastning: I<sub>N</sub> i stjerne, I<sub>N</sub> / √3 i trekant."},
            {"cosphi", "Effektfaktoren for én fase – ved symmetrisk last den samme i alle tre. 1 for rene modstande."},
        }},
        {"tfSf", "Finder den tilsyneladende effekt for en trefaset belastning ud fra spænding og strøm i én fase, ganget med tre.", {
            {"S", "Samlet tilsyneladende effekt for alle tre faser, i VA eller kVA."},
            {"U_F", "Spændingen over én belastning eller vikling."},
            {"I_F", "Strømmen gennem én belastning eller vikling."},
        }},
        {"tfQf", "Finder den reaktive effekt for en trefaset belastning ud fra fasestørrelserne, ganget med tre for de tre faser.", {
            {"Q", "Samlet reaktiv effekt for alle tre faser."},
            {"U_F", "Spændingen over én af de tre belastninger."},
            {"I_F", "Strømmen gennem én af de tre belastninger."},
            {"phi", "Vinklen mellem fasestrøm og fasespænding, i grader."},
        }},
        {"tfPDY", "Sammenligner effekten, når de samme tre modstande kobles om fra stjerne til trekant – fx to effekttrin i et trefaset varmelegeme.", {
            {"P_D", "Effekten i trekant, hvor hver modstand ligger på hele netspændingen, fx 400 V."},
            {"P_Y", "Effekten i stjerne, hvor hver modstand kun får 230 V. Spændingen er √3 gange mindre, og effekten følger U²."},
        }},
        {"tfIDY", "Sammenligner netstrømmen for de samme tre belastninger koblet i trekant og i stjerne – bruges fx ved stjerne-trekant-start.", {
            {"I_ND", "Strømmen i faselederen, når belastningen er koblet i trekant."},
            {"I_NY", "Strømmen i faselederen, når de samme belastninger er koblet i stjerne – en tredjedel af trekantstrømmen."},
        }},
        {"tfFY", "Finder effekten i en stjernekoblet belastning uden nul, når én fase eller én modstand falder ud – fx efter en sprunget sikring.", {
            {"P_fejl", "Den effekt, der er tilbage, når to modstande i serie ligger på netspændingen."},
            {"U_N", "Spændingen mellem de to faser, der stadig er tilsluttet, normalt 400 V."},
            {"R", "Modstanden i én fase, den samme som før fejlen."},
        }},
        {"tfFD1", "Finder effekten i en trekantkoblet belastning, når en faseleder er afbrudt, fx fordi en sikring er sprunget.", {
            {"P_fejl", "Den resterende effekt: én modstand på fuld netspænding plus to i serie på samme spænding."},
            {"U_N", "Spændingen mellem de to faser, der stadig er tilsluttet."},
            {"R", "Modstanden i hver af de tre grene i trekanten."},
        }},
        {"tfFD2", "Finder effekten i en trekantkoblet belastning, når én modstand er brændt over, mens alle tre faser stadig er tilsluttet.", {
            {"P_fejl", "Effekten i de to modstande, der er tilbage; hver af dem ligger stadig på netspændingen."},
            {"U_N", "Netspændingen mellem faserne, normalt 400 V."},
            {"R", "Modstanden i hver af de intakte grene."},
        }},
        {"tfHalf", "Tommelfingerregel ved fejlfinding: mister en stjerne uden nul eller en trekant én faseleder, falder effekten til det halve.", {
            {"P_fejl", "Effekten efter fejlen. Måler du omkring det halve af det normale, tyder det på en manglende fase."},
            {"P", "Effekten med alle tre faser i orden, fx fra mærkepladen."},
        }},
        {"tf23", "Tommelfingerregel ved fejlfinding: brænder én af tre ens modstande i en trekantkobling over, falder effekten til to tredjedele.", {
            {"P_fejl", "Effekten med den ene gren afbrudt – de to andre arbejder uændret videre."},
            {"P", "Den normale effekt med alle tre grene hele."},
        }},
        {"kompQ", "Finder, hvor stor kondensatoreffekt der skal til for at hæve cos φ fra den nuværende til den ønskede værdi – fx i et værksted med mange motorer.", {
            {"QC", "Den reaktive effekt, kondensatorbatteriet skal levere, i VAr eller kVAr. Den fjerner en del af den induktive Q."},
            {"P", "Belastningens aktive effekt. Den ændres ikke af kompenseringen."},
            {"cosphi1", "Den nuværende effektfaktor, målt eller fra mærkepladen – ofte 0,7–0,85 i et anlæg med mange motorer."},
            {"cosphi2", "Typisk 0,95. Gå ikke helt til 1 – så risikerer du overkompensering, når belastningen er lav."},
        }},
        {"kompC", "Omsætter den nødvendige reaktive effekt til en kondensators kapacitet, så den kan købes eller kontrolleres.", {
            {"C", "Resultatet står i farad; 0,000047 F er 47 µF. Skriv 47u, når du taster µF ind."},
            {"QC", "Den reaktive effekt, netop denne kondensator skal levere. Med tre kondensatorer er det en tredjedel af den samlede."},
            {"f", "Netfrekvensen, 50 Hz. Ved højere frekvens leverer samme kondensator mere reaktiv effekt."},
            {"U", "Den står i anden potens, så samme kondensator giver ca. tre gange så meget Q på 400 V som på 230 V."},
        }},
        {"enE", "Finder energiforbruget i kWh, som elregningen er opgjort i, ud fra effekt og brugstid.", {
            {"E_kWh", "Den energi, elmåleren tæller. 1 kWh er fx en varmeblæser på 2 kW i en halv time."},
            {"P_kW", "Effekten i kilowatt, fx 0,008 kW for en LED-pære på 8 W."},
            {"t", "Brugstiden i timer; 15 minutter er 0,25 h."},
        }},
        {"enJ", "Finder energien i SI-enheden joule – bruges i fysik og ved opvarmning, hvor varmemængder regnes i J eller kJ.", {
            {"E_J", "Energi i joule, dvs. wattsekunder. Tallene bliver store: en kedel på 2 kW bruger 240 000 J på 2 minutter."},
            {"P", "Effekten i watt – ikke kW, ellers bliver svaret 1 000 gange for lille."},
            {"t_s", "Tiden i sekunder; 1 time er 3 600 s."},
        }},
        {"enAar", "Finder forbruget over uger, måneder eller et helt år, når et apparat bruges et bestemt antal timer hver dag.", {
            {"E_kWh", "Det samlede forbrug for hele perioden."},
            {"P_kW", "Apparatets effekt i kW; watt divideres med 1 000."},
            {"h", "Den gennemsnitlige brugstid pr. døgn, fx 4 h for en lampe, der er tændt om aftenen."},
            {"d_dage", "Antal dage i perioden, fx 365 for et år eller 30 for en måned."},
        }},
        {"enPris", "Omregner et energiforbrug til kroner – fx hvad det koster at have en varmepumpe kørende i en måned.", {
            {"Pris", "Det, forbruget koster, i kroner."},
            {"E_kWh", "Forbruget i kWh, fx fundet med E = P · t."},
            {"k_el", "Prisen for én kWh, alt medregnet: energi, nettarif, afgifter og moms."},
        }},
        {"enBes", "Finder, hvor mange kroner der spares, når et apparat udskiftes med et, der bruger mindre effekt, over en given brugstid.", {
            {"B", "Den sparede udgift i kroner for perioden."},
            {"P1", "Effekten af det gamle apparat i kW, fx 0,06 kW for en glødepære på 60 W."},
            {"P2", "Effekten af det nye apparat i kW, fx 0,008 kW for en LED-pære."},
            {"t", "Det samlede antal driftstimer i perioden, fx 1 000 h om året."},
            {"k_el", "Prisen pr. kWh, inklusive afgifter og moms."},
        }},
        {"enTilb", "Finder, hvor mange år det tager, før en energibesparende investering har tjent sig selv hjem.", {
            {"T_tb", "Antal år, før besparelserne har betalt investeringen. Er den kortere end apparatets levetid, er det en god forretning."},
            {"Inv", "Hvad det nye koster, inklusive montering."},
            {"B_aar", "Hvor mange kroner der spares hvert år, fx fundet med formlen for besparelse."},
        }},
        {"enEta", "Fortæller, hvor stor en del af den tilførte effekt der kommer nyttigt ud – for en motor, en transformer eller en strømforsyning.", {
            {"eta", "Et decimaltal under 1, fx 0,85. Skriv 0,85 og ikke 85; gang med 100, hvis du vil have procent."},
            {"P_ud", "Den nyttige effekt, apparatet leverer, fx akseleffekten på en motor."},
            {"P_ind", "Den effekt, der tilføres – for elektriske apparater den, der trækkes fra nettet."},
        }},
        {"motNs", "Finder, hvor hurtigt drejefeltet i en vekselstrømsmotor roterer. En asynkronmotors aksel kører lidt langsommere.", {
            {"n_s", "Drejefeltets omdrejninger pr. minut. En asynkronmotor når aldrig helt op på den – heller ikke ubelastet."},
            {"f", "Netfrekvensen, 50 Hz. Med en frekvensomformer kan den ændres, og så ændres omdrejningstallet med."},
            {"p", "Et helt tal. En 4-polet motor har p = 2. Står sjældent på mærkepladen, men kan ses ud fra omdrejningstallet."},
        }},
        {"motSlip", "Finder, hvor meget en asynkronmotors rotor halter efter drejefeltet – slippet vokser med belastningen.", {
            {"s", "0 % ved synkron hastighed, 100 % ved stilstand. Små motorer har større slip end store."},
            {"n_s", "Drejefeltets hastighed, 60 · f / p – fx 1500 o/min for en 4-polet motor ved 50 Hz."},
            {"nr", "Akslens faktiske omdrejningstal ved fuld last, fx 1440 o/min for en 4-polet motor."},
        }},
        {"motFr", "Finder frekvensen af de strømme, der induceres i rotoren. Den er lav under drift og lig netfrekvensen ved start.", {
            {"f_r", "Hvor hurtigt drejefeltet glider forbi rotoren. Ved 4 % slip og 50 Hz er det kun 2 Hz."},
            {"s", "Slippet i procent, fx 4. Formlen deler selv med 100."},
            {"f", "Frekvensen på statorens forsyning, normalt 50 Hz."},
        }},
        {"motEta", "Finder, hvor stor en del af den elektriske effekt motoren omsætter til mekanisk effekt på akslen.", {
            {"eta", "Som decimaltal, fx 0,87. Store motorer har højere virkningsgrad end små."},
            {"P_2", "Den mekaniske effekt, motoren kan afgive på akslen ved mærkedrift."},
            {"P_1", "Målt med wattmeter eller beregnet som √3 · U · I · cos φ for en trefaset motor."},
        }},
        {"motTab", "Finder motorens tab – den effekt, der bliver til varme i stedet for arbejde, og som motorens køling skal fjerne.", {
            {"P_tab", "Effekten, der går tabt. En motor på 5,5 kW med η = 0,88 har ca. 750 W tab."},
            {"P_1", "Den elektriske effekt, motoren tager fra nettet."},
            {"P_2", "Den mekaniske effekt på akslen – den, der står på mærkepladen."},
        }},
        {"motI3", "Finder strømmen i tilledningen til en trefaset motor ud fra mærkepladens data – bruges til at vælge motorværn, sikring og kabel.", {
            {"P_2", "Akseleffekten fra mærkepladen, i W. Skriv 5,5k for 5,5 kW."},
            {"U_N", "Spændingen mellem faserne, 400 V. En motor mærket 230/400 V kobles i stjerne på et 400 V net."},
            {"I_N", "Strømmen i hver faseleder ved fuld last. Sammenlign med strømmen på mærkepladen."},
            {"cosphi", "Motorens effektfaktor ved fuld last, fra mærkepladen – typisk 0,8–0,9."},
            {"eta", "Som decimaltal, typisk 0,8–0,95 alt efter motorens størrelse."},
        }},
        {"motI1", "Finder strømmen til en enfaset motor ud fra mærkepladen, fx til en pumpe, et køleaggregat eller en ventilator på 230 V.", {
            {"P_2", "Den mekaniske effekt, motoren afgiver på akslen, i W."},
            {"U", "Forsyningsspændingen mellem fase og nul, normalt 230 V."},
            {"I", "Strømmen i tilledningen ved fuld last."},
            {"cosphi", "Fra mærkepladen. Hos små enfasede motorer kan den ligge helt nede omkring 0,7."},
            {"eta", "Som decimaltal. Små motorer har ofte kun 0,6–0,8."},
        }},
        {"motM", "Finder det drejningsmoment, motoren giver på akslen – afgørende for, om den kan trække maskinen, fx et transportbånd eller en kompressor.", {
            {"M", "Drejningsmomentet i newtonmeter. Samme effekt ved lavere omdrejningstal giver større moment."},
            {"P_2", "Den mekaniske effekt på akslen, i W."},
            {"nr", "Akslens omdrejninger pr. minut, fra mærkepladen – ikke drejefeltets synkrone hastighed."},
        }},
        {"motStart", "Finder den store startstrøm ved direkte start – vigtig for valget af sikring og for spændingsdyk i nettet.", {
            {"I_st", "Strømmen i det øjeblik, motoren startes. Den varer kort, men kan få en for lille sikring til at udløse."},
            {"k_st", "Hvor mange gange mærkestrømmen motoren trækker ved start, fx 6."},
            {"I_N", "Strømmen ved fuld last, som står på mærkepladen."},
        }},
        {"motYD", "Viser, hvor meget stjerne-trekant-start sænker startstrømmen for en motor, der er bygget til at køre i trekant.", {
            {"I_stY", "Startstrømmen i tilledningen, mens motoren står i stjerne. Momentet falder lige så meget, så motoren skal starte let belastet."},
            {"I_stD", "Den strøm, motoren ville trække ved direkte start i trekant, fx 6 gange mærkestrømmen."},
        }},
        {"acT", "Omregner mellem frekvens og periodetid – bruges fx, når et oscilloskop aflæses, og tiden for én svingning skal blive til en frekvens.", {
            {"T", "Tiden fra én top på kurven til den næste. Aflæses på oscilloskopets tidsakse (ms/div)."},
            {"f", "Antal hele svingninger pr. sekund. Det danske net har 50 Hz."},
        }},
        {"acW", "Omregner frekvensen til vinkelfrekvens, som indgår i formlerne for spolers og kondensatorers reaktans.", {
            {"omega", "Hvor mange radianer viseren drejer pr. sekund; én hel omgang er 2 · π rad."},
            {"f", "Frekvensen i hertz, 50 Hz på nettet."},
        }},
        {"acSS", "Forbinder spidsværdien med spids-spids-værdien, som man aflæser på et oscilloskop fra bund til top.", {
            {"Uss", "Den lodrette afstand fra kurvens bund til dens top. For 230 V er den ca. 650 V."},
            {"Umax", "Kurvens højeste værdi målt fra nullinjen, ca. 325 V for 230 V."},
        }},
        {"acMid", "Finder middelværdien af en ensrettet sinusspænding – den jævnspænding, en ensretter giver i gennemsnit, og det, et drejespoleinstrument viser.", {
            {"Umid", "Gennemsnittet af den ensrettede kurve. Den er lidt mindre end effektværdien: ca. 0,9 · U<sub>eff</sub>."},
            {"Umax", "Spidsværdien på kurven, √2 gange effektværdien."},
        }},
        {"acForm", "Omregner mellem middelværdi og effektværdi for en ren sinus. Simple multimetre måler middelværdien og ganger med 1,11 – derfor viser de forkert på forvrængede kurver.", {
            {"Ueff", "Den spænding, der giver samme opvarmning som en lige så stor jævnspænding, fx 230 V."},
            {"Umid", "Gennemsnittet af den ensrettede sinus, 2 / π gange spidsværdien."},
        }},
        {"acInst", "Finder spændingen på et bestemt sted på sinuskurven – fx hvor høj den er 30° efter nulgennemgangen.", {
            {"u_t", "Spændingen i netop dette øjeblik. Den svinger mellem +U<sub>max</sub> og −U<sub>max</sub>."},
            {"Umax", "Spidsværdien, √2 gange effektværdien – ca. 325 V på det danske net."},
            {"alpha", "Hvor langt kurven er nået, i grader fra nulgennemgangen. Programmet regner i grader, ikke radianer."},
        }},
        {"acVinkel", "Finder, hvor langt sinuskurven er nået efter en given tid – bagefter kan øjebliksværdien findes med u = U<sub>max</sub> · sin α.", {
            {"alpha", "Vinklen i grader. Er den over 360°, er kurven nået ind i en ny periode; træk 360° fra."},
            {"f", "Frekvensen, 50 Hz på nettet. Én periode varer så 20 ms."},
            {"t_s", "Tiden siden nulgennemgangen, i sekunder. Ved 50 Hz svarer 1 ms til 18°."},
        }},
        {"instRe", "Finder den største jordmodstand, der kan godkendes i et TT-system med fejlstrømsafbryder, så berøringsspændingen ikke bliver farlig.", {
            {"R_e", "Den højeste modstand mellem jordelektroden og jorden, der kan godkendes. Sammenlign med den målte værdi."},
            {"U_L", "Den største spænding, en person må kunne få over kroppen ved en fejl – normalt 50 V."},
            {"I_dn", "Den fejlstrøm, RCD'en skal slå fra ved: 30 mA til personbeskyttelse, 300 mA til brandbeskyttelse."},
        }},
        {"instIa", "Finder den strøm, der får en automatsikring til at slå fra med det samme (magnetisk). Bruges sammen med sløjfeimpedansen ved verifikation.", {
            {"I_a", "Den mindste strøm, der med sikkerhed giver magnetisk udkobling på under 0,1 s."},
            {"k_a", "Afhænger af sikringens karakteristik, bogstavet foran mærkestrømmen: en C16 har karakteristik C."},
            {"I_n", "Sikringens mærkestrøm – tallet efter bogstavet, fx 16 A for en B16 eller en C16."},
        }},
        {"instZs", "Finder den største sløjfeimpedans, en gruppe må have, for at strømmen ved en fejl til jord bliver stor nok til at udkoble i tide.", {
            {"Z_s", "Impedansen i hele fejlsløjfen: transformer, faseleder, fejlsted og beskyttelsesleder tilbage. Måles med en installationstester."},
            {"U_0", "Den nominelle spænding mellem faseleder og jord i et TN-system. Brug den nominelle værdi, ikke den målte."},
            {"I_a", "Den strøm, der sikrer udkobling i tide – for en automatsikring k · I<sub>n</sub>, fx 160 A for en C16."},
        }},
    };
}
// clang-format on

} // namespace fl::help
