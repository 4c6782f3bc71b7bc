#pragma once

#include "stamps/StampInk.h"
#include "stamps/StampMaker.h"

#include <QUuid>

#include <optional>

/// Draws the stamps that stand ready: a word over a date in a double border. Pure functions, for any thread of a program
/// with a QGuiApplication. An empty word or date is none.
namespace folvane::ReadyStampRenderer {

/// Nothing when there is neither word nor date.
std::optional<StampMaker::Stamp> render(const QString& word, const QString& date, StampInk ink);

/// The same for the same contents, on every machine: a name-based UUID of version 5 (RFC 4122) made with SHA-256.
QUuid stampID(const QString& word, const QString& date, StampInk ink);

/// "Nov 23, 2026", in the user's language.
QString today();

} // namespace folvane::ReadyStampRenderer
