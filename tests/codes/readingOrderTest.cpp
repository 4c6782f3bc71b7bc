#include "codes/reading/readingOrder.h"
#include "codes/reading/codeMessages.h"
#include "codes/reading/symbologies.h"

#include <gtest/gtest.h>

namespace folvane {

namespace {

/// A code of 10 % with its middle there; y downwards.
CodeObservation codeAt(const QString& payload, double x, double y)
{
    const double left = x - 0.05, right = x + 0.05, top = y - 0.05, bottom = y + 0.05;
    return {payload,
            CodeSymbology::Qr,
            {QPointF(left, bottom), QPointF(left, top), QPointF(right, top), QPointF(right, bottom)}};
}

QString order(const std::vector<CodeObservation>& seen)
{
    QString payloads;
    for (const ReadCode& code : withoutRepetitions(inReadingOrder(seen)))
        payloads += code.payload;
    return payloads;
}

struct OrderCase {
    const char* name;
    std::vector<CodeObservation> seen;
    const char* want;
};

class ReadingOrder : public testing::TestWithParam<OrderCase> {};

} // namespace

TEST_P(ReadingOrder, IsThatOfAPerson)
{
    std::vector<CodeObservation> seen = GetParam().seen;
    EXPECT_EQ(order(seen), GetParam().want);
    std::ranges::reverse(seen);
    EXPECT_EQ(order(seen), GetParam().want);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, ReadingOrder,
    testing::Values(
        OrderCase{"OneRowThoughTheRightOneIsHigher", {codeAt("b", 0.8, 0.5), codeAt("a", 0.2, 0.515)}, "ab"},
        OrderCase{"TwoRows", {codeAt("b", 0.8, 0.5), codeAt("a", 0.2, 0.53)}, "ba"},
        OrderCase{"RowsThatOverlap",
                  {codeAt("a", 0.1, 0.50), codeAt("c", 0.3, 0.515), codeAt("b", 0.2, 0.53)},
                  "abc"},
        OrderCase{"ACircleFromTheTop",
                  {codeAt("a", 0.3, 0.50), codeAt("b", 0.2, 0.515), codeAt("c", 0.1, 0.53)},
                  "abc"},
        OrderCase{"RepetitionsAndNothing",
                  {codeAt("a", 0.1, 0.1), codeAt("", 0.2, 0.2), codeAt("a", 0.3, 0.3)},
                  "a"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(ReadingOrder, KeepsTheFirstKindOfAPayload)
{
    std::vector<CodeObservation> seen{codeAt("a", 0.5, 0.9), codeAt("a", 0.5, 0.1)};
    seen[1].symbology = CodeSymbology::Aztec;
    const std::vector<ReadCode> want{{"a", CodeSymbology::Aztec}};
    EXPECT_EQ(withoutRepetitions(inReadingOrder(seen)), want);
}

TEST(CodeMessages, TakeOnlyWhatIsSound)
{
    const std::vector<CodeObservation> codes{codeAt(QStringLiteral("Grüße"), 0.2, 0.3),
                                             codeAt("b", 0.5, 0.5)};
    const QByteArray sound = encodedCodes(codes);
    EXPECT_EQ(decodedCodes(sound), codes);
    for (qsizetype length = 0; length < sound.size(); ++length)
        EXPECT_FALSE(decodedCodes(sound.left(length))) << length;
    EXPECT_FALSE(decodedCodes(sound + 'x'));
    constexpr qsizetype symbology = 4, text = 9, corner = 16; // where the first code has them
    const auto with = [&](qsizetype at, const QByteArray& bytes) {
        return QByteArray(sound).replace(at, bytes.size(), bytes);
    };
    EXPECT_TRUE(decodedCodes(with(symbology, QByteArray(1, char(CodeSymbology::Other)))));
    EXPECT_FALSE(decodedCodes(with(symbology, QByteArray(1, char(CodeSymbology::Other) + 1))));
    EXPECT_FALSE(decodedCodes(with(text, "\xff")));
    EXPECT_FALSE(decodedCodes(with(corner, QByteArray("\x7f\xf0\0\0\0\0\0\0", 8)))) << "infinite";
    EXPECT_FALSE(decodedCodes(with(symbology + 1, "\xff\xff\xff\xfe"))) << "a text of four gigabytes";
    EXPECT_FALSE(decodedCodes(with(0, "\xff\xff\xff\xff"))) << "as many codes";
}

TEST(Symbologies, HaveNames)
{
    EXPECT_EQ(rawText(CodeSymbology::MicroQr) + displayName(CodeSymbology::I2of5),
              "microQRInterleaved 2 of 5");
    EXPECT_EQ(rawText(CodeSymbology::Other) + displayName(CodeSymbology::Other), "otherBarcode");
}

} // namespace folvane
