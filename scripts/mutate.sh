#!/usr/bin/env bash
# Breaks the core on purpose, one mutant at a time, and records which tests
# notice: a sign, a comparison, a rounding rule, a store key. Each mutant
# rebuilds only the test executables named beside it, so a run stays within
# a few minutes of two cores. Not part of `make test`.
#   scripts/mutate.sh [NAME...]     (default: every mutant; BUILD=build)
# Prints a Markdown table: mutant, file:line, the tests that failed.
set -euo pipefail
cd "$(dirname "$0")/.."
root=$PWD
build=${BUILD:-build}
[ -f "$build/CMakeCache.txt" ] || cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null

# name @@ file @@ text as it stands @@ text of the mutant @@ test executables
mutants=$(
    cat <<'EOF'
capacitor-reactance-sign@@fl/circuit/forward.cpp@@z = Cx(0.0, -1.0 / (omega * in[it.value]));@@z = Cx(0.0, 1.0 / (omega * in[it.value]));@@circuit_test
reactive-current-side@@fl/circuit/forward.cpp@@std::sin(Zt.imag() < 0.0 ? -phi : phi)@@std::sin(Zt.imag() > 0.0 ? -phi : phi)@@circuit_test
parallel-adds-impedances@@fl/circuit/forward.cpp@@y += cdiv(one, w.z[plan.kids[k]]);@@y += w.z[plan.kids[k]];@@circuit_test
ac-power-i-not-squared@@fl/circuit/forward.cpp@@plan.isAc ? i * i * z.real()@@plan.isAc ? i * z.real()@@circuit_test
engineering-bound-off-by-one@@fl/expr/numbers.cpp@@(a < 0.001 || a >= 1e7)@@(a < 0.001 || a > 1e7)@@fl_expr_test
book-rounding-three-decimals@@fl/expr/numbers.cpp@@chars::printF(value, 2)@@chars::printF(value, 3)@@fl_expr_test
hyphen-for-minus@@fl/expr/numbers.cpp@@s.replace(0, 1, "−")@@s.replace(0, 1, "-")@@fl_expr_test
zero-reaches-pico@@fl/expr/numbers.cpp@@if (std::fabs(value) < 1e-12) value = 0.0;@@if (std::fabs(value) <= 1e-12) value = 0.0;@@fl_expr_test
typed-micro-shown-as-u@@fl/expr/calc.cpp@@prefix == u"u" ? std::string("µ")@@prefix == u"u" ? std::string("u")@@fl_expr_test
reciprocal-multiplies-down@@fl/expr/node.cpp@@                    coef *= q;@@                    coef /= q;@@fl_expr_test
append-shares-one-offset@@fl/expr/markup.cpp@@(html[p] == 'f' ? figOffset : mathOffset)@@(figOffset)@@fl_expr_test sheet_test
book-page-without-book@@fl/expr/markup.cpp@@(number ? "formelsamlingen s. " + s.page : s.page)@@(s.page)@@fl_expr_test
negative-number-not-loose@@fl/expr/render.cpp@@(n->kind == NodeKind::Num && n->value < 0)@@(n->kind == NodeKind::Num && n->value > 0)@@fl_expr_test
engineering-base-bare@@fl/expr/render.cpp@@renderNum(*b).find("·10") == std::string::npos;@@true;@@fl_expr_test
isolate-negative-term@@fl/expr/isolate.cpp@@rest.push_back({-1, other});@@rest.push_back({1, other});@@fl_expr_test
isolate-divides-by-multiplier@@fl/expr/isolate.cpp@@side.push_back({'/', n});@@side.push_back({'*', n});@@fl_expr_test
acos-radians@@fl/expr/eval.cpp@@return std::acos(x) / kDeg;@@return std::acos(x) * kDeg;@@fl_expr_test
sine-in-radians@@fl/expr/eval.cpp@@if (name == "sin") return std::sin(x * kDeg);@@if (name == "sin") return std::sin(x);@@fl_expr_test
log-natural@@fl/expr/eval.cpp@@if (name == "log") return std::log10(x);@@if (name == "log") return std::log(x);@@fl_expr_test
division-read-as-product@@fl/expr/parser.cpp@@factors.push_back({op, parsePower(p)});@@factors.push_back({'*', parsePower(p)});@@fl_expr_test
power-left-associative@@fl/expr/parser.cpp@@exponent = parsePower(p);@@exponent = parsePrimary(p);@@fl_expr_test
prefix-remark-range@@fl/formulas/solve.cpp@@mag >= 0.1 && mag < 10000@@mag >= 0.1 && mag < 1000@@solve_test
target-kept-as-given@@fl/formulas/solve.cpp@@std::isnan(it->second) || it->first == target ? values.erase(it)@@std::isnan(it->second) ? values.erase(it)@@solve_test
check-tolerance-tenfold@@fl/formulas/solve.cpp@@constexpr double kCheckTolerance = 1e-6;@@constexpr double kCheckTolerance = 1e-5;@@solve_test
too-large-read-as-unreadable@@fl/formulas/fields.cpp@@(tooLarge(texts.at(s)) ? large : bad)@@(tooLarge(texts.at(s)) ? bad : large)@@formulas_pages_test
recent-keeps-four@@fl/formulas/home.cpp@@if (out.size() == 3) break;@@if (out.size() == 4) break;@@formulas_pages_test
home-hint-without-profile@@fl/formulas/home.cpp@@" (profil: " + s.profileLabel + ")"@@""@@formulas_pages_test
closed-subject-counted-open@@fl/formulas/finderview.cpp@@        if (isOpen(open, route)) return false;@@        if (isOpen(open, route) || true) return false;@@formulas_pages_test
single-phase-drop-one-way@@fl/tools/drop.cpp@@"dU_f*2"@@"dU_f*1"@@fl_tools_test
cable-exact-section-skipped@@fl/tools/cable.cpp@@if (list[i] >= qmin - kSnap)@@if (list[i] > qmin + kSnap)@@fl_tools_test
ik-max-without-root-three@@fl/tools/shortcircuit.cpp@@"U_N/(sqrt(3)*Ik_fr)"@@"U_N/Ik_fr"@@fl_tools_test
ik-min-cable-cold@@fl/tools/shortcircuit.cpp@@"l_stik/1000*R_lstik*2*k_v"@@"l_stik/1000*R_lstik*2"@@fl_tools_test
ik-min-trip-verdict-inverted@@fl/tools/shortcircuit.cpp@@bg >= trip.value - kEdge@@bg <= trip.value - kEdge@@fl_tools_test
drop-percent-of-wrong-voltage@@fl/tools/drop.cpp@@"dU_n*100/U_N"@@"dU_n*100/(U_N/sqrt(3))"@@fl_tools_test
drop-lighting-limit-four@@fl/tools/drop.cpp@@forsyningssystem", 3, 5}@@forsyningssystem", 4, 5}@@fl_tools_test
cable-metals-swapped@@fl/tools/tables.cpp@@return aluminium ? alu[i] : copper[i];@@return aluminium ? copper[i] : alu[i];@@fl_tools_test
cable-reactance-section-below@@fl/tools/tables.cpp@@return t.x[static_cast<size_t>(i)];@@return t.x[static_cast<size_t>(i > 0 ? i - 1 : 0)];@@fl_tools_test
motor-slip-over-rotor-speed@@fl/tools/motor.cpp@@"(n_s-nr)/n_s*100"@@"(n_s-nr)/nr*100"@@fl_tools_test
compensation-target-angle-ignored@@fl/tools/compensation.cpp@@{"VAr", "P*tan(phi2)", "Q2"}@@{"VAr", "P*tan(phi1)", "Q2"}@@fl_tools_test
delta-phase-current-times-root-three@@fl/tools/threephase.cpp@@"I_N/sqrt(3)"@@"I_N*sqrt(3)"@@fl_tools_test
eseries-nearest-by-difference@@fl/tools/eseries.cpp@@const double distance = std::fabs(std::log(ohms / c));@@const double distance = std::fabs(ohms - c);@@fl_tools_test
eseries-above-neighbour-the-last@@fl/tools/eseries.cpp@@if ((c >= ohms || same(c, ohms)) && std::isnan(*above)) *above = c;@@if (c >= ohms || same(c, ohms)) *above = c;@@fl_tools_test
colour-silver-multiplier-a-tenth@@fl/tools/eseries.cpp@@{"solv", "sølv", "#b9bdc3", -1, -2, 10, -1}@@{"solv", "sølv", "#b9bdc3", -1, -1, 10, -1}@@fl_tools_test
resistors-drawn-past-the-limit@@fl/tools/restotal.cpp@@if (n > (parallel ? kDrawnInParallel : kDrawnInSeries)) return {};@@if (false) return {};@@fl_tools_test
vector-straight-back-as-minus-180@@fl/tools/vectors.cpp@@return a <= -180 ? a + 360 : a;@@return a < -180 ? a + 360 : a;@@fl_tools_test
units-kwh-factor-a-tenth@@fl/tools/units.cpp@@{"kWh", "kWh", "kWh", 3.6e6},@@{"kWh", "kWh", "kWh", 3.6e5},@@fl_tools_test
triangle-leg-by-sine@@fl/tools/triangle.cpp@@{"a", "b*tan(A)", "tan A = a / b", "25"}@@{"a", "b*sin(A)", "tan A = a / b", "25"}@@fl_tools_test
machine-figure-found-not-accented@@fl/tools/machinefigs.cpp@@v.found.count(key) ? "hl" : ""@@v.found.count(key) ? "" : ""@@fl_tools_test
store-failed-temporary-left@@store/datastore.cpp@@if (!ok) ::unlink(tmp.c_str());@@if (!ok) {}@@datastore_test
store-damaged-copy-overwritten@@store/datastore.cpp@@if (std::filesystem::exists(copy, ec) || ec) continue;@@if (ec) continue;@@datastore_test
net-status-500-an-answer@@net/http.cpp@@if (status >= 500)@@if (status > 500)@@net_client_test
net-untrusted-peer-unexplained@@net/http.cpp@@case CURLE_PEER_FAILED_VERIFICATION:@@case CURLE_ABORTED_BY_CALLBACK:@@net_client_test
net-usage-sent-every-start@@net/reports.cpp@@counted && now - last > kUsageEverySeconds@@counted@@net_test
usage-sent-at-exactly-twenty-hours@@net/reports.cpp@@now - last > kUsageEverySeconds@@now - last >= kUsageEverySeconds@@net_test
crash-record-deleted-unsent@@net/reports.cpp@@if (call(poster, path::Telemetry, request).outcome == 1) std::filesystem::remove@@call(poster, path::Telemetry, request); std::filesystem::remove@@net_test
telemetry-consent-by-default@@net/reports.cpp@@if (!storeGet(key::Telemetry).asBool(false))@@if (!storeGet(key::Telemetry).asBool(true))@@net_test
usage-reset-after-failed-send@@net/reports.cpp@@request).outcome == 1) {@@request).outcome >= 0) {@@net_test
usage-counted-meanwhile-lost@@net/reports.cpp@@if (rest > 0) left[page] = Json(rest);@@(void)rest;@@net_test
lock-exact-key-matched-by-prefix@@net/locks.cpp@@if (prefix || k == key) return topic.id;@@if (prefix || key.compare(0, k.size(), k) == 0) return topic.id;@@net_test
lock-calculators-not-first@@net/locks.cpp@@if (off.count(fl::route::Calculators)) return@@if (false) return@@net_test
profile-label-renamed@@net/locks.cpp@@return "Kun jævnstrøm";@@return "Kun jævnstrøm.";@@net_test app_test
small-tools-group-without-colours@@fl/formulas/lists.cpp@@{"enheder", "farve", "energi", "tri", "vec"}@@{"enheder", "energi", "tri", "vec"}@@net_test pages_test
tools-group-without-demonstration@@fl/formulas/lists.cpp@@          "acdemo"},@@          "acdemox"},@@net_test pages_test
lock-change-opened-as-closed@@net/locks.cpp@@if (was && !is) change.opened.push_back(topic.name);@@if (!was && is) change.opened.push_back(topic.name);@@net_test
job-version-after-unreachable@@net/job.cpp@@const bool unreachable = !code.empty() && result.outcome == 0;@@const bool unreachable = false;@@net_client_test
stats-sent-every-check-in@@net/job.cpp@@if (now - storeGet(key::ClassStatsLast).asNumber(0) < kStatsEverySeconds) return;@@@@net_client_test
stats-sent-on-refresh@@net/job.cpp@@if (!in.force && in.classSummary)@@if (in.classSummary)@@net_client_test
same-version-offered@@net/job.cpp@@!v.empty() && v != kVersion@@!v.empty()@@net_client_test
version-only-with-a-class@@net/job.cpp@@if (result.outcome != -1 && !unreachable) {@@if (result.outcome == 1 && !unreachable) {@@net_client_test
service-refusal-unread@@net/api.cpp@@reply.text = reply.body.at("error").asString();@@reply.text = reply.body.has("error") ? "Fejl." : "";@@net_client_test class_pages_test
task-seen-list-ignored@@net/tasks.cpp@@if (!old.count(id) && !seen.has(id))@@if (!old.count(id))@@net_client_test
task-fetch-failure-remembered@@net/tasks.cpp@@if (reply.outcome != 1) return {};@@if (false) return {};@@net_client_test
store-unreadable-file-not-set-aside@@store/datastore.cpp@@if (read == ReadResult::Failed || !text.empty())@@if (!text.empty())@@datastore_test
empty-data-file-set-aside@@store/datastore.cpp@@if (read == ReadResult::Failed || !text.empty()) damagedCopy_@@if (true) damagedCopy_@@datastore_test
load-keeps-unprefixed-members@@store/datastore.cpp@@if (hasPrefix(key) && value.isString()) entries_[key]@@if (value.isString()) entries_[key]@@datastore_test
load-keeps-non-string-members@@store/datastore.cpp@@if (hasPrefix(key) && value.isString()) entries_[key]@@if (hasPrefix(key)) entries_[key]@@datastore_test
store-flat-form-dropped@@store/datastore.cpp@@fillFrom(doc.has("data") ? doc.at("data") : doc);@@fillFrom(doc.at("data"));@@datastore_test
bundle-data-not-checked@@store/datastore.cpp@@|| !doc.at("data").isObject()) return false;@@) return false;@@datastore_test
json-object-nesting-one-deeper@@store/json.cpp@@Json object(int depth) {@@Json object(int depth) { --depth;@@json_test
check-in-message-id-of-text@@server/api.cpp@@b["classMsgId"] = Json(cls->messageId);@@b["classMsgId"] = Json(cls->message);@@server_test net_client_test
check-in-stats-always-on@@server/api.cpp@@b["classStats"] = Json(cls->stats);@@b["classStats"] = Json(true);@@server_test net_client_test
refetch-refuses-a-list@@net/tasks.cpp@@if (!reply.body.at("tasks").isArray()) {@@if (reply.body.at("tasks").isArray()) {@@net_client_test
tasks-fetched-every-check-in@@net/tasks.cpp@@if (storeGet(key::TasksUpdated).asNumber(0) == updated) return {};@@@@net_client_test
answer-sent-without-name@@net/tasks.cpp@@if (name.empty()) {@@if (false) {@@net_client_test
api-array-request-accepted@@server/api.cpp@@if (!Json::tryParse(body, request) || !request.isObject())@@if (!Json::tryParse(body, request))@@server_test
class-code-case-kept@@server/api.cpp@@out += (ch >= 'a' && ch <= 'z') ? static_cast<char>(ch - 'a' + 'A') : ch;@@out += ch;@@server_test net_client_test
class-stats-keep-the-code@@server/api.cpp@@summary.obj.erase("key");@@@@net_client_test
answer-limit-raised@@server/api.cpp@@constexpr size_t kMaxAnswer = 4000;@@constexpr size_t kMaxAnswer = 4001;@@server_test
empty-answer-refused@@server/api.cpp@@!text(c.request, "answer", a.answer, reply, false))@@!text(c.request, "answer", a.answer, reply))@@server_test
own-ticks-overridden-by-preset@@server/classroom.cpp@@(ticks == old && presetOff != old)@@(presetOff != old)@@server_test
impossible-topic-rows-counted@@server/classroom.cpp@@right >= 0 && right <= total &&@@right >= 0 &&@@server_test
level-strong-above-85@@server/classroom.cpp@@if (share < 0.85)@@if (share <= 0.85)@@server_test
reports-page-open-to-teachers@@server/web.cpp@@if (std::find(admins.begin(), admins.end(), s.teacher.email) == admins.end())@@if (false)@@server_web_test
store-prefix@@store/datastore.cpp@@const std::string kPrefix = "fs_";@@const std::string kPrefix = "fx_";@@datastore_test
save-written-in-place@@store/datastore.cpp@@const std::filesystem::path tmp = fsPath(path_ + ".tmp");@@const std::filesystem::path tmp = fsPath(path_);@@datastore_test
store-unmoved-temporary-left@@store/datastore.cpp@@std::filesystem::remove(tmp, ec);@@ec.clear();@@datastore_test
failed-load-forgets-memory@@store/datastore.cpp@@if (read == ReadResult::Missing || read == ReadResult::NotAFile) return false;@@entries_.clear(); if (read == ReadResult::Missing || read == ReadResult::NotAFile) return false;@@datastore_test
bundle-date-month-first@@store/datastore.cpp@@std::to_string(leadingInt(iso, 8))@@std::to_string(leadingInt(iso, 5))@@datastore_test
bundle-counts-every-member@@store/datastore.cpp@@if (hasPrefix(key) && value.isString()) ++count;@@++count;@@datastore_test
import-not-saved@@store/datastore.cpp@@fillFrom(doc.at("data"));@@fillFrom(doc.at("data")); return true;@@datastore_test
unparsable-value-read-as-null@@store/datastore.cpp@@if (!Json::tryParse(text, value)) return fallback;@@Json::tryParse(text, value);@@datastore_test
get-string-of-a-number@@store/datastore.cpp@@return value.isString() ? value.str : fallback;@@return value.isString() ? value.str : Json::dump(value);@@datastore_test
json-escapes-space@@store/json.cpp@@if (c >= 0x20 && c != '"'@@if (c > 0x20 && c != '"'@@json_test
json-leading-zero-counted@@store/json.cpp@@if (seenNonZero) ++lead;@@++lead;@@json_test
json-array-nesting-one-deeper@@store/json.cpp@@Json array(int depth) {@@Json array(int depth) { --depth;@@json_test
json-last-duplicate-ignored@@store/json.cpp@@o.obj[std::move(key)] = value(depth);@@o.obj.emplace(std::move(key), value(depth));@@json_test
json-surrogate-low-half-dropped@@store/json.cpp@@cp = 0x10000 + ((cp - 0xD800) << 10) + (lo - 0xDC00);@@cp = 0x10000 + ((cp - 0xD800) << 10);@@json_test
json-whole-written-to-1e15@@store/json.cpp@@if (std::fabs(v) < 1e15 && v == std::trunc(v))@@if (std::fabs(v) <= 1e15 && v == std::trunc(v))@@json_test
json-shortest-form-skipped@@store/json.cpp@@for (int p = 1; p <= 17; ++p)@@for (int p = 17; p <= 17; ++p)@@json_test
json-no-blank-after-colon@@store/json.cpp@@out += indent > 0 ? ": " : ":";@@out += ":";@@json_test datastore_test
json-tab-raw@@store/json.cpp@@out += "\\t";@@out += "\t";@@json_test
recent-key-renamed@@store/keys.h@@Recent[] = "recent";@@Recent[] = "recents";@@app_test
practice-stats-key-renamed@@store/keys.h@@OvStats[] = "ov_stats";@@OvStats[] = "ov_stat";@@practice_test
ac-circuit-key-renamed@@store/keys.h@@KredsAc[] = "kreds_ac";@@KredsAc[] = "kreds_vs";@@circuit_test
recent-list-seven@@app/shell/visits.cpp@@kRecentMax = 6;@@kRecentMax = 7;@@app_test
home-recorded-as-recent@@app/shell/visits.cpp@@if (route != fl::route::Home) storeSet(key::Recent@@storeSet(key::Recent@@app_test
locked-page-recorded-in-recent@@app/shell/visits.cpp@@if (route == fl::route::Locked) return;@@if (false) return;@@app_test
calculators-open-formula-finder@@app/shell/routes.cpp@@return new FinderPage(1, h);@@return new FinderPage(0, h);@@app_test pages_test
formula-refusal-kept-on-enter@@app/pages/formulas/formulapage.cpp@@    if (refused) {@@    if (false) {@@pages_test
formula-back-link-names-swapped@@app/pages/formulas/formulapage.cpp@@from == QLatin1String(fl::route::Finder) ? QStringLiteral("Formelfinder")@@from == QLatin1String(fl::route::Calculators) ? QStringLiteral("Formelfinder")@@pages_test
formula-answer-not-in-strip@@app/pages/formulas/formulapage.cpp@@host->addResult(QString::fromStdString(fl::symbolDisplay(target)), solved,@@if (false) host->addResult(QString::fromStdString(fl::symbolDisplay(target)), solved,@@pages_test
formula-unreadable-field-unmarked@@app/pages/formulas/formulapage.cpp@@f->setInvalid(true);@@f->setInvalid(false);@@pages_test
busy-cursor-left-on@@app/pages/formulas/formulapage.cpp@@    QApplication::restoreOverrideCursor();@@    (void)0;@@pages_test
capacitor-step-wrong-page@@fl/circuit/steps.cpp@@"15", n);@@"16", n);@@circuit_test circuit_sheets_test
rounding-band-three-percent@@fl/circuit/sheets/regneark.cpp@@if (rel < 0.01)@@if (rel < 0.03)@@circuit_sheets_test
guide-points-at-the-next-step@@fl/circuit/sheets/guide.cpp@@where = "fra trin " + std::to_string(it->second);@@where = "fra trin " + std::to_string(it->second + 1);@@circuit_sheets_test
guide-shows-the-worked-rows@@fl/circuit/sheets/guide.cpp@@return "<table class=\"eqs\">" + stepHtml.substr(row, rowEnd + 5 - row) + "</table>";@@return stepHtml.substr(table, stepHtml.find("</table>", table) + 8 - table);@@circuit_sheets_test
why-whole-circuit-key-unmatched@@fl/circuit/sheets/why.cpp@@{"Ohms lov for hele kredsen",@@{"Ohms lov for hele kredsen!",@@circuit_sheets_test
capacitive-reactive-sum-not-turned@@fl/circuit/parallel_steps.cpp@@const bool negative = seen("X_tot") < 0.0 && !qCap.empty();@@const bool negative = false && !qCap.empty();@@circuit_sheets_test
labels-may-overlap@@fl/fig/place.cpp@@if (t.overlaps(spaced)) return false;@@if (false && t.overlaps(spaced)) return false;@@fig_test
figure-keeps-non-finite-elements@@fl/fig/canvas.cpp@@        if (!std::isfinite(v)) return false;@@        if (false) return false;@@fig_test
kept-rectangle-turned@@fl/fig/canvas.cpp@@keep(Shape::Rect, {{x, y}, {w, h}}, cls, rx);@@keep(Shape::Rect, {{x, y}, {h, w}}, cls, rx);@@fig_test fl_tools_test app_test sheet_test
kept-bow-closed-as-a-sector@@fl/fig/canvas.cpp@@keep(Shape::Bow, {{cx, cy}}, cls, r, a0, a1);@@keep(Shape::Sector, {{cx, cy}}, cls, r, a0, a1);@@fig_test fl_tools_test app_test sheet_test
kept-text-anchors-swapped@@fl/fig/canvas.cpp@@a == "end" ? Shape::End : Shape::Start;@@a == "end" ? Shape::Start : Shape::End;@@fig_test fl_tools_test app_test sheet_test
kept-curve-closed@@fl/fig/canvas.cpp@@keep(Shape::Polyline, points, cls);@@keep(Shape::Polygon, points, cls);@@fig_test fl_tools_test app_test sheet_test
kept-text-without-halo@@fl/fig/canvas.cpp@@sh.halo = isHalo;@@sh.halo = false;@@fig_test fl_tools_test app_test sheet_test
svg-number-two-decimals@@fl/fig/style.cpp@@const double x = std::round(10.0 * v) / 10.0;@@const double x = std::round(100.0 * v) / 100.0;@@fig_test
tick-step-skips-two-and-a-half@@fl/fig/canvas.cpp@@for (double m : {1.0, 2.5, 5.0, 10.0})@@for (double m : {1.0, 5.0, 10.0})@@fig_test
parallel-rails-narrower@@fl/fig/schematic.cpp@@in.w += 44;@@in.w += 40;@@fig_test
group-frame-axis-higher@@fl/fig/schematic.cpp@@n.extent = {in.w + 16, in.h + 26, in.above + 18};@@n.extent = {in.w + 16, in.h + 26, in.above + 13};@@fig_test
current-scene-turned-the-wrong-way@@fl/fig/phasor.cpp@@const Cx turn = std::conj(u) / std::abs(u);@@const Cx turn = u / std::abs(u);@@fig_test
steep-triangle-drawn-true@@fl/fig/triangles.cpp@@return std::clamp(trueDeg, 30.0, 60.0);@@return std::clamp(trueDeg, 30.0, 90.0);@@fig_test
current-triangle-coil-up@@fl/fig/triangles.cpp@@t.upright = -Ib;@@t.upright = Ib;@@fig_test
sought-not-highlighted@@fl/fig/formulafig_parts.h@@return symbol == sought ? "hl" : "";@@return "";@@fig_test
finder-path-keeps-its-slash@@fl/formulas/finder.cpp@@        start = slash + 1;@@        start = slash;@@formulas_test formulas_pages_test
finder-counts-a-family-twice@@fl/formulas/finder.cpp@@if (seen.insert(k).second) out.push_back(k);@@out.push_back(k);@@formulas_test formulas_pages_test
finder-subjects-share-a-picture@@fl/formulas/finderview.cpp@@return it == subjects.end() ? std::string("finder") : it->second;@@return it == subjects.end() ? std::string("finder") : std::string("finder");@@formulas_pages_test pages_test
prefix-diagnosis-hundred@@fl/practice/judge.cpp@@c.push_back({f * 1000, "Dit svar@@c.push_back({f * 100, "Dit svar@@practice_test practice_pages_test
answer-tolerance-three-percent@@fl/practice/judge.h@@constexpr double kAnswerTolerance = 0.02;@@constexpr double kAnswerTolerance = 0.03;@@practice_test
practice-count-asked-fractional@@fl/practice/exercise.cpp@@if (isCount(target) && std::fabs(ex.facit - std::round(ex.facit)) > 1e-9 * ex.facit) return {};@@if (false) return {};@@practice_test
practice-ratio-above-one@@fl/practice/exercise.cpp@@return startsWith(symbol, "cosphi") || symbol == "eta";@@return symbol == "eta";@@practice_test
flashcard-box-four-eight-days@@fl/practice/cards.cpp@@{0, 1, 3, 7, 16}@@{0, 1, 3, 8, 16}@@practice_test
flashcard-almost-keeps-full-interval@@fl/practice/cards.cpp@@s.due = nowMs + boxDays(s.box) * kDayMs * 0.5;@@s.due = nowMs + boxDays(s.box) * kDayMs;@@practice_test
flashcard-wrong-back-five-later@@fl/practice/cards.cpp@@requeue(4);@@requeue(5);@@practice_test
flashcard-almost-requeued-every-time@@fl/practice/cards.cpp@@if (r.requeued.insert(key).second) requeue(6);@@r.requeued.insert(key); requeue(6);@@practice_test
flashcard-damaged-box-kept@@fl/practice/cards.cpp@@if (s.box < 1 || s.box > 5) s.box = 1;@@if (s.box < 1) s.box = 1;@@practice_test
exam-clock-runs-fast@@fl/practice/exam.cpp@@int64_t{exam.limitMinutes} * 60000 - (nowMs@@int64_t{exam.limitMinutes} * 59000 - (nowMs@@practice_test practice_more_test
worksheet-solution-heading-alone@@fl/practice/worksheet.cpp@@"<div class=\"pdf-next\"><h3 class=\"sh\">Løsning til opgave "@@"<div><h3 class=\"sh\">Løsning til opgave "@@practice_test practice_more_test
worksheet-exercise-split@@fl/practice/worksheet.cpp@@std::string html = "<div class=\"pdf-keep\"><div class=\"wsprob\">@@std::string html = "<div><div class=\"wsprob\">@@practice_test practice_more_test
exam-praise-from-89@@fl/practice/exam.cpp@@if (pct >= 90) return "Flot!@@if (pct >= 89) return "Flot!@@practice_test
text-problem-compensation-sign@@fl/practice/tekstscen.cpp@@"P*(tan(acos(cosphi1))-tan(acos(cosphi2)))"@@"P*(tan(acos(cosphi1))+tan(acos(cosphi2)))"@@practice_test
chain-near-miss-five-percent@@fl/tools/chain.cpp@@constexpr double kNearMiss = 0.03;@@constexpr double kNearMiss = 0.05;@@fl_tools_test
chain-conflict-called-near-miss@@fl/tools/chain.cpp@@rel, rel > kNearMiss,@@rel, rel < kNearMiss,@@fl_tools_test
transformer-load-voltage-divided@@fl/tools/transformer.cpp@@{"U_S", "I_S*R_B",@@{"U_S", "I_S/R_B",@@fl_tools_test
star-phase-voltage-equals-line@@fl/tools/threephase.cpp@@{"U_F", "U_N/sqrt(3)", "Stjerne@@{"U_F", "U_N", "Stjerne@@fl_tools_test
motor-exact-speed-loses-pole-pair@@fl/tools/motor.cpp@@std::floor(raw.value + kWhole)@@std::floor(raw.value - kWhole)@@fl_tools_test
motor-percent-efficiency-kept@@fl/tools/motor.cpp@@            eta /= 100;@@            eta /= 1;@@fl_tools_test
ac-reactive-power-with-cosine@@fl/tools/acseries.cpp@@{"VAr", "U*I*sin(phi)", "Q"}@@{"VAr", "U*I*cos(phi)", "Q"}@@fl_tools_test
ac-rounding-noise-called-reactive@@fl/tools/acseries.cpp@@if (!(std::fabs(X) > 1e-12 * std::max(std::fabs(Z), 1.0))) return "ohmsk";@@if (!(std::fabs(X) > 0)) return "ohmsk";@@fl_tools_test
resonance-band-doubled@@fl/tools/acdemo.cpp@@std::fabs(f / v.f0 - 1) <= kResonanceBand;@@std::fabs(f / v.f0 - 1) <= 2 * kResonanceBand;@@fl_tools_test
text-problem-cable-one-way@@fl/practice/tekstscen.cpp@@"rho*2*l/q", "RL"@@"rho*l/q", "RL"@@practice_test
text-problem-heater-one-phase@@fl/practice/tekstscen.cpp@@"3*U_F*I_F", "P"@@"U_F*I_F", "P"@@practice_test
class-summary-exam-under-key@@fl/practice/stats.cpp@@e.topic = topicName(e.topic);@@(void)e.topic;@@practice_test
stats-level-unmarked@@fl/practice/statsheet.cpp@@"</td><td><span class=\"lvl " + levelClass(level)@@"</td><td><span class=\"" + levelClass(level)@@practice_test practice_pages_test
circuit-exercise-values-unsaid@@fl/practice/circuitex.cpp@@. Komponenternes værdier står på tegningen.</p>@@.</p>@@practice_test practice_pages_test
unreadable-answer-unexplained@@fl/practice/judge.cpp@@return msgBox(std::string("Jeg kan ikke læse dit svar. Skriv et tal, fx 2,38") +@@return msgBox(std::string("Jeg kan ikke læse dit svar.") +@@practice_test practice_pages_test
level-weak-at-sixty@@fl/practice/stats.cpp@@if (share < 0.6) return Level::Weak;@@if (share <= 0.6) return Level::Weak;@@practice_test
weakest-first-unsmoothed@@fl/practice/stats.cpp@@return (wrong + 0.5) / (static_cast<double>(total) + 1);@@return (wrong + 0.0) / (static_cast<double>(total) + 1);@@practice_test
exams-keep-eleven@@fl/practice/stats.cpp@@constexpr size_t kMaxExams = 10;@@constexpr size_t kMaxExams = 11;@@practice_test
day-bars-tallest-100@@fl/practice/statsheet.cpp@@constexpr double kTallest = 110;@@constexpr double kTallest = 100;@@practice_test
worksheet-count-unchecked@@fl/practice/worksheet.cpp@@if (std::find(kWorksheetCounts.begin(), kWorksheetCounts.end(), count) != kWorksheetCounts.end()) o.count = count;@@o.count = count;@@practice_test
earth-limit-halved@@fl/glossary/insttest.cpp@@r.raMax = ul / idn;@@r.raMax = ul / idn / 2;@@glossary_test
measured-limit-three-quarters@@fl/glossary/insttest.cpp@@r.zsMax * 2.0 / 3.0@@r.zsMax * 3.0 / 4.0@@glossary_test
trip-factor-c-eight@@fl/glossary/insttest.cpp@@        return 10;@@        return 8;@@glossary_test
ip-seven-read-as-letter@@fl/glossary/install.cpp@@(first >= '7' && first <= '9')@@(first >= '8' && first <= '9')@@glossary_test
minform-note-unescaped@@fl/glossary/minform.cpp@@for (char c : htmlEscape(note)) {@@for (char c : note) {@@glossary_test
tool-error-cause-dropped@@fl/tools/frame.cpp@@"Noget passer ikke – tjek værdierne. <span class=\"crumb\">" + htmlEscape(e.what())@@"Noget passer ikke – tjek værdierne. <span class=\"crumb\">" + htmlEscape(std::string())@@fl_tools_test pages_test
tool-prefix-from-a-thousand@@fl/tools/frame.cpp@@(mag >= 0.1 && mag < 10000)@@(mag >= 0.1 && mag < 1000)@@fl_tools_test
tool-milli-from-a-hundredth@@fl/tools/frame.cpp@@(mag >= 0.1 && mag < 10000)@@(mag >= 0.01 && mag < 10000)@@fl_tools_test
energy-long-year-marks-hours@@fl/tools/energy.cpp@@refuse(out, "Et år har højst 366 dage.", {"d_dage"});@@refuse(out, "Et år har højst 366 dage.", {"h"});@@fl_tools_test
energy-year-of-360-days@@fl/tools/energy.cpp@@in.has("d_dage") ? in.get("d_dage") : 365.0@@in.has("d_dage") ? in.get("d_dage") : 360.0@@fl_tools_test
chain-reactance-sum-called-negative@@fl/tools/chain.cpp@@outcome.value < 0 && unknown != "X_tot" &&@@outcome.value < 0 &&@@fl_tools_test circuit_test circuit_sheets_test
typed-number-shown-with-a-comma@@fl/tools/frame.cpp@@const char mark = displaySettings().decimalComma ? ',' : '.';@@const char mark = ',';@@fl_tools_test
flashcard-not-ready-drawn@@fl/practice/cards.cpp@@if (all || isDue(states, key, nowMs)) r.queue.push_back(key);@@r.queue.push_back(key);@@practice_test
flashcard-key-renamed@@store/keys.h@@Fc[] = "fc";@@Fc[] = "fcx";@@practice_test
empty-cos-phi-taken-as-one-unsaid@@fl/tools/threephase.cpp@@addGivenRow(s, "effektfaktor – ren modstand, da feltet er tomt", "", "cosphi", "1", "cosphi");@@;@@fl_tools_test
closed-text-problem-drawn@@fl/practice/tekst.cpp@@t && (!open || open(tekstLockKey(key)))) {@@t) {@@practice_test
near-answer-band-fifteen-percent@@fl/practice/judge.cpp@@if (std::fabs(answer - facit) / std::fabs(facit) <= 0.1)@@if (std::fabs(answer - facit) / std::fabs(facit) <= 0.15)@@practice_test
transformer-core-not-painted-live@@fl/tools/machinefigs.cpp@@    cv.line(core - 6, 60, core - 6, 196, "plate");@@    cv.raw("<line x1=\"0\" y1=\"60\" x2=\"0\" y2=\"196\"/>");@@fl_tools_test
removed-scenario-shown-by-its-key@@fl/practice/stats.cpp@@return t ? t->label : "Tekstopgave";@@return t ? t->label : topic;@@practice_test
glossary-ae-folded-to-a@@fl/glossary/glossary.cpp@@{0xC3, 0xA6, "ae"}@@{0xC3, 0xA6, "a"}@@glossary_test
glossary-query-not-folded@@fl/glossary/glossary.cpp@@foldDanish(query.substr(a, b - a + 1))@@query.substr(a, b - a + 1)@@glossary_test
glossary-group-key-ignored@@fl/glossary/glossary.cpp@@return open("gle:" + e.term) && open("gl:" + e.section + "|" + e.group);@@return open("gle:" + e.term);@@glossary_test
glossary-missing-term-reworded@@fl/glossary/glossary.cpp@@"\" findes ikke i ordlisten."@@"\" findes ikke."@@glossary_test reference_test
glossary-hit-line-reworded@@fl/glossary/glossary.cpp@@" ord i alle emner matcher \""@@" ord matcher \""@@glossary_test reference_test
glossary-route-renamed@@app/shell/routes.cpp@@{"ordliste", [](@@{"ordlisten", [](@@app_test reference_test
tool-values-not-in-strip@@app/pages/tools/toolpage.cpp@@host->addResult(QString::fromStdString(fl::symbolDisplay(r.symbol)), r.value,@@if (false) host->addResult(QString::fromStdString(fl::symbolDisplay(r.symbol)), r.value,@@pages_test
server-csrf-unchecked@@server/web.cpp@@if (!sameSecret(field(req, "csrf"), s->session.csrf)) {@@if (false) {@@server_web_test
session-cookie-lax@@server/web.cpp@@"; HttpOnly; Secure; SameSite=Strict");@@"; HttpOnly; Secure; SameSite=Lax");@@server_web_test
brake-after-two-tries@@server/auth.cpp@@constexpr int kFreeTries = 3;@@constexpr int kFreeTries = 2;@@server_web_test
teacher-page-name-unescaped@@server/pages.cpp@@esc(a.name) +@@a.name +@@server_test server_web_test
class-page-of-another-teacher@@server/web.cpp@@if (!c || c->teacherId != s.teacher.id) {@@if (!c) {@@server_web_test
task-text-carriage-returns-kept@@server/web.cpp@@if (c != '\r') out += c;@@out += c;@@server_web_test
html-quote-left-raw@@server/html.cpp@@case '\'': out += "&#39;"; break;@@case '\'': out += "'"; break;@@server_test server_web_test
class-code-ambiguous-letters@@server/classroom.cpp@@"ABCDEFGHJKLMNPQRSTUVWXYZ23456789"@@"ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789"@@server_test
crash-runtime-frames-kept@@server/reports.cpp@@if (spot.empty() || isRuntime(module)) continue;@@if (spot.empty()) continue;@@server_test
crash-offsets-kept@@server/reports.cpp@@offset != std::string::npos && offset > bang) f.resize(offset);@@offset != std::string::npos && offset < bang) f.resize(offset);@@server_test
crash-groups-rarest-first@@server/reports.cpp@@return a.count != b.count ? a.count > b.count@@return a.count != b.count ? a.count < b.count@@server_test
crash-signature-four-frames@@server/reports.h@@int frames = 3@@int frames = 4@@server_test
crash-stdlib-frames-kept@@server/reports.cpp@@{"libc.so", "libstdc++.so", "libgcc_s.so", "libpthread.so"}@@{"libc.so", "libgcc_s.so", "libpthread.so"}@@server_test
crash-any-text-a-record@@server/reports.cpp@@if (!std::getline(in, line) || line.find(" crash: ") == std::string::npos) return {};@@if (!std::getline(in, line)) return {};@@server_test
hand-in-refusal-fails-the-batch@@server/sqlite_storage.cpp@@if (sqlite3_get_autocommit(db_)) throw;@@throw;@@server_test
wal-left-to-grow@@server/sqlite_storage.cpp@@if (pages >= kCheckpointPages) {@@if (pages < 0) {@@server_test
tasks-stamp-same-millisecond@@server/sqlite_storage.cpp@@MAX(tasks_updated + 1, ?)@@MAX(tasks_updated, ?)@@server_test net_client_test
telemetry-uid-new-every-send@@net/reports.cpp@@if (uid.empty()) {@@if (true) {@@net_test
removed-key-not-saved@@store/datastore.cpp@@entries_.erase(kPrefix + key);@@entries_.erase(kPrefix + key); return;@@datastore_test
json-utf8-escaped-bytewise@@store/json.cpp@@if (c >= 0x20 && c != '"' && c != '\\') continue;@@if (c >= 0x20 && c < 0x80 && c != '"' && c != '\\') continue;@@json_test json_fuzz_test
json-number-fallback-ignored@@store/json.h@@return kind == Number ? num : fallback;@@return kind == Number ? num : 0.0;@@json_test datastore_test net_test
json-infinity-as-text@@store/json.cpp@@if (!std::isfinite(v)) {@@if (std::isnan(v)) {@@json_test json_fuzz_test
family-left-without-topic@@fl/formulas/catalogue.cpp@@{"Arealer", "triA triS heron trap@@{"Arealer", "triA triS trap@@formulas_test
pasted-circuit-of-other-current-dropped@@app/pages/circuit/kredspage.cpp@@    fl::setCircuit(moved);@@    (void)moved;@@circuit_pages_test
question-mark-in-every-column@@app/pages/circuit/kredspage.cpp@@if (questionMark && t == "?") return true;@@if (t == "?") return true;@@circuit_pages_test
fix-link-without-value-applied@@app/pages/circuit/kredspage.cpp@@if (parts.size() < 3) return;@@if (parts.size() < 2) return;@@circuit_pages_test
saved-circuit-unreadable-unsaid@@app/pages/circuit/kredsfiles.cpp@@if (!fl::openSavedCircuit(saved->currentText().toStdString(), in)) {@@if (!fl::openSavedCircuit(saved->currentText().toStdString(), in) && false) {@@circuit_pages_test
paste-size-unlimited@@app/pages/circuit/kredsfiles.cpp@@if (text.size() > static_cast<size_t>(kMaxPasteBytes) || !fl::fromText(text, in)) {@@if (!fl::fromText(text, in)) {@@circuit_pages_test
parts-table-unlimited@@app/pages/circuit/kredspage.cpp@@constexpr size_t kMaxTableNodes = 120;@@constexpr size_t kMaxTableNodes = 2000;@@circuit_pages_test
guide-sheet-solved@@app/pages/circuit/kredspage.cpp@@        if (guide) {@@        if (false) {@@circuit_pages_test
circuit-refusal-shown-as-a-sheet@@app/pages/circuit/kredspage.cpp@@return fl::msgBox(solved->sheet.error, true);@@return fl::msgBox(solved->sheet.error, false);@@circuit_pages_test
fit-images-height-truncated@@app/sheet/sheettext.cpp@@.arg(std::llround(double(maxWidth) * double(h) / double(w)));@@.arg(static_cast<long long>(double(maxWidth) * double(h) / double(w)));@@sheet_test
stripes-on-first-data-row@@app/sheet/sheettext.cpp@@row++ % 2 == 1 && medium@@row++ % 2 == 0 && medium@@sheet_test
step-cut-keeps-one-more@@app/sheet/sheettext.cpp@@i >= std::max(keep, 0); --i)@@i > std::max(keep, 0); --i)@@sheet_test
answer-shown-before-the-last-step@@app/sheet/sheettext.cpp@@const QStringView gone = revealed ? u"spoiler-alt" : u"spoiler";@@const QStringView gone = u"spoiler-alt";@@sheet_test
inline-size-not-scaled@@app/sheet/sheettext.cpp@@own = m.capturedView(1).toDouble() * scale;@@own = m.capturedView(1).toDouble();@@sheet_test
card-with-text-after-taken-whole@@app/sheet/sheettext.cpp@@if (!html[p].isSpace()) return false;@@if (false) return false;@@sheet_test
narrow-view-not-floored@@app/sheet/sheettext.cpp@@fitImages(out, std::max(s.width, 200) - 30)@@fitImages(out, s.width - 30)@@sheet_test
locked-route-recorded-as-visit@@app/shell/mainwindow.cpp@@    recordVisit(route.toStdString());@@    recordVisit(requested.toStdString());@@app_test
results-strip-keeps-eleven@@app/shell/mainwindow.cpp@@if (results.size() > 10) {@@if (results.size() > 11) {@@app_test
result-chip-value-rounded@@app/shell/mainwindow.cpp@@lastField->setText(QString::fromStdString(fl::fmtValue10(value)));@@lastField->setText(QString::fromStdString(fl::fmtNumber(value)));@@app_test pages_test
closed-notice-shown-again@@app/shell/mainwindow.cpp@@if (seen.isString() && seen.str == key) return;@@if (false) return;@@app_test
previous-route-lost-on-renavigate@@app/shell/mainwindow.cpp@@if (route != current) previous = current;@@previous = current;@@app_test
status-rounding-names-swapped@@app/shell/mainwindow.cpp@@(o.rund == "d2" ?@@(o.rund != "d2" ?@@app_test
typed-voltage-overwritten-by-net@@app/pages/tools/toolpage.cpp@@if (now.isEmpty() || now == QLatin1String("230") || now == QLatin1String("400"))@@if (true)@@pages_test
clear-keeps-typed-values@@app/pages/tools/toolpage.cpp@@f->setText(defaults[f->key]);@@if (f->text().isEmpty()) f->setText(defaults[f->key]);@@pages_test
motor-clear-ignores-kind@@app/pages/tools/machinepages.cpp@@field(QStringLiteral("U_N"))->setText(threePhase() ? QStringLiteral("400") : QStringLiteral("230"));@@field(QStringLiteral("U_N"))->setText(QStringLiteral("400"));@@pages_test
motor-plate-kept-under-trafo-key@@app/pages/tools/machinepages.cpp@@    rememberFields(this, key::MotorField);@@    rememberFields(this, key::TrafoField);@@pages_test
crash-bus-unhandled@@app/shell/crash.cpp@@{SIGSEGV, SIGABRT, SIGFPE, SIGILL, SIGBUS}@@{SIGSEGV, SIGABRT, SIGFPE, SIGILL}@@startup_test
migration-keldvarn-first@@app/shell/startup.cpp@@{"../Ostrovalden", "../Keldvarn"}@@{"../Keldvarn", "../Ostrovalden"}@@startup_test
step-mode-on-by-default@@app/shell/startup.cpp@@storeGet(key::Trinvis).asBool(false)@@storeGet(key::Trinvis).asBool(true)@@startup_test
migration-stops-at-first-missing@@app/shell/startup.cpp@@if (!QFileInfo::exists(source)) continue;@@if (!QFileInfo::exists(source)) return;@@startup_test
data-directory-not-made@@app/shell/startup.cpp@@if (!dir.isEmpty()) QDir().mkpath(dir);@@if (false) QDir().mkpath(dir);@@startup_test
usage-start-not-counted@@app/shell/startup.cpp@@store.get(key::UsageStarts).asNumber(0) + 1@@store.get(key::UsageStarts).asNumber(0)@@startup_test
tool-refusal-fields-unmarked@@app/pages/tools/toolpage.cpp@@if (ValueField* f = field(QString::fromStdString(key))) f->setInvalid(true);@@if (ValueField* f = field(QString::fromStdString(key))) f->setInvalid(false);@@pages_test
figure-labels-anchored-wrong@@app/widgets/figureview.cpp@@s.anchor == fl::Shape::Middle ? w / 2 : w@@s.anchor == fl::Shape::Middle ? w : w / 2@@app_test sheet_test
painted-sector-left-open@@app/widgets/figureview.cpp@@if (s.kind == fl::Shape::Sector) path.closeSubpath();@@if (false) path.closeSubpath();@@app_test sheet_test
figure-label-colour-ignored@@app/widgets/figureview.cpp@@p.setPen(colours[size_t(s.font.colour)]);@@p.setPen(colours[0]);@@app_test
painted-dash-ignored@@app/widgets/figureview.cpp@@if (st.dashOn > 0) pen.setDashPattern@@if (false) pen.setDashPattern@@app_test
painted-rect-corners-square@@app/widgets/figureview.cpp@@if (s.r > 0) p.drawRoundedRect@@if (false) p.drawRoundedRect@@app_test
page-column-wider@@app/widgets/page.cpp@@inner->setMaximumWidth(1080);@@inner->setMaximumWidth(1100);@@app_test
flow-wraps-an-exact-fit@@app/widgets/flowlayout.cpp@@if (x + hint.width() > area.right() + 1 && !lineEmpty)@@if (x + hint.width() >= area.right() + 1 && !lineEmpty)@@app_test
side-split-stacks-at-threshold@@app/widgets/sidesplit.cpp@@event->size().width() < limit@@event->size().width() <= limit@@app_test
confetti-fades-slower@@app/widgets/confetti.cpp@@(ticks - 120) / 50.0@@(ticks - 120) / 60.0@@app_test
stats-text-problem-scenario-lost@@app/pages/practice/statistikpage.cpp@@storeSet(key::TxTpl, Json(topic.substr(kTekst.size())));@@storeSet(key::TxTpl, Json(topic));@@practice_pages_test
answer-after-solution-counted@@app/pages/practice/ovelserpage.cpp@@!counted && !revealed) count(@@!counted) count(@@practice_pages_test
text-problem-every-attempt-counted@@app/pages/practice/tekstpage.cpp@@if (verdict.readable && !part.counted) {@@if (verdict.readable) {@@practice_more_test
statistics-reset-unasked@@app/pages/practice/statistikpage.cpp@@if (confirmReset && confirmReset()) {@@if (true) {@@practice_pages_test
exam-hand-in-unasked-for-one-missing@@app/pages/practice/eksamenpage.cpp@@if (missing > 0 && confirmHandIn@@if (missing > 1 && confirmHandIn@@practice_more_test
unreadable-task-circuit-unsaid@@app/pages/class/opgaverpage.cpp@@if (hasCircuit && !readable) {@@if (false) {@@class_pages_test
hand-in-without-name-tried@@app/pages/class/opgaverpage.cpp@@const bool canSend = !net::classKey().empty() && !typedName.empty();@@const bool canSend = !net::classKey().empty();@@class_pages_test
guide-task-opens-freely@@app/pages/class/opgaverpage.cpp@@if (mode != "guide" && mode != "view" && isOpen(openRoute.toStdString())) {@@if (mode != "view" && isOpen(openRoute.toStdString())) {@@class_pages_test
dark-check-image-light@@app/shell/theme.cpp@@c.dark ? ":/check-dark.svg" : ":/check-light.svg"@@c.dark ? ":/check-light.svg" : ":/check-light.svg"@@app_test
text-scale-half-refused@@app/shell/theme.cpp@@scale >= 0.5 && std::isfinite(scale)@@scale > 0.5 && std::isfinite(scale)@@app_test
text-size-index-boundary@@app/shell/settingspanel.cpp@@if (scale > 1.05) return 1;@@if (scale >= 1.05) return 1;@@app_test
catalogue-form-without-root-three@@fl/formulas/rows_3f.cpp@@{"U_N", "S/(I_N*sqrt(3))"}@@{"U_N", "S/(I_N*3)"}@@solve_test formulas_test
parallel-other-root-sign@@fl/formulas/rows_ac.cpp@@"I_C-sqrt(I**2-I_R**2)"@@"I_C+sqrt(I**2-I_R**2)"@@solve_test
half-perimeter-a-third@@fl/formulas/rows_math.cpp@@{"s", "(a+b+c)/2"@@{"s", "(a+b+c)/3"@@solve_test formulas_test
carried-value-nine-digits@@fl/expr/numbers.cpp@@std::string s = fmtRounded(value, 10);@@std::string s = fmtRounded(value, 9);@@fl_expr_test
side-labels-not-moved-to-the-middle@@fl/fig/canvas.cpp@@if (outX) shiftX +=@@if (false) shiftX +=@@fig_test
icon-strokes-thin@@fl/formulas/icons.cpp@@stroke-width="2.5"@@stroke-width="1"@@icons_test
search-second-root-merged@@fl/circuit/search.cpp@@std::max(1e-12, std::fabs(e.x[i])) * 1e-5) return false;@@std::max(1e-12, std::fabs(e.x[i])) * 1e-5) return true;@@circuit_test
search-follower-ignored@@fl/circuit/search.cpp@@in_[slot] = in_[unknownSlot_[u]];@@in_[slot] = 1.0;@@circuit_test
ac-frequency-zero-accepted@@fl/circuit/setup.cpp@@if (!(f > 0.0) || !std::isfinite(f)) {@@if (!(f >= 0.0) || !std::isfinite(f)) {@@circuit_test
group-resistance-named-as-a-part@@fl/circuit/analysis.cpp@@if (node.group || isRootNode(node)) return nodeSymbol(node, "R");@@if (isRootNode(node)) return nodeSymbol(node, "R");@@circuit_test
voltage-symbol-renamed@@fl/circuit/analysis.cpp@@return nodeSymbol(node, "U");@@return nodeSymbol(node, "V");@@circuit_test
lossy-coil-note-cut-short@@fl/circuit/sheet.cpp@@"</b>. Skulle spolen være ideel, er nogle af de opgivne tal forkerte.");@@"</b>.");@@circuit_test circuit_sheets_test
circuit-no-answer-reworded@@fl/circuit/sheet.cpp@@"Programmet kunne ikke finde værdier, der passer med alle de opgivne tal. Tjek at "@@"Programmet fandt ingen værdier, der passer med alle de opgivne tal. Tjek at "@@circuit_test circuit_pages_test
json-depth-bound-one-deeper@@fl/circuit/json.cpp@@if (p.depth >= kMaxCircuitDepth && !kids.empty()) return false;@@if (p.depth > kMaxCircuitDepth && !kids.empty()) return false;@@circuit_test
json-leaf-with-children-read@@fl/circuit/json.cpp@@if (!knownKind(n->k) || n->group != (n->k == "S" || n->k == "P")) return false;@@if (!knownKind(n->k)) return false;@@circuit_test
ammeter-in-parallel-allowed@@fl/circuit/meters.cpp@@if (rec.ideal && m->k == "A" && g->k == "P" && info->error.empty())@@if (rec.ideal && m->k == "A" && g->k == "X" && info->error.empty())@@circuit_test
search-one-start-too-many@@fl/circuit/search.h@@constexpr size_t kMaxStarts = 400;@@constexpr size_t kMaxStarts = 401;@@circuit_test
cos-ninety-read-as-angle@@fl/circuit/setup.cpp@@if (v > 1.0 && v < 90.0) {@@if (v > 1.0 && v <= 90.0) {@@circuit_test
cos-hundred-not-a-percentage@@fl/circuit/setup.cpp@@if (v > 1.0 && v <= 100.0) {@@if (v > 1.0 && v < 100.0) {@@circuit_test
count-message-singular-for-none@@fl/circuit/setup.cpp@@(reachable == 1 ? "kendt værdi" : "kendte værdier")@@(reachable <= 1 ? "kendt værdi" : "kendte værdier")@@circuit_test
series-appends-at-the-end@@fl/circuit/model.cpp@@ch.insert(std::find(ch.begin(), ch.end(), node) + 1, leaf);@@ch.push_back(leaf);@@circuit_test
delete-in-main-series-selects-root@@fl/circuit/model.cpp@@c.sel = parent == c.root ? std::string() : parent->id;@@c.sel = parent->id;@@circuit_test
circuit-ids-not-noted-on-read@@fl/circuit/json.cpp@@    noteIds(c.root);@@@@circuit_test
mode-switch-drops-unsaved-edits@@fl/circuit/model.cpp@@        saveCircuit();@@@@circuit_test
frequency-zero-used-as-given@@fl/circuit/forward.cpp@@    if (!(f > 0.0)) f = 50.0;@@    if (std::isnan(f)) f = 50.0;@@circuit_test
coil-own-resistance-field-ignored@@fl/circuit/forward.cpp@@                    in[s] = r;@@                    in[s] = 0;@@circuit_test
cos-target-compared-by-ratio@@fl/circuit/search.cpp@@r[t] = targetIsCos_[t] ? (c - g) * 5.0 :@@r[t] = false ? (c - g) * 5.0 :@@circuit_test
auxiliary-voltage-results-shown@@fl/circuit/sheet.cpp@@it = scalesWithVoltage(it->first) ? values.erase(it) : std::next(it);@@it = std::next(it);@@circuit_test
coil-retry-leaves-resistance-unknown@@fl/circuit/sheet.cpp@@FieldRestore unknownR(coil->r, "?");@@coil->r = "?";@@circuit_test
active-power-cites-wrong-page@@fl/circuit/steps.cpp@@add("P", "U*I*cosphi", "Aktiv effekt", "13", root);@@add("P", "U*I*cosphi", "Aktiv effekt", "14", root);@@circuit_sheets_test
figure-halo-in-text-colour@@fl/fig/style.cpp@@slot[halo ? 1 : static_cast<size_t>(style.colour)]@@slot[static_cast<size_t>(style.colour)]@@fig_test
joined-sheets-shapes-misnumbered@@fl/expr/markup.cpp@@        figShapes.resize(figs.size());@@@@fig_test
compensation-angle-named-in-the-other-sector@@fl/fig/canvas.cpp@@            own = rest;@@            (void)rest;@@fig_test
save-failure-not-shown@@app/shell/mainwindow.cpp@@const bool failing = DataStore::instance().saveFailing();@@const bool failing = false;@@app_test
first-look-marked-as-a-save@@app/shell/mainwindow.cpp@@if (lastSaved.isValid() && modified.isValid()) {@@if (modified.isValid()) {@@app_test
crash-record-sent-unnamed@@app/shell/service.cpp@@if (storeGet(key::Telemetry).asBool(false)) symboliseCrashFile(dataDir + "/crash.txt");@@if (false) symboliseCrashFile(dataDir + "/crash.txt");@@startup_test
class-message-id-ignored@@app/shell/service.cpp@@r.classMsgId.empty() ? r.classMsg : r.classMsgId@@r.classMsg@@app_test
refused-class-code-unsaid@@app/shell/service.cpp@@if (r.outcome == -1) html +=@@if (false) html +=@@app_test
task-titles-unescaped@@app/shell/service.cpp@@for (const std::string& t : titles) out << esc(t);@@for (const std::string& t : titles) out << QString::fromStdString(t);@@app_test
math-image-pixel-ratio-dropped@@app/sheet/mathpainter.cpp@@img.setDevicePixelRatio(dpr);@@img.setDevicePixelRatio(1.0);@@sheet_test
sheet-figure-painted-unscaled@@app/sheet/sheetview.cpp@@paintShapes(p, fig.shapes, scale, offset);@@paintShapes(p, fig.shapes, 1.0, offset);@@sheet_test
cell-expression-drawn-inline@@app/sheet/sheetview.cpp@@sheetMathStyle(cellMaths.contains(name), mathPts.value(name, 0.0))@@sheetMathStyle(false, mathPts.value(name, 0.0))@@sheet_test
hidden-view-rebuilt-at-every-change@@app/sheet/sheetview.cpp@@    if (window()->isVisible() && !isVisible()) {@@    if (false) {@@sheet_test
refit-on-every-pixel@@app/sheet/sheetview.cpp@@if (std::abs(w - lastWidth) > 12@@if (std::abs(w - lastWidth) >= 0@@sheet_test
tile-padding-click-ignored@@app/sheet/sheetview.cpp@@if (!tile.href.isEmpty()) {@@if (false) {@@sheet_test
fraction-bar-off-whole-pixels@@app/sheet/mathpainter.cpp@@const double y0 = snap(r.top(), dpr);@@const double y0 = r.top();@@sheet_test
step-bar-last-label-early@@app/sheet/resultarea.cpp@@next->setText(shown == count - 1 ?@@next->setText(shown == count - 2 ?@@sheet_test
pdf-heading-kept-as-a-block@@app/sheet/sheetpdf.cpp@@if (findDiv(out, p, u"pdf-next") == p) {@@if (false) {@@sheet_test practice_more_test
pdf-kept-block-cut@@app/sheet/sheetpdf.cpp@@for (QStringView cls : {u"pdf-keep", u"step", u"pdf-next"})@@for (QStringView cls : {u"step", u"pdf-next"})@@sheet_test practice_more_test
pdf-break-ignored@@app/sheet/sheetpdf.cpp@@.pdf-break { page-break-before: always; }@@.pdf-break { page-break-before: auto; }@@sheet_test practice_more_test
bundle-validation-skipped@@app/pages/support/datapage.cpp@@if (!DataStore::instance().validateBundle(out.text, &out.date, &out.count)) {@@if (false) {@@support_test
bundle-size-limit-dropped@@app/pages/support/datapage.cpp@@if (bytes.size() > kMaxBundleBytes) {@@if (bytes.size() > 2 * kMaxBundleBytes) {@@support_test
bug-report-technical-always@@app/dialogs/bugreportdialog.cpp@@    if (technical) {@@    if (true) {@@support_test
bug-report-blanks-counted@@app/dialogs/bugreportdialog.cpp@@letters(text->toPlainText()) < kMinReportLetters@@int(text->toPlainText().size()) < kMinReportLetters@@support_test
empty-damage-notice-shown@@app/shell/mainwindow.cpp@@if (const QString damaged = damagedDataNotice(); !damaged.isEmpty())@@if (const QString damaged = damagedDataNotice(); true)@@app_test
damaged-notice-not-shown@@app/shell/mainwindow.cpp@@!damaged.isEmpty()) showNotice(damaged, QString());@@!damaged.isEmpty()) (void)damaged;@@startup_test app_test
interpretation-room-not-kept@@app/widgets/valuefield.cpp@@        interp->setMinimumHeight(*it);@@        (void)*it;@@app_test pages_test
calc-fraction-cursor-in-numerator@@app/widgets/calcpanel.cpp@@int(before.size() + piece.size()) - 1};@@int(before.size()) + 1};@@reference_test
calc-tab-skips-denominator@@app/widgets/calcpanel.cpp@@target = open + 1; // from the numerator@@target = close + 1; // from the numerator@@reference_test
small-figure-widened@@app/sheet/sheettext.cpp@@if (w <= maxWidth) continue;@@if (false) continue;@@sheet_test
stylesheet-token-left@@app/shell/theme.cpp@@{"@BTNTEXT", btnText},@@{"@BTNTEXTX", btnText},@@app_test
no-break-space-not-a-blank@@fl/expr/numbers.cpp@@if (c == 0xC2 && i + 1 < text.size()@@if (false && c == 0xC2 && i + 1 < text.size()@@fl_expr_test
degree-after-a-blank@@fl/expr/numbers.cpp@@    if (unit == "°") return s + unit;@@@@fl_expr_test solve_test
outer-minus-not-carried@@fl/expr/node.cpp@@flattenSum(t.node->terms, outer * t.sign, out);@@flattenSum(t.node->terms, outer, out);@@fl_expr_test
isolate-one-pass-more@@fl/expr/isolate.cpp@@constexpr int kMaxPasses = 26;@@constexpr int kMaxPasses = 27;@@fl_expr_test
too-large-always-singular@@fl/formulas/fields.cpp@@large.size() == 1 ?@@true ?@@formulas_pages_test
overflow-line-read-as-unreadable@@fl/formulas/fields.cpp@@(std::isnan(value) && tooLarge(text))@@(false)@@formulas_pages_test
finder-one-formula-plural@@fl/formulas/finderview.cpp@@(families == 1 ? " formel" : " formler")@@(" formler")@@formulas_pages_test
finder-counts-closed-families@@fl/formulas/finderview.cpp@@if (findFormula(key) && isOpen(open, key)) out.push_back(key);@@if (findFormula(key)) out.push_back(key);@@formulas_pages_test
formula-chip-of-closed-family@@fl/formulas/home.cpp@@met.count(f.topic) || (open && !open(f.key))) continue;@@met.count(f.topic)) continue;@@formulas_pages_test
page-ref-for-named-sheets@@fl/formulas/catalogue.cpp@@if (!page.empty() && page[0] >= '0' && page[0] <= '9') return@@if (!page.empty()) return@@formulas_test solve_test
figure-after-the-steps@@fl/formulas/solve.cpp@@"</div></div>" + fig + stepBlocks(blocks) + "</div>";@@"</div></div>" + stepBlocks(blocks) + fig + "</div>";@@solve_test
loop-limit-exclusive@@fl/glossary/insttest.cpp@@measured <= r.zsMax;@@measured < r.zsMax;@@glossary_test
minform-any-word@@fl/glossary/minform.cpp@@if (std::all_of(want.begin()@@if (std::any_of(want.begin()@@glossary_test
formula-text-leading-minus-dropped@@fl/formulas/solve.cpp@@out += t.sign < 0 ? "-" : "";@@out += "";@@solve_test formulas_pages_test glossary_test
inverse-trig-not-an-angle@@fl/formulas/solve.cpp@@n->degree = node->kind == NodeKind::Func &&@@n->degree = false &&@@solve_test fl_tools_test
exercise-key-topic-misspelt@@fl/formulas/lists.cpp@@"sub:El-lære|Parallel vekselstrøm"@@"sub:El-lære|Parallel-vekselstrøm"@@glossary_test formulas_test
teacher-key-kind-misspelt@@fl/formulas/lists.cpp@@"tekst:spole"@@"tekts:spole"@@glossary_test formulas_test
icon-colour-ignored@@fl/formulas/icons.cpp@@attributeText(strokeColour) +@@std::string("#2457d6") +@@icons_test
icon-shape-filled@@fl/formulas/icons.cpp@@R"(<circle cx="11" cy="24" r="7"/>)"@@R"(<circle cx="11" cy="24" r="7" fill="#000"/>)"@@icons_test
help-text-decimal-point@@fl/formulas/help_el.cpp@@kobber 0,0175 og aluminium@@kobber 0.0175 og aluminium@@help_test
help-text-unit-glued-on@@fl/formulas/help_el.cpp@@4 % af 230 V er 9,2 V;@@4 % af 230 V er 9,2V;@@help_test
help-text-without-full-stop@@fl/formulas/help_el.cpp@@typisk 230 V mellem fase og nul."@@typisk 230 V mellem fase og nul"@@help_test
help-text-tag-left-open@@fl/formulas/help_el.cpp@@ledningsmodstanden R<sub>L</sub> i et kabel@@ledningsmodstanden R<sub>L i et kabel@@help_test
sidebar-search-words-ignored@@app/shell/mainwindow_sidebar.cpp@@!(name + QLatin1Char(' ') + QString::fromStdString(tile->search)).toLower().contains(filter))@@!name.toLower().contains(filter))@@app_test
first-hit-home-while-searching@@app/shell/mainwindow_sidebar.cpp@@if (filtered && data == QLatin1String(fl::route::Home)) continue;@@if (false) continue;@@app_test
sidebar-circuit-suffix-kept@@app/shell/mainwindow_sidebar.cpp@@circuit ? withoutCurrentSuffix(shown) : shown@@shown@@app_test
section-of-current-page-left-closed@@app/shell/mainwindow_sidebar.cpp@@if (holdsCurrent) sectionOpen[id] = true;@@if (false) sectionOpen[id] = true;@@app_test
chosen-entry-scrolled-away@@app/shell/mainwindow_sidebar.cpp@@if (chosen) tree->scrollToItem(chosen, QAbstractItemView::EnsureVisible);@@if (false) tree->scrollToItem(chosen, QAbstractItemView::EnsureVisible);@@app_test
sidebar-place-lost-on-refill@@app/shell/mainwindow_sidebar.cpp@@tree->verticalScrollBar()->setValue(scrolled);@@(void)scrolled;@@app_test
results-kept-in-the-old-format@@app/shell/mainwindow.cpp@@connect(hub, &HostSignals::settingsChanged, this, &MainWindow::rebuildResults);@@(void)0;@@app_test
glossary-link-text-dropped@@app/shell/mainwindow.cpp@@storeSet(key::OrdlisteQ, Json(rest.toStdString()));@@(void)rest;@@app_test reference_test
running-exam-closed-by-profile@@app/shell/mainwindow.cpp@@if (it->first == current && current == QLatin1String(fl::route::Exam)) {@@if (false) {@@app_test
reopened-page-not-returned-to@@app/shell/mainwindow.cpp@@if (!locked.empty() && isOpen(locked)) target@@if (false) target@@app_test
refresh-check-in-not-forced@@app/shell/service.cpp@@in.force = force;@@in.force = false;@@app_test
glossary-stored-search-ignored@@app/pages/reference/ordlistepage.cpp@@const QString wanted = QString::fromStdString(storeGetString(key::OrdlisteQ));@@const QString wanted = search->text();@@reference_test
glossary-shows-what-is-closed@@app/pages/reference/ordlistepage.cpp@@return [](const std::string& key) { return isOpenKey(key); };@@return [](const std::string&) { return true; };@@reference_test
formula-pdf-untitled@@app/pages/formulas/formulapage.cpp@@area->setTitle(titleMarkup(family->title));@@(void)0;@@pages_test
refusal-offers-the-old-pdf@@app/pages/formulas/formulapage.cpp@@if (!sheetShown) area->pdfBar()->hide();@@if (false) area->pdfBar()->hide();@@pages_test
card-added-after-the-stretch@@app/widgets/page.cpp@@layout->insertWidget(std::max(0, layout->count() - 1), widget); }@@layout->addWidget(widget); }@@app_test pages_test
field-edit-keeps-error-frame@@app/widgets/valuefield.cpp@@setClass(edit, QString());@@(void)0;@@app_test pages_test
field-enter-unwired@@app/widgets/valuefield.cpp@@connect(edit, &QLineEdit::returnPressed, this, &ValueField::enterPressed);@@(void)0;@@app_test pages_test
consent-left-unstored@@app/pages/support/datapage.cpp@@if (storeGet(key::Telemetry).asBool(false) != on) storeSet(key::Telemetry, Json(on));@@(void)on;@@support_test
consent-shown-by-default@@app/pages/support/datapage.cpp@@consent->setChecked(storeGet(key::Telemetry).asBool(false));@@consent->setChecked(storeGet(key::Telemetry).asBool(true));@@support_test
editor-hit-test-unscaled@@app/pages/circuit/circuiteditor.cpp@@const double x = pos.x() / f, y = pos.y() / f;@@const double x = pos.x(), y = pos.y();@@circuit_pages_test
editor-edit-keeps-old-picture@@app/pages/circuit/circuiteditor.cpp@@    picture = QImage();@@    (void)0;@@circuit_pages_test
editor-deaf-to-theme@@app/pages/circuit/circuiteditor.cpp@@    if (themed && fl::figColors().slot != drawnColors) refresh();@@    (void)themed;@@circuit_pages_test
circuit-lock-message-cut@@app/pages/circuit/kredspage.cpp@@QStringLiteral("jævnstrøm")) + QStringLiteral(" fra.");@@QStringLiteral("jævnstrøm")) + QStringLiteral(".");@@circuit_pages_test
step-mode-change-unheard@@app/sheet/resultarea.cpp@@if (host) connect(host->hostSignals(), &HostSignals::stepModeChanged@@if (false) connect(host->hostSignals(), &HostSignals::stepModeChanged@@sheet_test
sheet-images-redrawn-at-every-reveal@@app/sheet/sheetview.cpp@@it != cache.constEnd() && sameSize(*it, figSizes.value(key))@@false && sameSize(*it, figSizes.value(key))@@sheet_test
sheet-figure-shapes-ignored@@app/sheet/sheetview.cpp@@if (size_t(n) < figShapes.size() && figShapes[size_t(n)])@@if (false && figShapes[size_t(n)])@@sheet_test
answer-waits-without-step-mode@@app/sheet/sheettext.cpp@@    bool answer = true;@@    bool answer = s.revealed >= s.stepCount;@@sheet_test
headings-left-to-the-text-engine@@app/sheet/sheettext.cpp@@return plainHeadings(inlineSizes(rewriteBoxes(out, c), s.textScale));@@return inlineSizes(rewriteBoxes(out, c), s.textScale);@@sheet_test
closed-topic-offered@@app/pages/practice/topiccombo.cpp@@if (!c.lockKey.empty() && !isOpenKey(c.lockKey)) continue;@@if (false) continue;@@practice_pages_test
closed-topic-drawn@@app/pages/practice/ovelserpage.cpp@@    return isOpenKey(key);@@    return true;@@practice_pages_test
task-cards-rebuilt-at-every-visit@@app/pages/class/opgaverpage.cpp@@if (storeGet(key::TasksUpdated).asNumber(0) != drawn) rebuild();@@rebuild();@@class_pages_test
task-drawing-never-hidden-again@@app/pages/class/opgaverpage.cpp@@c.drawing->setVisible(show);@@c.drawing->setVisible(true);@@class_pages_test
task-guide-of-the-other-current@@app/pages/class/opgaverpage.cpp@@const QString guideRoute = QLatin1String(fl::route::CircuitGuide) + suffix;@@const QString guideRoute = QLatin1String(fl::route::CircuitGuide);@@class_pages_test
empty-task-list-said-never-fetched@@app/pages/class/opgaverpage.cpp@@empty->addLabel(updated > 0 ?@@empty->addLabel(false ?@@class_pages_test
readout-never-asks-for-room@@app/pages/tools/acpages.cpp@@            updateGeometry();@@            (void)0;@@pages_test
cable-section-not-remembered@@app/pages/tools/cablepick.cpp@@store.set(k + "_q", mm2->currentData().toString().toStdString());@@(void)0;@@pages_test
plate-figure-squeezed-beside-the-fields@@app/pages/tools/machinepages.cpp@@const bool narrow = room < figure->sizeHint().width() * 9 / 10;@@const bool narrow = room < figure->sizeHint().width() / 2;@@pages_test
EOF
)

backup=$(mktemp)
current=""
restore() {
    # A new mtime, so the next build recompiles what the mutant left behind.
    if [ -n "$current" ]; then
        cat "$backup" >"$current"
        touch "$current"
        current=""
    fi
}
trap 'restore; rm -f "$backup"' EXIT
# A stopped run must end here, not restore and go on to the next mutant.
trap 'exit 130' INT TERM

replace() { # file from to
    python3 - "$@" <<'PY'
import sys
path, old, new = sys.argv[1:4]
text = open(path, encoding="utf-8").read()
if text.count(old) != 1:
    sys.exit(f"{path}: '{old}' found {text.count(old)} times")
open(path, "w", encoding="utf-8").write(text.replace(old, new))
PY
}

echo "| mutant | file:line | killed by |"
echo "|---|---|---|"
touched=""
while IFS= read -r row; do
    [ -n "$row" ] || continue
    name=${row%%@@*}; row=${row#*@@}
    file=${row%%@@*}; row=${row#*@@}
    from=${row%%@@*}; row=${row#*@@}
    to=${row%%@@*}
    targets=${row#*@@}
    # Not a pipe into grep -q: under pipefail, printf's broken pipe would skip a named mutant.
    if [ $# -gt 0 ] && ! grep -qxF -- "$name" <<<"$(printf '%s\n' "$@")"; then continue; fi
    line=$(grep -nF -- "$from" "$file" | head -1 | cut -d: -f1)
    cp "$file" "$backup"
    current=$file
    replace "$file" "$from" "$to"
    touched="$touched $targets"
    # shellcheck disable=SC2086
    if ! cmake --build "$build" -j"${JOBS:-2}" --target $targets >/dev/null 2>&1; then
        echo "| $name | $file:$line | (does not compile) |"
        restore
        continue
    fi
    failed="" crashed=""
    for t in $targets; do
        exe=$(realpath "$(find "$build/tests" -type f -name "$t" -perm -u+x | head -1)")
        status=0
        out=$(cd "$(dirname "$exe")" && LC_ALL=da_DK.UTF-8 QT_QPA_PLATFORM=offscreen \
            OSTROVALDEN_TEST_DATA="$root/tests/data" timeout 900 "$exe" --gtest_brief=1 2>&1) || status=$?
        names=$(sed -n 's/^\[  FAILED  \] \([A-Za-z0-9_/]*\.[A-Za-z0-9_/]*\).*/\1/p' <<<"$out" | sort -u | tr '\n' ' ')
        failed+=$names
        [ "$status" -ne 0 ] && [ -z "$names" ] && crashed+="$t:exit-$status "
    done
    failed+=$crashed
    if [ -n "$failed" ]; then
        count=$(wc -w <<<"$failed")
        shown=$(tr ' ' '\n' <<<"$failed" | grep . | head -3 | paste -sd, | sed 's/,/, /g')
        [ "$count" -gt 3 ] && shown="$shown (+$((count - 3)))"
        echo "| $name | $file:$line | $shown |"
    else
        echo "| $name | $file:$line | **survived** |"
    fi
    restore
done <<<"$mutants"

# Leave the build as the sources stand.
# shellcheck disable=SC2086
[ -z "$touched" ] || cmake --build "$build" -j"${JOBS:-2}" --target $(tr ' ' '\n' <<<"$touched" | sort -u) >/dev/null
