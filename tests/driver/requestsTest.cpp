#include "DriverTest.h"

// Lines that are no requests.

namespace folvane {

namespace {

struct BadLine {
    const char* name;
    QByteArray line;
};

class BadLines : public DriverTest, public testing::WithParamInterface<BadLine> {};

TEST_P(BadLines, AreAnsweredAndTheNextIsCarriedOut)
{
    ask("{'do':'open','files':['b.pdf']}");
    const QJsonObject answer = ask(GetParam().line);
    EXPECT_EQ(answer["ok"], QJsonValue(false));
    EXPECT_FALSE(answer["bad"].toString().isEmpty());
    expect("{'do':'state'}", "{'documents':[{'pages':[{},{}]}]}");
}

INSTANTIATE_TEST_SUITE_P(
    Rows, BadLines,
    testing::Values(BadLine{"Blank", ""}, BadLine{"NotJson", "open"},
                    BadLine{"HalfAnObject", "{'do':'state'"}, BadLine{"AnArray", "['state']"},
                    BadLine{"NotUtf8", "{'do':'\xff\xfe'}"}, BadLine{"TooDeep", QByteArray(5000, '[')},
                    BadLine{"TooLong", "{'do':'state','to':'" + QByteArray(17 << 20, 'x') + "'}"},
                    BadLine{"NoVerb", "{}"}, BadLine{"UnknownVerb", "{'do':'sing'}"},
                    BadLine{"AsyncIsText", "{'do':'state','async':'yes'}"},
                    BadLine{"EmptyPath", "{'do':'open','files':['']}"},
                    BadLine{"UnknownTool", "{'do':'open','files':[],'tool':'hammer'}"},
                    BadLine{"PasswordIsNoList", "{'do':'open','files':[],'passwords':{'a':'x'}}"},
                    BadLine{"NoFile", "{'do':'turn'}"}, BadLine{"FileIsNegative", "{'do':'close','file':-1}"},
                    BadLine{"FileIsAFraction", "{'do':'close','file':0.5}"},
                    BadLine{"NoSuchFile", "{'do':'close','file':1}"},
                    BadLine{"HugeFile", "{'do':'close','file':1e300}"},
                    BadLine{"PagesIsText", "{'do':'delete','file':0,'pages':'1'}"},
                    BadLine{"PageZero", "{'do':'delete','file':0,'pages':[0]}"},
                    BadLine{"PagePastTheEnd", "{'do':'delete','file':0,'pages':[3]}"},
                    BadLine{"ClockwiseIsText", "{'do':'turn','file':0,'clockwise':'no'}"},
                    BadLine{"NoPageToDrop", "{'do':'dropPages','file':0}"},
                    BadLine{"UnwritablePicture",
                            "{'do':'image','file':0,'page':1,'longSide':9,'to':'/nowhere/a.png'}"},
                    BadLine{"ToIsANumber", "{'do':'saveAs','file':0,'to':1}"},
                    BadLine{"AsyncAndBad", "{'do':'saveAs','file':7,'async':true}"},
                    BadLine{"TwoWishes", "{'do':'compress','file':0,'choice':'small','limit':5}"},
                    BadLine{"NoSuchStep", "{'do':'compress','file':0,'maxPixels':700,'jpegQuality':1.5}"},
                    BadLine{"RowPastTheEnd", "{'do':'mergeMove','from':0,'to':0}"},
                    BadLine{"OddResolution", "{'do':'exportImages','file':0,'dpi':150}"},
                    BadLine{"NoPages", "{'do':'split','file':0,'mode':'every','every':0}"},
                    BadLine{"UnknownAnswer", "{'do':'closeRequest','file':0,'answer':'perhaps'}"},
                    BadLine{"UnknownJob", "{'do':'cancel','job':1}"},
                    BadLine{"WaitsBeside", "{'do':'wait','job':1,'async':true}"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(DriverTest, GivesTheIdBackAsItCame)
{
    for (const QByteArray id : {"'text'", "9007199254740993", "1.5", "null", "true", "{'a':[1]}"}) {
        expect("{'do':'state','id':" + id + "}", "{'ok':true,'id':" + id + "}");
        expect("{'do':'sing','id':" + id + "}", "{'ok':false,'id':" + id + "}");
    }
    EXPECT_FALSE(ask("{'do':'state'}").contains("id"));
}

TEST_F(DriverTest, AnswersTheLastLineWithoutItsEnd)
{
    m_driver.write("{\"do\":\"rss\"}\n{\"do\":\"state\"}");
    EXPECT_EQ(finish(), 2);
}

} // namespace

} // namespace folvane
