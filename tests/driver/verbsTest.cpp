#include "DriverTest.h"

#include "support/madePdf.h"

#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QRandomGenerator>

// Each verb once: the fields that it takes and tells.

namespace folvane {

namespace {

struct Edit {
    const char* name;
    const char* request;   ///< to a document of five pages, of which the second and the fourth are selected
    const char* pages;     ///< by index in their source, with their turn
    const char* selection; ///< positions
};

class Edits : public DriverTest, public testing::WithParamInterface<Edit> {};

TEST_P(Edits, AreToldByTheState)
{
    write("new.pdf", numberedPdf("new", 1));
    ask("{'do':'open','files':['a.pdf']}");
    ask("{'do':'select','file':0,'pages':[4,2]}");
    expect(GetParam().request, "{'outcome':'done'}");
    const QJsonValue document = ask("{'do':'state'}")["documents"][0];
    QStringList pages;
    for (const QJsonValue page : document["pages"].toArray())
        pages << QString::number(page["index"].toInt()) + QString(page["turn"].toInt() / 90, u'\'');
    QStringList selection;
    for (const QJsonValue position : document["selection"].toArray())
        selection << QString::number(position.toInt());
    EXPECT_EQ(pages.join(u' ').toStdString(), GetParam().pages);
    EXPECT_EQ(selection.join(u' ').toStdString(), GetParam().selection);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, Edits,
    testing::Values(
        Edit{"SelectAll", "{'do':'select','file':0}", "0 1 2 3 4", "1 2 3 4 5"},
        Edit{"SelectNone", "{'do':'select','file':0,'pages':[]}", "0 1 2 3 4", ""},
        Edit{"TurnTheSelection", "{'do':'turn','file':0}", "0 1' 2 3' 4", "2 4"},
        Edit{"TurnLeft", "{'do':'turn','file':0,'pages':[1],'clockwise':false}", "0''' 1 2 3 4", "2 4"},
        Edit{"TurnNothing", "{'do':'turn','file':0,'pages':[]}", "0 1 2 3 4", "2 4"},
        Edit{"DeleteTheSelection", "{'do':'delete','file':0}", "0 2 4", ""},
        Edit{"DeleteOthers", "{'do':'delete','file':0,'pages':[5,1]}", "1 2 3", "1 3"},
        Edit{"MoveTheSelection", "{'do':'move','file':0,'before':1}", "1 3 0 2 4", "1 2"},
        Edit{"MoveToTheEnd", "{'do':'move','file':0,'pages':[1],'before':null}", "1 2 3 4 0", "1 3"},
        Edit{"DropASelectedPage", "{'do':'dropPages','file':0,'page':4,'before':1}", "1 3 0 2 4", "1 2"},
        Edit{"DropAnotherPage", "{'do':'dropPages','file':0,'page':5,'before':1}", "4 0 1 2 3", "3 5"},
        Edit{"Insert", "{'do':'insert','file':0,'files':['new.pdf']}", "0 1 2 3 0 4", "5"}),
    [](const auto& row) { return std::string(row.param.name); });

struct Exchange {
    const char* request;
    const char* answer; ///< what it must hold at least
};

struct Talk {
    const char* name;
    QList<Exchange> exchanges;
};

class Talks : public DriverTest, public testing::WithParamInterface<Talk> {
protected:
    Talks()
    {
        QImage photo(1400, 1050, QImage::Format_RGB32);
        QRandomGenerator random(7);
        for (int y = 0; y < photo.height(); ++y)
            for (int x = 0; x < photo.width(); ++x)
                photo.setPixel(x, y, random.generate());
        photo.save(path("photo.jpg"));
        makeLocked("locked.pdf", "pw");
        write("there.pdf", "old");
    }
};

TEST_P(Talks, GoAsTheProtocolSays)
{
    for (const Exchange& exchange : GetParam().exchanges)
        expect(exchange.request, exchange.answer);
}

const Exchange openA{"{'do':'open','files':['a.pdf']}", "{'outcome':'done','file':0}"};
const Exchange openPhoto{"{'do':'open','files':['photo.jpg']}", "{'outcome':'done'}"};
const Exchange editA{"{'do':'turn','file':0,'pages':[1]}", "{'outcome':'done'}"};

INSTANTIATE_TEST_SUITE_P(
    Rows, Talks,
    testing::Values(
        Talk{"Open",
             {{"{'do':'state'}", "{'destination':'home','file':null,'documents':[]}"},
              {"{'do':'open','files':['b.pdf','photo.jpg','a.pdf'],'tool':'split','id':[7]}",
               "{'id':[7],'ok':true,'outcome':'done','error':null,'toast':null,'prompts':[],'panels':[],"
               "'saved':[],'bytes':0,'file':2}"},
              {"{'do':'state'}", "{'destination':'file','sheet':'split','file':2}"},
              {"{'do':'open','files':'notes.txt'}",
               "{'outcome':'refused','error':'Folvane opens PDFs and images.'}"},
              {"{'do':'open','files':['notes.txt','none.pdf']}", "{'outcome':'failed','file':2}"},
              {"{'do':'insert','file':0,'files':['none.pdf']}", "{'outcome':'failed'}"}}},
        Talk{"State",
             {openA,
              editA,
              {"{'do':'state'}",
               "{'busy':null,'closing':null,'sheet':null,'merge':[],'documents':[{'url':'file://@/a.pdf',"
               "'name':'a','isPDF':true,'isEdited':true,'locked':false,'selection':[],"
               "'statusLine':'5 pages · not saved','pages':[{'path':'@/a.pdf','index':0,'turn':90,"
               "'width':800,'height':600,'stamps':[]},{},{},{},{}]}]}"}}},
        Talk{"RefuseToDeleteAll", {openA, {"{'do':'delete','file':0,'pages':[]}", "{'outcome':'refused'}"}}},
        Talk{"SavePanel",
             {openA,
              {"{'do':'saveAs','file':0}",
               "{'outcome':'cancelled','saved':[],'panels':[{'kind':'save','name':'a (edited).pdf',"
               "'near':'@','prompt':null,'types':['pdf']}]}"},
              {"{'do':'saveAs','file':0,'to':'there'}",
               "{'outcome':'cancelled','panels':[{},{'kind':'replace','name':'there.pdf','near':'@'},{}]}"},
              {"{'do':'saveAs','file':0,'to':['there','else.pdf']}", "{'saved':['@/else.pdf']}"},
              {"{'do':'saveAs','file':0,'to':'there','replace':true}",
               "{'outcome':'done','saved':['@/there.pdf'],'toast':'Saved “there.pdf”'}"},
              {"{'do':'state','to':'left-over.pdf'}", "{'ok':true}"},
              {"{'do':'saveAs','file':0}", "{'outcome':'cancelled'}"},
              {"{'do':'saveAs','file':0,'to':'a.pdf'}", "{'outcome':'refused'}"},
              {"{'do':'saveAs','file':0,'to':'full.pdf'}",
               "{'outcome':'failed','error':'No space left on device'}"}}},
        Talk{"Extract",
             {openA,
              {"{'do':'extract','file':0,'pages':[5,1,2],'to':'copy.pdf'}",
               "{'outcome':'done','panels':[{'name':'a (pages 1-2, 5).pdf'}],'saved':['@/copy.pdf']}"},
              {"{'do':'state'}", "{'documents':[{'selection':[1,2,5]}]}"}}},
        Talk{"Compress",
             {openPhoto,
              {"{'do':'compress','file':0,'choice':'small','to':'s.pdf'}", "{'builds':1,'reached':null}"},
              {"{'do':'measure','file':0}", "{'outcome':'done','mostlyTextNote':null}"},
              {"{'do':'compress','file':0,'choice':'small','to':'s.pdf'}", "{'outcome':'done','builds':0}"},
              {"{'do':'compress','file':0,'limit':100000000,'to':'s.pdf'}",
               "{'builds':0,'reached':true,'pagesAsPictures':false}"},
              {"{'do':'compress','file':0,'limit':1,'to':'s.pdf'}", "{'builds':3,'reached':false}"},
              {"{'do':'compress','file':0,'maxPixels':700,'jpegQuality':0.2,'pagesAsPictures':true,'to':'s."
               "pdf'}",
               "{'builds':1,'reached':null,'pagesAsPictures':true}"},
              {"{'do':'compress','file':0,'choice':'small'}", "{'outcome':'cancelled','saved':[]}"},
              {"{'do':'turn','file':0}", "{}"},
              {"{'do':'compress','file':0,'choice':'small','to':'s.pdf'}", "{'builds':1}"}}},
        Talk{"Merge",
             {openA,
              {"{'do':'mergeAdd','file':0}", "{'outcome':'done'}"},
              {"{'do':'merge','to':'m.pdf'}", "{'outcome':'refused'}"},
              {"{'do':'mergeAdd','files':['b.pdf','locked.pdf']}",
               "{'outcome':'cancelled','prompts':[{'fileName':'locked.pdf','wasWrong':false}]}"},
              {"{'do':'mergeAdd','files':'none.pdf'}", "{'outcome':'failed'}"},
              {"{'do':'mergeAdd','files':'photo.jpg'}", "{'outcome':'done'}"},
              {"{'do':'mergeMove','from':2,'to':0}", "{'outcome':'done'}"},
              {"{'do':'mergeMove','from':[0,1],'to':3}", "{'outcome':'done'}"},
              {"{'do':'state'}",
               "{'destination':'merge','merge':[{'name':'b','pages':2},{'name':'photo','pages':1},"
               "{'name':'a','pages':5}]}"},
              {"{'do':'mergeRemove','row':1}", "{'outcome':'done'}"},
              {"{'do':'merge'}", "{'outcome':'cancelled'}"},
              {"{'do':'merge','to':'m.pdf'}",
               "{'outcome':'done','saved':['@/m.pdf'],'panels':[{'name':'b (merged).pdf'}]}"},
              {"{'do':'mergeClear'}", "{'outcome':'done'}"},
              {"{'do':'state'}", "{'merge':[]}"}}},
        Talk{"Split",
             {openA,
              {"{'do':'split','file':0,'mode':'ranges','ranges':'2-1','folder':'.'}",
               "{'outcome':'refused','panels':[]}"},
              {"{'do':'split','file':0,'mode':'each'}", "{'outcome':'cancelled'}"},
              {"{'do':'split','file':0,'mode':'every','every':3,'folder':'.'}",
               "{'outcome':'done','saved':['@/./a 1-3.pdf','@/./a 4-5.pdf'],"
               "'panels':[{'kind':'folder','prompt':'Split Here'}]}"},
              {"{'do':'select','file':0,'pages':[1,4]}", "{}"},
              {"{'do':'split','file':0,'mode':'ranges','folder':'.'}", "{'summary':'Makes 2 files: 1, 4'}"}}},
        Talk{"Password",
             {{"{'do':'open','files':['locked.pdf'],'passwords':{'locked.pdf':['no','pw']}}",
               "{'outcome':'done','prompts':[{'fileName':'locked.pdf','wasWrong':false},"
               "{'fileName':'locked.pdf','wasWrong':true}]}"},
              {"{'do':'state'}", "{'documents':[{'locked':true}]}"},
              {"{'do':'password','file':0,'password':'','to':'e.pdf'}", "{'outcome':'refused'}"},
              {"{'do':'password','file':0,'password':'new','to':'new.pdf'}",
               "{'outcome':'done','panels':[{'name':'locked (protected).pdf'}]}"},
              {"{'do':'password','file':0,'to':'free.pdf'}",
               "{'outcome':'done','panels':[{'name':'locked (no password).pdf'}]}"},
              {"{'do':'split','file':0,'mode':'each','folder':'.'}", "{'outcome':'done'}"},
              {"{'do':'open','files':['locked 1.pdf']}", "{'outcome':'cancelled','prompts':[{}]}"},
              {"{'do':'compress','file':0,'limit':1,'to':'small.pdf'}", "{'outcome':'done'}"},
              {"{'do':'open','files':['small.pdf']}", "{'outcome':'cancelled','prompts':[{}]}"},
              {"{'do':'open','files':['new.pdf']}", "{'outcome':'cancelled','prompts':[{}]}"},
              {"{'do':'open','files':['new.pdf'],'passwords':{'new.pdf':['new']}}", "{'outcome':'done'}"},
              {"{'do':'open','files':['free.pdf']}", "{'outcome':'done','prompts':[]}"}}},
        Talk{"Export",
             {openA,
              {"{'do':'exportImages','file':0,'pages':[5,2],'jpeg':true,'dpi':100,'folder':'.'}",
               "{'outcome':'done','saved':['@/./a page 2.jpg','@/./a page 5.jpg']}"},
              {"{'do':'exportImages','file':0,'pages':[1],'folder':'.'}", "{'saved':['@/./a page 1.jpg']}"}}},
        Talk{"Close",
             {openA,
              {"{'do':'open','files':['b.pdf']}", "{'file':1}"},
              editA,
              {"{'do':'closeRequest','file':0,'answer':'cancel'}",
               "{'outcome':'cancelled','names':['a'],'verdict':'open'}"},
              {"{'do':'closeRequest','file':0,'answer':'saveAs','to':'b.pdf'}", "{'outcome':'refused'}"},
              {"{'do':'closeRequest','file':0,'answer':'saveAs','to':'copy.pdf'}",
               "{'outcome':'done','names':['a'],'verdict':'open','saved':['@/copy.pdf']}"},
              editA,
              {"{'do':'closeRequest','file':0,'answer':'dontSave'}", "{'outcome':'done','verdict':'closed'}"},
              editA,
              {"{'do':'close','file':0}", "{'outcome':'done','names':[],'verdict':'closed'}"},
              {"{'do':'state'}", "{'documents':[],'closing':null}"}}},
        Talk{"Quit",
             {openA,
              {"{'do':'quit'}", "{'outcome':'done','names':[],'verdict':'terminateNow'}"},
              editA,
              {"{'do':'quit'}", "{'outcome':'cancelled','names':['a'],'verdict':'terminateCancel'}"},
              {"{'do':'quit','answer':'quitAnyway'}", "{'outcome':'done','verdict':'terminateNow'}"}}},
        Talk{"Image",
             {openA,
              editA,
              {"{'do':'image','file':0,'page':1,'longSide':80,'to':'a.png'}",
               "{'outcome':'done','width':80,'height':60}"}}},
        Talk{"PageNumbers",
             {{"{'do':'parse','text':'8-10; 1–3','count':10}", "{'ranges':[[8,10],[1,3]]}"},
              {"{'do':'parse','text':'5-3','count':10}", "{'ranges':null}"},
              {"{'do':'describe','numbers':[9,1,2,3,5,8,3]}", "{'text':'1-3, 5, 8-9'}"}}}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(DriverTest, TellsItsPeak)
{
    EXPECT_GT(ask("{'do':'rss'}")["peak"].toDouble(), 5e6);
}

TEST_F(DriverTest, KeepsWhatItCountsToItself)
{
    ask("{'do':'open','files':['a.pdf']}");
    EXPECT_GT(ask("{'do':'saveAs','file':0,'to':'one.pdf'}")["bytes"].toInt(), 500);
    finish();
    QFile preferences(path("folvane/folvane.ini"));
    ASSERT_TRUE(preferences.open(QIODevice::ReadOnly));
    EXPECT_TRUE(preferences.readAll().contains("friend.savedFiles=1"));
}

} // namespace

} // namespace folvane
