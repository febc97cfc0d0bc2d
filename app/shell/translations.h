// Qt's own words (the file dialog's "Gem", a message box's "Annuller") in
// Danish, whatever language the system speaks: the program is Danish
// throughout.
#pragma once

namespace app {

// Loads Qt's Danish translations, when installed, into the application.
// Call once, after the QApplication exists. False when none were found.
bool installTranslations();

} // namespace app
