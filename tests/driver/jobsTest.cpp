#include "DriverTest.h"

#include "support/madePdf.h"

#include <QFile>

// A job that goes on beside the requests that follow. The engine does one thing at a time: a page that takes
// long to draw keeps it busy, so that a save behind it is surely still waiting when the next lines are read.

namespace folvane {

namespace {

class Jobs : public DriverTest {
protected:
    Jobs()
    {
        QByteArray lines = "40 w\n";
        for (int i = 0; i < 400; ++i)
            lines +=
                "0 " + QByteArray::number(2 * i) + " m 600 " + QByteArray::number(800 - 2 * i) + " l S\n";
        write("slow.pdf", pdfOfPages({{lines}}));
        ask("{'do':'open','files':['a.pdf','slow.pdf']}");
    }
    void keepEngineBusy()
    {
        send("{'do':'image','file':1,'page':1,'longSide':1000,'async':true}");
        expectNext("{'job':1}");
    }
};

TEST_F(Jobs, AnswerAtOnceAndTellTheirEndOnce)
{
    const QJsonObject started = ask("{'do':'saveAs','file':0,'to':'copy.pdf','async':true,'id':'save'}");
    EXPECT_EQ(started, (QJsonObject{{"id", "save"}, {"ok", true}, {"job", 1}}));
    expect("{'do':'wait','job':1,'id':7}",
           "{'id':7,'outcome':'done','saved':['@/copy.pdf'],'panels':[{}],'toast':'Saved “copy.pdf”'}");
    expect("{'do':'wait','job':1}", "{'ok':false}");
    makeLocked("locked.pdf", "pw");
    ask("{'do':'open','files':'locked.pdf','passwords':{'locked.pdf':['pw']},'async':true}");
    expect("{'do':'wait','job':2}", "{'outcome':'done','prompts':[{'fileName':'locked.pdf'}]}");
}

TEST_F(Jobs, CancelledWriteNothing)
{
    for (const char* request :
         {"{'do':'saveAs','file':0,'to':'copy.pdf','async':true}", "{'do':'measure','file':0,'async':true}",
          "{'do':'compress','file':0,'limit':1,'to':'copy.pdf','async':true}"}) {
        send("{'do':'image','file':1,'page':1,'longSide':1000,'async':true}");
        send(request);
        receive();
        const QByteArray job = QByteArray::number(receive()["job"].toInt());
        expect("{'do':'cancel','job':" + job + "}", "{'outcome':'cancelled','error':null,'toast':null}");
    }
    EXPECT_FALSE(QFile::exists(path("copy.pdf")));
    expect("{'do':'state'}", "{'busy':null}");
}

TEST_F(Jobs, SecondIsDroppedAfterItsPanel)
{
    keepEngineBusy();
    expect("{'do':'saveAs','file':0,'to':'first.pdf','async':true}", "{'job':2}");
    expect("{'do':'extract','file':0,'to':'second.pdf'}", "{'outcome':'dropped','error':null,'panels':[{}]}");
    expect("{'do':'saveAs','file':0}", "{'outcome':'cancelled'}");
    expect("{'do':'saveAs','file':0,'to':'a.pdf'}", "{'outcome':'refused'}");
    expect("{'do':'wait','job':2}", "{'outcome':'done','saved':['@/first.pdf']}");
    EXPECT_FALSE(QFile::exists(path("second.pdf")));
}

TEST_F(Jobs, KeepTheirErrorsFromOtherRequests)
{
    keepEngineBusy();
    ask("{'do':'saveAs','file':0,'to':'full.pdf','async':true}");
    expect("{'do':'delete','file':1}",
           "{'error':'A file needs at least one page. To get rid of it, close the file.'}");
    expect("{'do':'wait','job':2}", "{'outcome':'failed','error':'No space left on device'}");
}

TEST_F(Jobs, StopAtTheEndOfInput)
{
    send("{'do':'image','file':1,'page':1,'longSide':1000,'async':true}");
    send("{'do':'saveAs','file':0,'to':'copy.pdf','async':true}");
    EXPECT_EQ(finish(), 2);
    EXPECT_FALSE(QFile::exists(path("copy.pdf")));
}

} // namespace

} // namespace folvane
