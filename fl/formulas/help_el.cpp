// Explanations for the families of direct current, batteries, transformers
// and single-phase alternating current. One block per family in catalogue
// order: the key, what the formula is used for, then one line per letter.
#include "fl/formulas/help_blocks.h"

namespace fl::help {

// clang-format off
std::vector<FamilyHelp> electricBlocks() {
    return {
        {"ohm", "Grundformlen i el-lære: kender du to af de tre størrelser, finder du den tredje – fx strømmen gennem et varmelegeme eller modstanden i en fejlsøgning.", {
            {"U", "Det elektriske »tryk«, der driver strømmen. Måles med voltmeter parallelt over komponenten; i en bolig typisk 230 V mellem fase og nul."},
            {"I", "Ladning pr. sekund gennem kredsen. Måles med amperemeter i serie med belastningen. Skriv fx 250m for 250 mA."},
            {"R", "Hvor meget komponenten bremser strømmen. Måles spændingsløst med ohmmeter. Skriv k for kilo: 4,7k = 4 700 Ω."},
        }},
        {"power", "Finder den effekt, en ohmsk belastning omsætter, eller den strøm, et apparat trækker – fx at en kedel på 2 300 W ved 230 V trækker 10 A.", {
            {"P", "Den energi, der hvert sekund bliver til varme, lys eller arbejde. Står på typeskiltet; 1 kW = 1 000 W."},
            {"U", "Spændingen over belastningen. Ved vekselstrøm gælder formlen kun, når strøm og spænding er i fase (cos φ = 1)."},
            {"I", "Strømmen gennem belastningen – den, der sammenlignes med sikringens størrelse, fx 10 A, 13 A eller 16 A."},
        }},
        {"powerR", "Effekten i en modstand, når strømmen kendes – fx varmetabet i et kabel eller i en løs klemme med dårlig forbindelse.", {
            {"P", "Den effekt, der bliver til varme i modstanden. I et kabel er det tabet, der opvarmer lederne."},
            {"I", "Strømmen gennem modstanden. Den står i anden potens: dobbelt strøm giver fire gange så stor effekt."},
            {"R", "Modstanden, strømmen løber igennem, fx ledningsmodstanden R<sub>L</sub> i et kabel eller overgangsmodstanden i en klemme."},
        }},
        {"powerU", "Effekten i en modstand, når spændingen over den kendes – fx et varmelegeme. Viser også, hvorfor effekten falder kraftigt, når spændingen falder.", {
            {"P", "Den effekt, modstanden afgiver som varme ved netop denne spænding."},
            {"U", "Spændingen over modstanden; den står i anden potens. Et varmelegeme til 230 V giver kun en fjerdedel af effekten på 115 V."},
            {"R", "Modstanden i varm tilstand. Et varmelegeme på 1 000 W til 230 V har ca. 53 Ω."},
        }},
        {"par2", "Erstatningsmodstanden for to modstande, der sidder mellem de samme to punkter – fx to varmelegemer koblet parallelt på samme spænding.", {
            {"Rt", "Den ene modstand, der kan erstatte de to. Den er altid mindre end den mindste af dem; to ens modstande giver det halve."},
            {"R1", "Den ene gren. Begge grene har samme spænding over sig, og den mindste modstand får den største strøm."},
            {"R2", "Den anden gren. Regner du baglæns efter den, skal R<sub>total</sub> være mindre end R<sub>1</sub>, ellers findes der intet svar."},
        }},
        {"formod", "Udvider et voltmeters måleområde: en modstand i serie tager den del af spændingen, som instrumentet ikke selv kan tåle – fx fra 10 V til 250 V.", {
            {"RF", "Seriemodstanden foran instrumentet, ofte flere kΩ. Den skal også kunne tåle effekten I² · R<sub>F</sub>."},
            {"U", "Den største spænding, hele kombinationen skal kunne vise med fuldt udslag – altså det nye, større område."},
            {"UV", "Den spænding, der giver fuldt udslag på instrumentet alene. Den ligger stadig over voltmeteret, når hele området bruges."},
            {"RV", "Instrumentets egen modstand mellem klemmerne, ofte angivet i databladet. Jo større, jo mindre belaster voltmeteret kredsen."},
        }},
        {"shunt", "Udvider et amperemeters måleområde: en lille modstand parallelt med instrumentet leder det meste af strømmen uden om det.", {
            {"Rsh", "Den lille parallelmodstand, ofte under 1 Ω. Skriv m for milli: 5m = 0,005 Ω. Den fører næsten hele strømmen."},
            {"I", "Den største strøm, der skal kunne måles med fuldt udslag – strømmen gennem shunt og instrument tilsammen."},
            {"IA", "Den strøm, der giver fuldt udslag på instrumentet alene, ofte kun nogle få mA."},
            {"UA", "Spændingsfaldet over instrumentet ved fuldt udslag, dets modstand gange I<sub>A</sub> – ofte i størrelsen 50–100 mV."},
        }},
        {"wire", "Finder modstanden i et kabel ud fra materiale, længde og tværsnit – første skridt til spændingsfald, effekttab og kortslutningsstrøm.", {
            {"RL", "Den samlede modstand i de ledere, strømmen løber igennem. Bruges bagefter i ΔU = I · R<sub>L</sub>."},
            {"rho", "Materialets specifikke modstand ved 20 °C: kobber 0,0175 og aluminium 0,029. Den stiger med temperaturen, så en varm leder har mere modstand."},
            {"l", "I meter. Ved 1-faset 230 V løber strømmen ud i fasen og hjem i nullen – derfor 2 × kabellængden."},
            {"q", "Lederens metalareal, fx 1,5 mm² til lysgrupper og 2,5 mm² til stikkontaktgrupper. Dobbelt tværsnit giver halv modstand."},
        }},
        {"qd", "Regner en leders tværsnit ud fra den målte diameter – fx når en ukendt leder skal kontrolleres med skydelære eller mikrometer.", {
            {"q", "Arealet i mm², som kabler sælges efter: 1,5 / 2,5 / 4 / 6 / 10 mm². Bruges i ledningsmodstand og strømværdi."},
            {"d", "Mål uden isolering. En massiv 2,5 mm² leder er ca. 1,78 mm tyk; på en mangetrådet leder giver målet kun et skøn."},
        }},
        {"vd1", "Finder, hvor mange volt der går tabt i kablet, når strømmen løber – så du kan kontrollere, at brugsgenstanden stadig får spænding nok.", {
            {"dU", "Den spænding, der ligger over lederne i stedet for over belastningen. Omregn til procent for at sammenligne med grænsen."},
            {"I", "Belastningsstrømmen gennem kablet – ved dimensionering den strøm, gruppen er beregnet til (I<sub>B</sub>)."},
            {"RL", "Modstanden i hele strømvejen, frem og tilbage. Findes med formlen for ledningsmodstand: R<sub>L</sub> = ρ · l / q."},
        }},
        {"vd2", "Finder spændingsfaldet ud fra to målinger: spændingen ved tavlen og spændingen ved belastningen, begge målt, mens der er last på.", {
            {"dU", "Forskellen mellem de to spændinger – det, der er tabt i ledningerne. Uden belastning er den næsten 0."},
            {"U", "Spændingen ved kablets begyndelse, fx i gruppetavlen – normalt omkring 230 V mellem fase og nul."},
            {"UB", "Spændingen ved kablets ende, målt på brugsgenstandens klemmer med belastningen tændt. Den er altid lidt lavere end U."},
        }},
        {"vd3", "Sætter spændingsfaldet i forhold til forsyningsspændingen, så det kan sammenlignes med den tilladte grænse uanset spændingsniveau.", {
            {"dUp", "Spændingsfaldet som andel af forsyningen. 4 % af 230 V er 9,2 V; af 400 V er det 16 V."},
            {"dU", "Spændingsfaldet i volt, fx fundet med ΔU = I · R<sub>L</sub> eller som forskellen mellem to målte spændinger."},
            {"U", "Den spænding, ΔU sammenlignes med: 230 V ved 1-faset forsyning og 400 V ved 3-faset, når ΔU er regnet mellem faserne."},
        }},
        {"batt", "Finder strømmen fra et batteri med belastning, når batteriets indre modstand tages med – den forklarer, hvorfor spændingen falder under last.", {
            {"I", "Strømmen i hele kredsen. Den samme strøm går gennem batteriets indre modstand og gennem belastningen, fordi de sidder i serie."},
            {"E", "Kildespændingen inde i batteriet. Den kan måles med et voltmeter, når intet andet er tilsluttet; en alkalisk celle har ca. 1,5 V."},
            {"RI", "Modstanden i selve batteriet. Den er lille, ofte brøkdele af en ohm, men vokser, når batteriet er afladet, gammelt eller koldt."},
            {"Ry", "Modstanden i det, batteriet driver, fx en pære eller en lille motor, inklusive ledningerne hen til den."},
        }},
        {"battE", "Deler batteriets EMK op i den spænding, der kommer ud på klemmerne, og den, der går tabt inde i batteriet.", {
            {"E", "Den samlede spænding, batteriet skaber. Den ændrer sig ikke med belastningen – det gør kun fordelingen mellem U<sub>y</sub> og U<sub>I</sub>."},
            {"Uy", "Spændingen målt på batteriets poler under belastning. Jo større strøm, jo lavere klemmespænding."},
            {"UI", "Den del af EMK'en, der driver strømmen gennem batteriets egen modstand og bliver til varme i batteriet."},
        }},
        {"ik", "Finder den største strøm, et batteri kan levere, hvis polerne kortsluttes – vigtig for sikringen og for faren ved fx et bilbatteri.", {
            {"Ik", "Strømmen, når den ydre modstand er 0, så kun den indre modstand begrænser. Et bilbatteri kan give flere hundrede ampere."},
            {"E", "Batteriets ubelastede spænding – fx ca. 12,6 V på et opladet 12 V bilbatteri."},
            {"RI", "Den eneste modstand i kredsen ved kortslutning. Jo mindre den er, jo større og farligere bliver strømmen."},
        }},
        {"cells", "Finder strømmen fra flere ens celler koblet i serie – både spændingerne og de indre modstande lægges sammen.", {
            {"I", "Strømmen gennem hele serieforbindelsen; den er den samme i hver celle og i belastningen."},
            {"n", "Hvor mange ens celler der sidder i serie. Et 12 V blybatteri har fx 6 celler på ca. 2 V."},
            {"E", "Den ubelastede spænding fra én celle; hele batteriets EMK bliver n gange så stor."},
            {"RI", "Den indre modstand i én celle. I serie lægges de sammen, så mange celler giver også mere indre tab."},
            {"Ry", "Modstanden i det, batteriet forsyner – uden batteriets egen indre modstand."},
        }},
        {"trU", "Beregner spænding eller vindingstal for en transformer: spændingerne forholder sig som vindingstallene – fx en 230/12 V sikkerhedstransformer.", {
            {"U1", "Spændingen på den side, der tilsluttes forsyningen, fx 230 V eller 400 V."},
            {"U2", "Spændingen, transformeren afgiver til belastningen. Den gælder ved mærkelast; ubelastet er den lidt højere."},
            {"N1", "Antal vindinger (omgange af tråd) på primærsiden. Siden med den højeste spænding har flest vindinger."},
            {"N2", "Antal vindinger på sekundærsiden. Forholdet N<sub>1</sub> / N<sub>2</sub> er det samme som U<sub>1</sub> / U<sub>2</sub>."},
        }},
        {"trI", "Finder strømmen på den ene side af en transformer ud fra den anden, når der ses bort fra tabene: effekten ind er lig effekten ud.", {
            {"I1", "Strømmen, transformeren trækker fra nettet. Den vokser med belastningen på sekundærsiden."},
            {"I2", "Strømmen, som belastningen trækker. Siden med den lave spænding har den store strøm – og derfor de tykkeste ledere."},
            {"U1", "Spændingen på forsyningssiden, fx 230 V."},
            {"U2", "Spændingen på belastningssiden, fx 12 V eller 24 V til styrestrøm eller belysning."},
        }},
        {"trR", "Beskriver med ét tal, hvor meget en transformer sætter spændingen ned eller op. Mærkepladen angiver det som fx 400/230 V.", {
            {"u", "Et rent forholdstal uden enhed. Over 1 betyder nedtransformering; en 230/12 V transformer har u ≈ 19,2."},
            {"U1", "Spændingen på primærsiden, der hvor energien kommer ind."},
            {"U2", "Spændingen på sekundærsiden, der hvor belastningen tilsluttes."},
        }},
        {"S", "Angiver, hvor stor en transformer eller en forsyning skal være. S tæller hele strømmen med, også den del, der ikke giver nyttig effekt.", {
            {"S", "Spænding gange strøm uden cos φ. Transformere mærkes i VA eller kVA, fordi de skal tåle strømmen uanset belastningens art."},
            {"U", "Spændingen over belastningen, eller transformerens mærkespænding på den side, du regner på."},
            {"I", "Den strøm, der løber i lederne. Den bestemmer opvarmningen af viklinger og kabler."},
        }},
        {"eff", "Omregner mellem effektværdien, som multimeteret viser, og spidsværdien, som isolation og komponenter skal kunne tåle.", {
            {"Ueff", "Den værdi, der giver samme varmevirkning som en lige så stor jævnspænding. Når man siger 230 V, er det effektværdien."},
            {"Umax", "Kurvens højeste punkt. Ved 230 V er den ca. 325 V – den skal kondensatorer og isolation klare."},
        }},
        {"XL", "Finder, hvor meget en spole hæmmer vekselstrøm ved en given frekvens – fx en drosselspole eller en motorvikling.", {
            {"XL", "Spolens »vekselstrømsmodstand«. Den stiger med frekvensen og er 0 ved jævnstrøm, hvor kun trådens ohmske modstand er tilbage."},
            {"f", "Vekselstrømmens frekvens, 50 Hz på det danske net. Dobbelt frekvens giver dobbelt X<sub>L</sub>."},
            {"L", "Spolens evne til at modvirke ændringer i strømmen. Afhænger af vindingstal og jernkerne; typisk fra få mH til nogle henry."},
        }},
        {"XC", "Finder en kondensators modstand mod vekselstrøm ved en given frekvens – fx en kompenseringskondensator eller en motorkondensator.", {
            {"XC", "Falder, når frekvensen eller kapaciteten stiger. Ved jævnstrøm er den uendelig stor – kondensatoren spærrer."},
            {"f", "Netfrekvensen er 50 Hz. Højere frekvens giver mindre X<sub>C</sub>, så kondensatoren lader mere strøm gå."},
            {"C", "Kondensatorens størrelse. Praktiske værdier er µF eller nF; en driftskondensator til en lille enfaset motor er fx 8 µF."},
        }},
        {"ZRL", "Finder den samlede modstand mod vekselstrøm for en modstand og en spole i serie – fx en lysstofarmatur med drossel eller en motorvikling.", {
            {"Z", "Det, der i Ohms lov for vekselstrøm erstatter R: I = U / Z. Z er altid større end både R og X<sub>L</sub>."},
            {"R", "Den del af modstanden, der omsætter energi til varme. Den er den samme ved jævn- og vekselstrøm."},
            {"XL", "Spolens reaktans, 2 · π · f · L. Den står vinkelret på R i modstandstrekanten."},
        }},
        {"ZRC", "Finder impedansen af en modstand og en kondensator i serie – fx et RC-led i et filter eller en styring.", {
            {"Z", "Den samlede vekselstrømsmodstand, som sammen med spændingen bestemmer strømmen: I = U / Z."},
            {"R", "Den ohmske del, der bliver til varme – den vandrette side i modstandstrekanten."},
            {"XC", "Kondensatorens reaktans, 1 / (2 · π · f · C). Den tegnes nedad i modstandstrekanten, modsat X<sub>L</sub>."},
        }},
        {"ZRLC", "Finder impedansen af en serieforbindelse af modstand, spole og kondensator. Spolen og kondensatoren ophæver hinanden delvis.", {
            {"Z", "Mindst ved resonans, hvor X<sub>L</sub> = X<sub>C</sub>; så er Z = R, og strømmen bliver størst."},
            {"R", "Den ohmske modstand i kredsen, inklusive spolens egen trådmodstand, hvis den skal med."},
            {"XL", "Spolens reaktans. Kun forskellen mellem X<sub>L</sub> og X<sub>C</sub> tæller; er X<sub>L</sub> størst, er kredsen induktiv."},
            {"XC", "Kondensatorens reaktans. Er den størst, er kredsen kapacitiv, og strømmen ligger før spændingen."},
        }},
        {"Zcoil", "Finder impedansen, når en rigtig spole med egen trådmodstand sidder i serie med en modstand – de to ohmske dele lægges sammen først.", {
            {"Z", "Den samlede vekselstrømsmodstand for hele serieforbindelsen."},
            {"XL", "Spolens reaktans alene, uden trådens modstand."},
            {"R", "Den ydre modstand i serie med spolen, fx en formodstand eller et varmelegeme."},
            {"RL", "Kobbertrådens modstand i spolen. Den kan måles med et ohmmeter, fordi X<sub>L</sub> er 0 ved jævnstrøm."},
        }},
        {"URL", "Lægger spændingerne over R og L sammen i en serieforbindelse. De er 90° forskudt, så de lægges sammen geometrisk – ikke bare plus.", {
            {"U", "Forsyningsspændingen over hele serieforbindelsen. Den er mindre end U<sub>R</sub> + U<sub>L</sub>, fordi de to er faseforskudte."},
            {"UR", "Spændingen over den ohmske del. Den er i fase med strømmen."},
            {"UL", "Spændingen over spolen. Den ligger 90° foran strømmen."},
        }},
        {"URC", "Lægger spændingerne over R og C sammen i en serieforbindelse; de står vinkelret på hinanden i spændingstrekanten.", {
            {"U", "Den påtrykte spænding over hele forbindelsen – hypotenusen i spændingstrekanten."},
            {"UR", "Spændingen over modstanden, i fase med strømmen – den vandrette side i trekanten."},
            {"UC", "Spændingen over kondensatoren. Den ligger 90° efter strømmen."},
        }},
        {"URLC", "Finder den samlede spænding i en serie-RLC-kreds. Spændingerne over L og C er modsat rettede og trækkes fra hinanden.", {
            {"U", "Spændingen fra forsyningen. Den kan være mindre end U<sub>L</sub> eller U<sub>C</sub> hver for sig; ved resonans er den lig U<sub>R</sub>."},
            {"UR", "Spændingen over den ohmske modstand, i fase med strømmen."},
            {"UL", "Spændingen over spolen. Nær resonans kan den blive langt større end forsyningsspændingen."},
            {"UC", "Spændingen over kondensatoren. Den er modsat rettet U<sub>L</sub>, så kun forskellen tæller."},
        }},
        {"ULX", "Ohms lov for en spole: finder spændingen over spolen, når strømmen og reaktansen kendes.", {
            {"UL", "Spændingen over spolen alene. I en serieforbindelse kan den ikke lægges direkte sammen med U<sub>R</sub>."},
            {"XL", "Spolens reaktans ved den aktuelle frekvens, fundet med X<sub>L</sub> = 2 · π · f · L."},
            {"I", "Strømmen gennem spolen – i en serieforbindelse den samme som i resten af kredsen."},
        }},
        {"UCX", "Ohms lov for en kondensator: finder spændingen over den ud fra strømmen og reaktansen.", {
            {"UC", "Spændingen over kondensatoren. Vælg en kondensator, hvis mærkespænding ligger et godt stykke over spidsværdien."},
            {"XC", "Kondensatorens reaktans ved den aktuelle frekvens, fundet med X<sub>C</sub> = 1 / (2 · π · f · C)."},
            {"I", "Vekselstrømmen gennem kondensatoren, målt med amperemeter i serie."},
        }},
        {"cosZ", "Finder effektfaktoren ud fra modstandstrekanten: hvor stor en del af impedansen der er ohmsk.", {
            {"cosphi", "Et tal mellem 0 og 1. Ren modstand giver 1; jo mere spole eller kondensator, jo lavere. Motorer ligger typisk på 0,8–0,9."},
            {"R", "Den ohmske modstand – siden i modstandstrekanten, der ligger op ad vinklen φ."},
            {"Z", "Impedansen – hypotenusen i modstandstrekanten. R kan aldrig være større end Z."},
        }},
        {"cosU", "Finder effektfaktoren ud fra spændingstrekanten, fx når du har målt spændingen over modstanden og over hele kredsen.", {
            {"cosphi", "Forholdet mellem den ohmske spænding og den samlede – uden enhed og mellem 0 og 1."},
            {"UR", "Spændingen over den ohmske del, i fase med strømmen – siden op ad φ i spændingstrekanten."},
            {"U", "Den samlede spænding over serieforbindelsen – hypotenusen i spændingstrekanten."},
        }},
        {"cosP", "Finder effektfaktoren ud fra effekttrekanten: hvor stor en del af den tilsyneladende effekt der bliver til nyttig effekt.", {
            {"cosphi", "Jo tættere på 1, jo mindre strøm skal kablerne føre for den samme nyttige effekt."},
            {"P", "Den effekt, der bliver til varme, lys eller mekanisk arbejde – den, elmåleren afregner."},
            {"S", "Spænding gange strøm. Den bestemmer strømmen i kablet, og hvor stor transformer eller sikring der skal til."},
        }},
        {"phi", "Omregner mellem effektfaktoren og selve vinklen mellem strøm og spænding – fx til et vektordiagram eller for at finde sin φ.", {
            {"phi", "Vinklen mellem strøm og spænding i vektordiagrammet. Programmet regner i grader; cos φ = 0,8 svarer til ca. 36,9°."},
            {"cosphi", "Et tal mellem 0 og 1. Samme cos φ kan høre til både en induktiv og en kapacitiv kreds – det afgør komponenterne, ikke tallet."},
        }},
        {"Pac", "Finder den nyttige effekt i en enfaset vekselstrømsbelastning med faseforskydning – fx en motor eller en lysstofarmatur.", {
            {"P", "Den effekt, der faktisk omsættes til varme, lys eller arbejde. Måles i watt og afregnes af elmåleren."},
            {"U", "Effektværdien af spændingen over belastningen, i en dansk installation typisk 230 V."},
            {"I", "Effektværdien af strømmen, som et tangamperemeter viser den."},
            {"cosphi", "Fra mærkepladen eller beregnet. Uden den får du den tilsyneladende effekt S i stedet for P."},
        }},
        {"Qac", "Finder den reaktive effekt, der pendler frem og tilbage mellem nettet og spoler eller kondensatorer uden at udføre arbejde.", {
            {"Q", "Den belaster kabler og transformere med strøm, men giver ingen nyttig effekt – derfor kompenserer man."},
            {"U", "Effektværdien af spændingen over belastningen, fx 230 V."},
            {"I", "Effektværdien af strømmen til belastningen, fx målt med tangamperemeter."},
            {"phi", "Vinklen mellem strøm og spænding, i grader. Ved 0° er Q = 0; ved 90° er al effekten reaktiv."},
        }},
        {"SPQ", "Forbinder de tre effekter i effekttrekanten: kender du to af dem, finder du den tredje med Pythagoras.", {
            {"S", "Hypotenusen i effekttrekanten: den effekt, kabler og transformer skal dimensioneres efter."},
            {"P", "Den vandrette katete: den nyttige effekt, der omsættes til varme, lys eller arbejde."},
            {"Q", "Den lodrette katete: effekt, der pendler mellem kilde og spole eller kondensator. Induktiv og kapacitiv Q trækkes fra hinanden."},
        }},
        {"QX", "Finder den reaktive effekt i en ren spole eller kondensator ud fra spændingen over den – fx når en kompenseringskondensator skal vælges.", {
            {"Q", "Den reaktive effekt i komponenten, i VAr eller kVAr."},
            {"U", "Spændingen direkte over spolen eller kondensatoren – ikke forsyningsspændingen, hvis der sidder andet i serie."},
            {"X", "Reaktansen af den samme komponent: X<sub>L</sub> for en spole, X<sub>C</sub> for en kondensator."},
        }},
        {"QUI", "Finder den reaktive effekt i en spole eller kondensator ud fra spændingen over den og strømmen igennem den.", {
            {"Q", "Reaktiv effekt. For en spole og en kondensator i samme kreds har den modsat fortegn."},
            {"UL", "Spændingen over selve spolen eller kondensatoren – ikke over hele kredsen."},
            {"I", "Strømmen gennem komponenten; i en serieforbindelse den samme overalt."},
        }},
        {"pRL", "Lægger grenstrømmene sammen i en parallelforbindelse af modstand og spole. De er 90° forskudt, så de lægges sammen som i en retvinklet trekant.", {
            {"I", "Strømmen i tilledningen – hypotenusen i strømtrekanten. Den er mindre end I<sub>R</sub> + I<sub>L</sub>."},
            {"I_R", "Strømmen i den ohmske gren, i fase med spændingen."},
            {"I_L", "Strømmen i spolegrenen. Den er den reaktive del af den samlede strøm."},
        }},
        {"pRC", "Lægger grenstrømmene sammen for modstand og kondensator i parallel. Strømmene står vinkelret på hinanden, så summen findes med Pythagoras.", {
            {"I", "Den samlede strøm fra forsyningen – hypotenusen i strømtrekanten."},
            {"I_R", "Den aktive strøm gennem modstanden; den ligger i fase med spændingen."},
            {"I_C", "Strømmen gennem kondensatoren. Den vokser med både kapacitet og frekvens."},
        }},
        {"pRLC", "Finder den samlede strøm, når modstand, spole og kondensator sidder parallelt – princippet i kompensering, hvor kondensatoren modvirker motorens spolestrøm.", {
            {"I", "Strømmen i tilledningen. Med en passende kondensator bliver den mindre end før – det er hele pointen med kompensering."},
            {"I_R", "Den aktive strøm, der giver den nyttige effekt. Den ændres ikke af kompenseringen."},
            {"I_L", "Den induktive strøm, fx magnetiseringsstrømmen til en motor eller en drossel."},
            {"I_C", "Kondensatorens strøm. Er den lige så stor som I<sub>L</sub>, er der parallelresonans, og I = I<sub>R</sub>."},
        }},
        {"pcos", "Finder effektfaktoren i en parallelforbindelse ud fra strømtrekanten – den aktive strøm i forhold til den samlede.", {
            {"cosphi", "Et tal mellem 0 og 1. I en parallelforbindelse er det strømmene, ikke spændingerne, der giver vinklen."},
            {"I_R", "Den del af strømmen, der er i fase med spændingen og giver nyttig effekt: P = U · I<sub>R</sub>."},
            {"I", "Den samlede strøm i tilledningen, som tangamperemeteret viser."},
        }},
        {"reson", "Finder den frekvens, hvor spolens og kondensatorens reaktans er lige store – bruges i filtre og forklarer resonansproblemer ved kompensering.", {
            {"f", "Ligger resultatet tæt på 50 Hz eller en overharmonisk frekvens (fx 250 Hz), kan der opstå meget store strømme eller spændinger."},
            {"L", "Spolens induktans i henry. Skriv m for milli, fx 100m for 100 mH."},
            {"C", "Kondensatorens kapacitet i farad. Skriv u for mikro, fx 47u for 47 µF."},
        }},
    };
}
// clang-format on

} // namespace fl::help
