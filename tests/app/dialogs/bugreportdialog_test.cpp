// The bug report: too little text is refused before anything is sent, the
// request carries technical info only when allowed, and the answer is shown.
#include "app/dialogs/bugreportdialog.h"

#include "store/keys.h"
#include "tests/app/fresh_app.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

#include <optional>

namespace {

using BugReportTest = FreshAppTest;

struct Row {
    const char* name;
    const char* text;
    bool technical;
    std::optional<std::string> reply; // none: the network fails
    const char* status;
    bool sent;
    const char* cancel;
};

TEST_F(BugReportTest, sendsWhatTheStudentAllowsAndShowsTheAnswer) {
    const char* const tooShort =
        "<span style=\"color:#c62828\">Skriv lidt mere om fejlen, så vi kan finde den.</span>";
    const char* const thanks = "<span style=\"color:#1a7f37\">✓ Tak – rapporten er sendt.</span>";
    const char* const report = "Kredsløbet med to spoler viste NaN i stedet for strømmen.";
    const Row rows[] = {
        {"a few letters spread out by blanks", "  virker   ikke  \n ", true, "{}", tooShort, false,
         "Annullér"},
        {"sent with technical info", report, true, "{}", thanks, true, "Luk"},
        {"sent without", report, false, "{}", thanks, true, "Luk"},
        {"no network", report, true, std::nullopt,
         "<span style=\"color:#c62828\">Ingen forbindelse til serveren.</span>", true, "Annullér"},
    };
    storeSet(key::ClassKey, Json("ABCD1234"));
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        std::vector<std::pair<std::string, Json>> sent;
        app::BugReportDialog dialog(
            "kredsac", nullptr,
            [&](const std::string& path, const std::string& body, std::string& out, std::string& err) {
                sent.emplace_back(path, Json::parse(body));
                if (!row.reply) {
                    err = "Ingen forbindelse til serveren.";
                    return false;
                }
                out = *row.reply;
                return true;
            });
        dialog.text->setPlainText(QString::fromUtf8(row.text));
        dialog.contact->setText(QStringLiteral(" elev@skole.dk "));
        dialog.technical->setChecked(row.technical);
        dialog.send();
        EXPECT_EQ(dialog.status->text().toStdString(), row.status);
        EXPECT_EQ(dialog.cancelButton->text().toStdString(), row.cancel);
        ASSERT_EQ(sent.size(), row.sent ? 1u : 0u);
        if (!row.sent) continue;
        EXPECT_EQ(sent[0].first, "/bug");
        const Json& body = sent[0].second;
        EXPECT_EQ(body.at("key").asString(), "ABCD1234");
        EXPECT_EQ(body.at("text").asString(), report);
        EXPECT_EQ(body.at("contact").asString(), "elev@skole.dk");
        EXPECT_EQ(body.has("version"), row.technical);
        if (row.technical) {
            EXPECT_EQ(body.at("version").asString(), "1.0.30");
            EXPECT_EQ(body.at("edition").asString(), "Skoleudgave");
            EXPECT_EQ(body.at("page").asString(), "kredsac");
            EXPECT_NE(body.at("os").asString().find(" ("), std::string::npos);
        } else {
            EXPECT_EQ(body.obj.size(), 3u) << Json::dump(body, 0);
        }
        // A report that didn't go out can be sent again as it stands.
        EXPECT_EQ(dialog.sendButton->isEnabled(), row.cancel == std::string("Annullér"));
        EXPECT_EQ(dialog.text->toPlainText().toStdString(), report);
    }
}

} // namespace
