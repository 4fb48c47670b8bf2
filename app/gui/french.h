#pragma once
// The toolkit's own words in French: the file and print dialogs, the context
// menus of text boxes, the page sizes and numbers, as the rest of the
// program speaks.

class QCoreApplication;

namespace ostrane::gui {

// Loads the toolkit's French translations (Debian's qt6-translations-l10n)
// and makes French the default locale. False when the translations are not
// installed: the dialogs then speak the toolkit's English.
bool SpeakFrench(QCoreApplication& application);

}  // namespace ostrane::gui
