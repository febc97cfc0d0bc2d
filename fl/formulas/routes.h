// The routes the program's code names, once each. The tile table
// (lists.cpp) and the page factory hold every route; these are the ones that
// navigation, links and lists single out. A formula family's route is its key.
#pragma once

namespace fl::route {

// Where the window opens, and where an unknown route ends.
inline constexpr char Home[] = "hjem";
// Shown instead of a route the teacher has switched off.
inline constexpr char Locked[] = "laast";
// The formula finder; a formula page's "←" leads back to it.
inline constexpr char Finder[] = "finder";
// The list of calculators; also the topic that closes every formula family.
inline constexpr char Calculators[] = "udregnere";
// The pocket calculator.
inline constexpr char Calc[] = "calc";
// The glossary, where "gl:" links lead.
inline constexpr char Glossary[] = "ordliste";
// The installation test guide, where "it:" links lead.
inline constexpr char InstTest[] = "insttest";
// The installation reference.
inline constexpr char Install[] = "install";
// The student's own formula sheet.
inline constexpr char Minform[] = "minform";
// The flashcards, where "cards:" links lead.
inline constexpr char Flashcards[] = "formelkort";
// The one page that survives a change of the teacher's profile.
inline constexpr char Exam[] = "eksamen";
// The teacher's tasks; new tasks' notices link here.
inline constexpr char Tasks[] = "opgaver";
// The circuit page and its walkthrough; + "ac" for alternating current.
inline constexpr char Circuit[] = "kreds";
inline constexpr char CircuitGuide[] = "kredsguide";

} // namespace fl::route
