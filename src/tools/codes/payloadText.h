#pragma once

#include "codes/links/LinkCheck.h"

#include <QFont>

namespace folvane {

class SelectableText;

/// What a code holds, all of it: what could not be seen shows as its name on a grey ground, and is copied as what it is.
SelectableText* makePayloadText(const QString& payload, const QFont& font, QWidget* parent);

/// The name of a site in one line, its parts from left to right, whatever letters they hold.
QString shownSite(const QString& site);

/// The address of a link from left to right, whatever letters it holds, with the site in it that counts marked.
SelectableText* makeAddressText(const LinkCheck& check, QWidget* parent);

} // namespace folvane
