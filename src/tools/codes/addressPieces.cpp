#include "tools/codes/addressPieces.h"

#include <QRegularExpression>

#include <algorithm>

namespace folvane {

namespace {

using Part = AddressPiece::Part;

void append(std::vector<AddressPiece>& pieces, const QString& text, Part part)
{
    if (!text.isEmpty())
        pieces.push_back({text, part});
}

/// A known name may stand further to the left: the last one counts.
void appendHost(std::vector<AddressPiece>& pieces, const QString& host, const QString& realSite)
{
    const qsizetype at = realSite.isEmpty() ? -1 : host.lastIndexOf(realSite);
    append(pieces, host.left(at), Part::Host);
    if (at < 0)
        return;
    append(pieces, realSite, Part::RealSite);
    append(pieces, host.mid(at + realSite.size()), Part::Host);
}

/// Where the host can begin: a user name before it may hold the same letters.
qsizetype endOfUserName(const QString& address)
{
    const QString mark = QStringLiteral("://");
    const qsizetype begin = address.indexOf(mark) + mark.size();
    const qsizetype end = address.indexOf(QRegularExpression(QStringLiteral("[/?#]")), begin);
    return std::max(begin, address.left(end).lastIndexOf(u'@') + 1);
}

} // namespace

std::vector<AddressPiece> addressPieces(const LinkCheck& check)
{
    const QString& address = check.displayAddress;
    const qsizetype at = check.host.isEmpty() ? -1 : address.indexOf(check.host, endOfUserName(address));
    std::vector<AddressPiece> pieces;
    append(pieces, address.left(at), Part::Around);
    if (at < 0)
        return pieces;
    appendHost(pieces, check.host, check.realSite);
    append(pieces, address.mid(at + check.host.size()), Part::Around);
    return pieces;
}

} // namespace folvane
