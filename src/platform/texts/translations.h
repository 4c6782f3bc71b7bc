#pragma once

namespace folvane {

/// Texts read from here on as the translation table words them, and those that stand in none as they do in the code.
/// After there is an application, before there is any text.
void installTranslations();

} // namespace folvane
