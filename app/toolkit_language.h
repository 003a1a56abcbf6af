#pragma once

#include <QTranslator>

namespace tintwell {

/// The language of what the toolkit itself writes on dialogs, menus and the like.
class ToolkitLanguage {
public:
    /// Takes one of the languages of the window. What the toolkit has no translation for, all of it
    /// if its translations are not installed, stays English.
    void set(int language);

private:
    QTranslator chinese;
};

} // namespace tintwell
