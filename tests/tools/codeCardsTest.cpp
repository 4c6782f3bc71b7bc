#include "controls/texts/SelectableText.h"
#include "support/printers.h"
#include "tools/codes/addressPieces.h"
#include "tools/codes/payloadText.h"

#include <QClipboard>
#include <QGuiApplication>

#include <gtest/gtest.h>

namespace folvane {

namespace {

/// "around[host<site>host]around".
QString told(const QString& url)
{
    QString text;
    for (const AddressPiece& piece : addressPieces(checkLink(QUrl(url), url)))
        text += piece.part == AddressPiece::Part::Around ? piece.text
                : piece.part == AddressPiece::Part::Host ? '[' + piece.text + ']'
                                                         : '<' + piece.text + '>';
    return text;
}

} // namespace

TEST(AddressPieces, LeadToTheRealSite)
{
    for (const auto& [url, want] :
         {std::pair("https://example.org/a", "https://<example.org>/a"),
          {"https://paypal.com.example.com/example.com", "https://[paypal.com.]<example.com>/example.com"},
          {"https://ank.com@ank.com/", "https://ank.com@<ank.com>/"},
          {"http://[::1]:80/", "http://[<::1>]:80/"},
          {"https://a.xn--bcher-kva.example?q", "https://[a.]<bücher.example>?q"}})
        EXPECT_EQ(told(url), want);
}

TEST(PayloadText, IsCopiedAsItIs)
{
    QWidget parent;
    for (const QString& payload : {QStringLiteral("a\u202E\u202Eb\nc\u0007"), QStringLiteral("plain")}) {
        SelectableText* text = makePayloadText(payload, QFont(), &parent);
        EXPECT_EQ(text->toPlainText().contains("U+202E"), payload.contains(QChar(0x202E)));
        text->selectAll();
        text->copy();
        EXPECT_EQ(QGuiApplication::clipboard()->text(), payload);
    }
    const QString address = QStringLiteral("https://a.\u05d0.\u05d1/123");
    SelectableText* text = makeAddressText(checkLink(QUrl(address), address), &parent);
    EXPECT_TRUE(text->toPlainText().contains(u"\u05d0.\u200E\u05d1\u200E/123")) << "what keeps all in order";
    text->selectAll();
    text->copy();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), address);
}

} // namespace folvane
