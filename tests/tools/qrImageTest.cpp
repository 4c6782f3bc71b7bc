#include "tools/support/QRImage.h"
#include "codes/reading/CodeReader.h"
#include "support/printers.h"
#include "tools/support/DonationNetwork.h"

#include <gtest/gtest.h>

namespace folvane {

TEST(QRImage, IsReadBackAtEverySize)
{
    CodeReader reader;
    for (const QString& text :
         {QStringLiteral("0x0123456789abcdef0123456789abcdef01234567"), QStringLiteral("Überraschung 日本")})
        for (const int side : {120, 168, 251, 336})
            EXPECT_EQ(reader.codes(QRImage::image(text, side)),
                      (std::vector<ReadCode>{{text, CodeSymbology::Qr}}))
                << side;
    EXPECT_TRUE(QRImage::image("a", 20).isNull());
    EXPECT_TRUE(QRImage::image(QString(4000, u'x'), 1000).isNull());
}

TEST(DonationAddresses, BreakInTheMiddle)
{
    EXPECT_EQ(displayed(QString(52, u'a')), QString(52, u'a'));
    EXPECT_EQ(displayed(QString(53, u'a')),
              QString(27, u'a') + QChar(QChar::LineSeparator) + QString(26, u'a'));
}

} // namespace folvane
