#include "pdf/structure/boundedDecoding.h"
#include "pdf/structure/qpdfInclude.h"

#include <gtest/gtest.h>

namespace folvane::pdf {

namespace {

QPDFObjectHandle packedStream(QPDF& qpdf, const std::string& data, const char* filters,
                              const char* parameters)
{
    boundDecoding();
    qpdf.emptyPDF();
    qpdf.setSuppressWarnings(true);
    QPDFObjectHandle stream = qpdf.newStream();
    stream.replaceStreamData(data, QPDFObjectHandle::parse(filters), QPDFObjectHandle::parse(parameters));
    return stream;
}

std::string unpackedText(QPDFObjectHandle stream)
{
    const std::shared_ptr<Buffer> bytes = stream.getStreamData(qpdf_dl_specialized);
    return {reinterpret_cast<const char*>(bytes->getBuffer()), bytes->getSize()};
}

} // namespace

struct DecodingCase {
    const char* name;
    const char* filters;
    const char* parameters;
    std::string packed; ///< in hexadecimal digits
    std::string want;
};

class Decoding : public testing::TestWithParam<DecodingCase> {};

TEST_P(Decoding, GivesWhatTheStandardSays)
{
    QPDF qpdf;
    const std::string packed = QUtil::hex_decode(GetParam().packed);
    EXPECT_EQ(unpackedText(packedStream(qpdf, packed, GetParam().filters, GetParam().parameters)),
              GetParam().want);
}

// The LZW codes are the example of ISO 32000-2, 7.4.4.2; what predictors get is stored by Flate.
const DecodingCase decodings[] = {
    {"Lzw", "/LZWDecode", "null", "800b6050220c0c8501", "-----A---B"},
    {"RunLengths", "/RunLengthDecode", "null", "02616263fe6480", "abcddd"},
    {"PngRows", "/FlateDecode", "<< /Predictor 15 /Columns 3 >>",
     "789c011400ebff0061626301610101020101010361616104010101",
     std::string("abcabcbcd\x92\xdb\0\x93\xdc\1", 15)},
    {"TiffRows", "/FlateDecode", "<< /Predictor 2 /Columns 3 >>", "789c010300fcff610101", "abc"},
    {"TiffRowsOfFourBits", "/FlateDecode", "<< /Predictor 2 /Columns 4 /BitsPerComponent 4 >>",
     "789c010200fdff6ff2", "\x65\x46"}};

INSTANTIATE_TEST_SUITE_P(Rows, Decoding, testing::ValuesIn(decodings),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(DecodingBounds, RowsAndTotalsBeyondReasonAreDamage)
{
    QPDF rows;
    EXPECT_THROW(unpackedText(packedStream(rows, QUtil::hex_decode("789c010300fcff610101"), "/FlateDecode",
                                           "<< /Predictor 2 /Columns 2147483647 >>")),
                 std::exception);
    QPDF total;
    std::string runs;
    for (int i = 0; i < 200'000; ++i)
        runs += "\x81x";
    EXPECT_THROW(unpackedText(packedStream(total, runs, "/RunLengthDecode", "null")), std::exception);
}

} // namespace folvane::pdf
