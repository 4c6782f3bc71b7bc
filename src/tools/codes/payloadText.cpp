#include "tools/codes/payloadText.h"

#include "codes/content/shownText.h"
#include "controls/appearance.h"
#include "controls/style/Theme.h"
#include "controls/texts/SelectableText.h"
#include "tools/codes/addressPieces.h"

namespace folvane {

namespace {

constexpr double addressPixels = 13;
constexpr double markPixels = 11;
constexpr QChar leftToRightMark(0x200E);

QTextCharFormat formatOf(const QFont& font, const QColor& color)
{
    QTextCharFormat format;
    format.setFont(font);
    format.setForeground(color);
    return format;
}

QTextCharFormat markFormat()
{
    QTextCharFormat format = formatOf(monospacedFont(markPixels), theme::secondaryText);
    format.setBackground(theme::chrome);
    return format;
}

void append(SelectableText& to, const QString& text, const QTextCharFormat& format)
{
    for (const ShownPiece& piece : shownText(text)) {
        if (piece.isMark)
            to.append(piece.shown, markFormat(), piece.original);
        else
            to.append(piece.shown, format);
    }
}

QTextCharFormat formatOf(AddressPiece::Part part)
{
    switch (part) {
    case AddressPiece::Part::Around: return formatOf(monospacedFont(addressPixels), theme::secondaryText);
    case AddressPiece::Part::Host: return formatOf(monospacedFont(addressPixels), theme::text);
    case AddressPiece::Part::RealSite:
        return formatOf(monospacedFont(addressPixels, Weight::Bold), theme::accent);
    }
    Q_UNREACHABLE();
}

/// Names between dots, and what follows the host, stand from left to right, also where each name runs from right to left.
void appendInOrder(SelectableText& to, const AddressPiece& piece)
{
    const QTextCharFormat format = formatOf(piece.part);
    const QStringList names = piece.text.split(u'.');
    for (qsizetype i = 0; i < names.size(); ++i) {
        if (i > 0) {
            append(to, QStringLiteral("."), format);
            to.append(leftToRightMark, format, QString());
        }
        append(to, names[i], format);
    }
    to.append(leftToRightMark, format, QString());
}

} // namespace

SelectableText* makePayloadText(const QString& payload, const QFont& font, QWidget* parent)
{
    auto* text = new SelectableText(std::nullopt, parent);
    append(*text, payload, formatOf(font, theme::text));
    return text;
}

QString shownSite(const QString& site)
{
    return shownLine(site).replace(u'.', QStringLiteral(".") + leftToRightMark);
}

SelectableText* makeAddressText(const LinkCheck& check, QWidget* parent)
{
    auto* text = new SelectableText(Qt::LeftToRight, parent);
    for (const AddressPiece& piece : addressPieces(check)) {
        if (piece.part == AddressPiece::Part::Around)
            append(*text, piece.text, formatOf(piece.part));
        else
            appendInOrder(*text, piece);
    }
    return text;
}

} // namespace folvane
