#pragma once

#include <QList>
#include <QString>

#include <optional>

namespace folvane {

/// The parts between dots, without empty ones, as views of the host.
QList<QStringView> labelsOf(QStringView host);

/// Whether it is an address of IPv6, or four numbers up to 255, also with signs and leading zeros.
bool isNumericAddress(const QString& host);

/// Whether one label holds letters of two of these: ASCII, Cyrillic, Greek. Labels of one alphabet each are not mixed.
bool hasMixedScripts(const QString& host);

/// The host of an address as it stands in a text, before any parser has rewritten it; nothing when there is none.
std::optional<QString> printedHost(const QString& text);

} // namespace folvane
