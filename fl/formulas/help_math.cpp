// Explanations for the mathematics families: right-angled triangles and
// trigonometry, areas, polygons, circles and vectors, tied to the trade where
// an electrician actually meets them.
#include "fl/formulas/help_blocks.h"

namespace fl::help {

// clang-format off
std::vector<FamilyHelp> mathBlocks() {
    return {
        {"pyth", "Finder en side i en retvinklet trekant ud fra de to andre. Bruges til impedans-, spændings- og effekttrekanter og til skrå kabelføringer.", {
            {"c", "Den længste side, over for den rette vinkel. Den er altid længere end hver af de to andre."},
            {"a", "En af de to sider, der danner den rette vinkel, fx den vandrette afstand, et kabel skal føres."},
            {"b", "Den anden side ved den rette vinkel, fx højdeforskellen. Alle tre sider skal have samme enhed."},
        }},
        {"sinV", "Sammenhængen mellem en vinkel og siderne i en retvinklet trekant – fx φ ud fra Q og S i effekttrekanten.", {
            {"V", "En af de spidse vinkler, i grader. Søger du vinklen, kommer svaret mellem 0° og 90°."},
            {"mod", "Kateten lige over for vinklen V. I effekttrekanten er det Q, når vinklen er φ."},
            {"hyp", "Den længste side, over for den rette vinkel. I effekttrekanten er det S."},
        }},
        {"cosV", "Bruges, når du kender siden ved vinklen og hypotenusen – det er samme sammenhæng som cos φ = P / S og cos φ = R / Z.", {
            {"V", "Den spidse vinkel, der regnes med, i grader – ikke den rette vinkel."},
            {"hos", "Kateten, der sammen med hypotenusen danner vinklen V. I modstandstrekanten er det R."},
            {"hyp", "Den længste side. I modstandstrekanten svarer den til Z."},
        }},
        {"tanV", "Finder en vinkel eller en katete, når hypotenusen ikke kendes – fx φ ud fra Q og P, eller hældningen på en kabelbakke.", {
            {"V", "Vinklen mellem den hosliggende katete og hypotenusen, i grader. Ved 45° er de to kateter lige lange."},
            {"mod", "Kateten over for vinklen, fx stigningen på en kabelbakke eller Q i effekttrekanten."},
            {"hos", "Kateten, der ligger op ad vinklen, fx den vandrette længde eller P i effekttrekanten."},
        }},
        {"t45", "Den halve kvadrat: en retvinklet trekant med to lige lange kateter – fx diagonalen i et kvadratisk skab eller en 45°-bøjning på et rør.", {
            {"y", "Den lange side over for den rette vinkel, √2 ≈ 1,414 gange en katete."},
            {"x", "En af de to lige lange sider ved den rette vinkel."},
        }},
        {"t30h", "Den halve ligesidede trekant: hypotenusen er præcis dobbelt så lang som den korteste katete, så du slipper for sinus og cosinus.", {
            {"c", "Den længste side, over for 90°-vinklen."},
            {"a", "Kateten over for 30°-vinklen – den korteste side i trekanten."},
        }},
        {"t30l", "Kateterne i en 30°-60°-90°-trekant forholder sig som √3 – samme faktor, der i trefasenettet fører fra 230 V til 400 V, fordi vektordiagrammet bygger på denne trekant.", {
            {"b", "Kateten over for 60°-vinklen, √3 ≈ 1,732 gange den korteste."},
            {"a", "Kateten over for 30°-vinklen; den er halvt så lang som hypotenusen."},
        }},
        {"triA", "Arealet af enhver trekant, når en side og højden på den kendes – fx en trekantet gavl eller plade.", {
            {"A", "Arealet i kvadratet af længdeenheden: regner du i m, får du m²."},
            {"h", "Den vinkelrette afstand fra grundlinjen op til det modsatte hjørne – ikke en skrå side."},
            {"g", "Den side, højden står vinkelret på. Den skal have samme enhed som h."},
        }},
        {"triS", "Trekantens areal ud fra to sider og vinklen mellem dem, når højden ikke er kendt.", {
            {"A", "Arealet i den kvadrerede enhed af siderne, fx cm², når siderne er i cm."},
            {"a", "Den ene af de to sider, der mødes i vinklen C."},
            {"b", "Den anden side, der danner vinklen C sammen med a."},
            {"C", "I grader. Ved 90° er sin C = 1, og formlen bliver ½ · a · b som for en retvinklet trekant."},
        }},
        {"heron", "Trekantens areal ud fra de tre sider alene – praktisk, når et trekantet felt er målt op med målebånd, og ingen vinkler kendes.", {
            {"A", "Arealet. Kommer der intet svar, passer siderne ikke sammen: den længste skal være kortere end de to andre tilsammen."},
            {"a", "Første side. Alle tre sider skal være målt i samme enhed."},
            {"b", "Anden side, i samme enhed som a. Rækkefølgen af siderne er ligegyldig."},
            {"c", "Tredje side. Sammen med a og b giver den den halve omkreds s = (a + b + c) / 2."},
        }},
        {"trap", "Arealet af en firkant med to parallelle sider – fx et skråt tagfelt eller tværsnittet af en kabelkanal med skrå sider.", {
            {"A", "Arealet, i den kvadrerede længdeenhed."},
            {"h", "Den vinkelrette afstand mellem de to parallelle sider."},
            {"a", "Den ene parallelle side. Gennemsnittet af a og b gange h giver arealet."},
            {"b", "Den anden parallelle side. Det er ligegyldigt, hvilken af de to der er længst."},
        }},
        {"paral", "Arealet af en firkant, hvor de modstående sider er parallelle – et »skævt rektangel«.", {
            {"A", "Arealet – det samme som for et rektangel med samme grundlinje og højde."},
            {"h", "Den vinkelrette afstand mellem grundlinjen og den modsatte side – ikke længden af den skrå side."},
            {"g", "En af siderne; højden måles vinkelret på den."},
        }},
        {"rect", "Arealet af en rektangulær flade – fx gulvarealet i et rum, en tavlefront eller tværsnittet af en kabelkanal.", {
            {"A", "Arealet, fx m², når siderne er i meter. 1 m² = 10 000 cm²."},
            {"a", "Den ene side, fx rummets længde."},
            {"b", "Den anden side, fx bredden. Omregn til samme enhed som a, før du ganger."},
        }},
        {"rhomb", "Arealet af en rombe – en firkant med fire lige lange sider – når de to diagonaler kendes.", {
            {"A", "Arealet – halvdelen af det rektangel, diagonalerne udspænder."},
            {"d1", "Den ene diagonal, målt fra hjørne til modsat hjørne."},
            {"d2", "Den anden diagonal. Den skærer den første vinkelret på midten."},
        }},
        {"square", "Arealet af et kvadrat – eller omvendt siden i et kvadrat med et givet areal, fx en kvadratisk udsparing.", {
            {"A", "Siden i anden potens. Kvadratroden af arealet giver siden igen."},
            {"a", "Længden af én side; alle fire er lige lange."},
        }},
        {"polyV", "Finder vinklen i hvert hjørne af en regulær mangekant, fx en sekskantet møtrik eller en ottekantet mast.", {
            {"V", "Den indvendige vinkel i ét hjørne, i grader. En regulær sekskant har 120° i hvert hjørne."},
            {"n", "Antal sider (og hjørner), mindst 3. En trekant giver 60°, en firkant 90°."},
        }},
        {"polyS", "Summen af alle indvendige vinkler i en mangekant, også en uregelmæssig – godt til at kontrollere opmålte vinkler.", {
            {"Vs", "Alle hjørnernes vinkler lagt sammen: trekant 180°, firkant 360°, og hver ekstra kant giver 180° mere."},
            {"n", "Antal kanter – et helt tal, mindst 3."},
        }},
        {"polyA", "Arealet af en regulær mangekant ud fra antal kanter og sidelængde, fx et sekskantet fundament.", {
            {"A", "Arealet, i den kvadrerede enhed af sidelængden."},
            {"n", "Hvor mange lige lange sider figuren har, fx 6 for en sekskant."},
            {"x", "Længden af én side; i en regulær polygon er de alle lige lange."},
        }},
        {"circO", "Finder omkredsen af en cirkel, fx hvor meget kabel der går til én vinding på en kabeltromle.", {
            {"O", "Længden hele vejen rundt – lidt over 3 gange diameteren."},
            {"r", "Afstanden fra centrum ud til kanten – den halve diameter."},
        }},
        {"circA", "Finder arealet af en cirkel ud fra radius – fx et rundt hul i en tavlefront eller en leders tværsnit.", {
            {"A", "Arealet i den kvadrerede enhed; r i mm giver mm²."},
            {"r", "Den halve diameter. Har du målt diameteren, er formlen med d nemmere."},
        }},
        {"circAd", "Cirklens areal ud fra diameteren, som er det, man måler med skydelære – fx en leders tværsnit i mm².", {
            {"A", "Arealet. Med d i mm får du mm², samme enhed som kablets tværsnit."},
            {"d", "Den største afstand tværs over cirklen, gennem centrum. Dobbelt diameter giver fire gange areal."},
        }},
        {"arc", "Finder længden af en bue på en cirkel, fx kabellængden i en bøjning eller rundt om en del af en tromle.", {
            {"b", "Længden målt langs buen – ikke den lige linje mellem endepunkterne."},
            {"d", "Diameteren af den cirkel, buen er en del af, i samme enhed som b."},
            {"V", "Centervinklen, buen spænder over, i grader. 360° giver hele omkredsen π · d."},
        }},
        {"sector", "Arealet af et »lagkagestykke« af en cirkel, afgrænset af to radier og en bue.", {
            {"A", "Arealet af udsnittet. Ved 360° er det hele cirklens areal."},
            {"r", "Cirklens radius – længden af udsnittets to lige sider."},
            {"V", "Vinklen mellem de to radier, i grader."},
        }},
        {"segment", "Arealet mellem en korde og buen – fx den del af tværsnittet af et liggende rundt rør, der er fyldt op til en vis højde.", {
            {"A", "Arealet af afsnittet: udsnittet minus trekanten mellem de to radier."},
            {"r", "Radius i den cirkel, afsnittet er skåret af."},
            {"V", "Centervinklen mellem radierne til kordens endepunkter, i grader. Ved 180° er afsnittet en halvcirkel."},
        }},
        {"vecL", "Finder længden af en vektor ud fra dens vandrette og lodrette del – fx den samlede strøm ud fra den aktive og den reaktive strøm.", {
            {"v", "Vektorens størrelse uden retning – hypotenusen i en retvinklet trekant."},
            {"x", "Den vandrette del; i et vektordiagram fx den aktive del, der er i fase med spændingen."},
            {"y", "Den lodrette del; i et vektordiagram fx den reaktive del, der er 90° forskudt."},
        }},
        {"vecX", "Finder den vandrette del af en vektor ud fra længde og vinkel – fx den aktive strøm I · cos φ.", {
            {"x", "Den vandrette del af vektoren. Den bliver negativ, når vinklen ligger mellem 90° og 270°."},
            {"v", "Vektorens længde, fx strømmens eller spændingens effektværdi i vektordiagrammet."},
            {"V", "Vinklen målt fra den vandrette akse mod uret, i grader."},
        }},
        {"vecY", "Finder den lodrette del af en vektor ud fra længde og vinkel – fx den reaktive strøm I · sin φ.", {
            {"y", "Den lodrette del af vektoren. Den er negativ under den vandrette akse, dvs. ved vinkler mellem 180° og 360°."},
            {"v", "Vektorens længde – altid positiv."},
            {"V", "Vinklen fra den vandrette akse mod uret, i grader. Ved 90° peger hele vektoren lodret op."},
        }},
    };
}
// clang-format on

} // namespace fl::help
