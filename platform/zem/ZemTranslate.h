// ZemTranslate.h: texts in the language of the user.
#pragma once

#include <QtCore/QString>

namespace Zem {

/// The text (UTF-8) in the user's language, the text itself when no translation is known or there is no application
/// object. May be called from any thread.
QString translate(char const *context, char const *text);

/// Loads the translations of a library, "<name>_<locale>.qm" for the default locale, and keeps them as long as the
/// application object lives. Looks in each folder of the environment variable ZEM_TRANSLATIONS, then in
/// "translations" beside the program and in "../share/zem/translations". Does nothing without an application object,
/// without such a file, or when `name` is already loaded. Call it from the thread of the application object.
void installTranslator(char const *name);

} // namespace Zem
