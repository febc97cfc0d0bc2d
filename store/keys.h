// Every key of "data.json", named once: the value's JSON shape, what it
// means and who writes it. A value of another shape reads as the reader's
// fallback, so the shapes below are what is written, not what may be
// trusted. A new key is declared here first, in its owner's group.
#pragma once

namespace key {

// ---- The application: start-up, settings, window and navigation

// number: starts since the last usage report. Start-up.
inline constexpr char UsageStarts[] = "usage_starts";
// bool, default true: decimal comma rather than point. Settings panel.
inline constexpr char Komma[] = "komma";
// string "p5" (precise) or "d2" (as the formula book). Settings panel.
inline constexpr char Rund[] = "rund";
// bool: working and answers one step at a time. Settings panel.
inline constexpr char Trinvis[] = "trinvis";
// number 1.0, 1.15 or 1.3: the text scale. Settings panel.
inline constexpr char Tekst[] = "tekst";
// string "auto", "light" or "dark". Settings panel's theme button.
inline constexpr char Theme[] = "theme";
// string: Base64 of the window's geometry. The window, at close.
inline constexpr char WinGeom[] = "win_geom";
// {section id: bool}: the sidebar's open sections. The sidebar.
inline constexpr char NavOpen[] = "navOpen";
// string: the route on screen. recordVisit, on every navigation.
inline constexpr char Last[] = "last";
// [route, …], newest first, at most six. recordVisit.
inline constexpr char Recent[] = "recent";
// {page title: count}: visits since the last usage report. recordVisit.
inline constexpr char Usage[] = "usage";
// string: the switched-off route that was asked for. Navigation.
inline constexpr char LockedPage[] = "locked_page";
// string: the id of the topic that switched it off. Navigation.
inline constexpr char LockedFeature[] = "locked_feature";
// [notice id, …]: notices dismissed for good. The notice bar.
inline constexpr char NoticeSeen[] = "notice_seen";
// bool: the welcome has been shown. The welcome dialog.
inline constexpr char WelcomeSeen[] = "welcome_seen";
// bool, default false: consent to the anonymous usage and crash reports.
// "Gem og hent mine data".
inline constexpr char Telemetry[] = "telemetry";
// string: this copy's anonymous id in the reports. sendReports, at the first report.
inline constexpr char TelemetryUid[] = "telemetry_uid";
// number: seconds since the epoch of the last usage report. sendReports.
inline constexpr char TelemetryLast[] = "telemetry_last";

// ---- The formula library's pages

// string such as "ac/serie": where the formula finder stands. Finder page.
inline constexpr char FinderPath[] = "finder_path";
// string: the same for the list of calculators. Finder page.
inline constexpr char CalculatorsPath[] = "udregnere_path";

// ---- Circuits

// circuit object (fl/circuit/json.h), direct current. saveCircuit.
inline constexpr char Kreds[] = "kreds";
// circuit object, alternating current. saveCircuit.
inline constexpr char KredsAc[] = "kreds_ac";
// {name: circuit object}: the student's saved circuits. saveCircuitAs and its kin.
inline constexpr char KredsSaved[] = "kreds_saved";

// ---- Tools

// string "1", "D" or "Y": the compensation's net. KompPage.
inline constexpr char KompNet[] = "komp_net";
// string "3" or "1": the motor's phases. MotorPage.
inline constexpr char MotorPh[] = "motor_ph";
// string "dol" or "yd": direct or star-delta start. MotorPage.
inline constexpr char MotorStart[] = "motor_start";
// family "motor_" + field key ("motor_U_N", "motor_P_2", …), string: the field
// as typed at the last run. MotorPage.
inline constexpr char MotorField[] = "motor_";
// string "Y" or "D": the three-phase load's connection. TrefasePage.
inline constexpr char TfConn[] = "tf_conn";
// family "trafo_" + field key, string: the field as typed at the last run;
// removed by "Ryd". TrafoPage.
inline constexpr char TrafoField[] = "trafo_";

// ---- Reference pages and practice

// string: the glossary's search text. Glossary page, and "gl:" links.
inline constexpr char OrdlisteQ[] = "ordliste_q";
// string: the glossary's section. Glossary page.
inline constexpr char OrdlisteSec[] = "ordliste_sec";
// string, default "hvad": the test guide's tab. Its page, and "it:" links.
inline constexpr char InsttestTab[] = "insttest_tab";
// string, default "farver": the installation reference's tab. Its page.
inline constexpr char InstTab[] = "inst_tab";
// string: the IP code typed on the installation reference. Its page.
inline constexpr char InstIp[] = "inst_ip";
// [{"key": family key, "note": text}, …]: the own formula sheet. Its page.
inline constexpr char Minform[] = "minform";
// {"forms": bool, "legend": bool}: what the own formula sheet shows. Its page.
inline constexpr char MinformOpt[] = "minform_opt";
// {"deck": deck id, "mode": mode id}: the flashcards' choice. Flashcards, "cards:" links.
inline constexpr char FcOpt[] = "fc_opt";
// {"topics": {name: {right, total}}, "formulas": {key: {total, wrong}}, "days": {"YYYY-MM-DD":
// {right, wrong}}}: practice answers. recordAnswer (fl/practice/stats.h).
inline constexpr char OvStats[] = "ov_stats";
// string: the exercise page's topic (category key); "ov:" links write it. Exercise page.
inline constexpr char OvCat[] = "ov_cat";
// numbers: the exercise page's running score, kept apart from the records. Exercise page.
inline constexpr char OvRight[] = "ov_right";
inline constexpr char OvTotal[] = "ov_total";
// bool, true when absent: a sound on a right answer. Exercise page.
inline constexpr char OvLyd[] = "ov_lyd";
// [{date, topic, right, total, seconds}, …], newest first, at most ten: exams. recordExam.
inline constexpr char ExamHist[] = "exam_hist";
// {card key: {"box", "reps", "good", "due"}}: the flashcards' boxes (fl/practice/cards.h).
inline constexpr char Fc[] = "fc";
// string: the text problems' scenario key, "alle" for any. Text problem page, "ov:" links.
inline constexpr char TxTpl[] = "tx_tpl";
// strings: the exam setup's topic (category key), count and minutes ("0": no limit). Exam page.
inline constexpr char ExCat[] = "ex_cat";
inline constexpr char ExN[] = "ex_n";
inline constexpr char ExT[] = "ex_t";
// {"topic", "count", "facit", "room"}: the worksheet's options (fl/practice/worksheet.h). Worksheet page.
inline constexpr char WsOpt[] = "ws_opt";

// ---- The class service; the background job writes these from its thread

// string: the class code the teacher handed out.
inline constexpr char ClassKey[] = "class_key";
// {"off": [ids], "profile": name}: the last check-in's.
inline constexpr char ClassProfile[] = "class_profile";
// string: this copy's anonymous id in the class.
inline constexpr char ClassUid[] = "class_uid";
// bool: the teacher wants the class statistics.
inline constexpr char ClassStats[] = "class_stats";
// number: seconds since the epoch of the last statistics upload.
inline constexpr char ClassStatsLast[] = "class_stats_last";
// object: the last "/tasks" reply.
inline constexpr char ClassTasks[] = "class_tasks";
// number: "tasksUpdated" of the check-in the tasks belong to.
inline constexpr char TasksUpdated[] = "tasks_updated";
// object: one member per task id the student has seen.
inline constexpr char TasksSeen[] = "tasks_seen";
// {task id: {status, answer, at}}: the student's answers.
inline constexpr char TaskAnswers[] = "task_answers";
// string: the name the student answers under. Task page.
inline constexpr char StudentName[] = "student_name";

} // namespace key
