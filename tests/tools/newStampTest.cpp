#include "documents/ModelTest.h"
#include "platform/tasks/background.h"
#include "stamps/ReadyStampRenderer.h"
#include "tools/readyStamps/ReadyStampTile.h"
#include "tools/readyStamps/readyStampRecord.h"
#include "tools/stamps/NewStampSheet.h"

#include <QBuffer>
#include <QPainter>
#include <QTest>

#include <gtest/gtest.h>

namespace folvane {
namespace {

class NewStamps : public testing::Test, public TestFolder {
protected:
    static QByteArray sheet(const QRect& ink)
    {
        QImage image(300, 200, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter(&image).fillRect(ink, Qt::darkBlue);
        QBuffer buffer;
        image.save(&buffer, "PNG");
        return buffer.data();
    }
    void runUntilDone()
    {
        EXPECT_TRUE(QTest::qWaitFor([this] { return !making.isWorking; }, 60'000));
    }
    QString error() const { return making.errorText.value().value_or(QString()); }

    StampLibrary library{path("Stamps")};
    StampMaking making{library};
};

TEST_F(NewStamps, TellWhyThereIsNone)
{
    const QString unreadable = "This image can't be read.";
    const QString noInk = "No signature or stamp found. Try a photo of it on white paper.";
    struct Row {
        StampMaking::Picture picture;
        QString text;
    };
    const InkDrawing click{{512, 220}, StampInk::Red, {{{9, 9}}}};
    for (const auto& [picture, text] :
         {Row{QByteArray("no picture"), unreadable}, Row{url("gone"), unreadable}, Row{sheet({}), noInk},
          Row{click, noInk}}) {
        making.start(picture);
        EXPECT_EQ(error(), "");
        runUntilDone();
        EXPECT_EQ(error(), text);
        EXPECT_FALSE(making.result.value() || making.save("Name"));
    }
}

TEST_F(NewStamps, AreOfTheLastPictureAndOfNoneThatWasStopped)
{
    making.start(sheet({10, 10, 100, 100}));
    making.start(put("wide.png", sheet({10, 10, 200, 40})));
    std::make_unique<StampMaking>(library)->start(sheet({10, 10, 100, 100}));
    runUntilDone();
    const StampMaker::Stamp stamp = making.result.value()->stamp;
    EXPECT_EQ(making.result.value()->preview.size(), QSize(int(stamp.pixelWidth), int(stamp.pixelHeight)));
    EXPECT_GT(stamp.pixelWidth, 3 * stamp.pixelHeight);
}

TEST_F(NewStamps, StayWhenTheyCannotBeStored)
{
    making.start(InkDrawing{{512, 220}, StampInk::Red, {{{50, 50}, {90, 60}}, {{70, 20}, {200, 80}}}});
    runUntilDone();
    put("Stamps", "in the way");
    EXPECT_FALSE(making.save("Mine"));
    EXPECT_TRUE(library.errorMessage.value() && making.result.value());
    QFile::remove(path("Stamps"));
    EXPECT_EQ(making.save("Mine").value_or(StampRecord()).name, "Mine");
}

TEST_F(NewStamps, AreReadyOncePerContents)
{
    const auto choose = [this](const QString& word, const QString& date, StampInk ink) {
        return await(readyStampRecord(library, {word, date}, ink)).value_or(StampRecord());
    };
    const StampRecord paid = choose("PAID", "Nov 23, 2026", StampInk::Red);
    EXPECT_EQ(paid.name, "PAID · Nov 23, 2026");
    EXPECT_EQ(paid.id, ReadyStampRenderer::stampID("PAID", "Nov 23, 2026", StampInk::Red));
    EXPECT_EQ(choose("PAID", "Nov 23, 2026", StampInk::Red), paid);
    EXPECT_EQ(choose({}, {}, StampInk::Red), StampRecord());
    EXPECT_EQ(choose({}, "Nov 23, 2026", StampInk::Blue).name, "Nov 23, 2026");
    EXPECT_EQ(library.stamps.value().size(), 2);
    std::stop_source stop;
    QCoro::Task<std::optional<StampRecord>> stopped =
        readyStampRecord(library, {"COPY", {}}, StampInk::Red, stop.get_token());
    stop.request_stop();
    EXPECT_THROW(await(std::move(stopped)), Cancelled);
    EXPECT_EQ(library.stamps.value().size(), 2);
}

using NewStampSheets = ModelTest;

TEST_F(NewStampSheets, MayGoAtAnyMoment)
{
    for (const StampSource& source : {StampSource{QByteArray("no picture")}, StampSource{url("gone.png")},
                                      StampSource{StampSource::Ready()}, StampSource{StampSource::Drawing()}})
        NewStampSheet(*model, source).open();
    auto sheet = std::make_unique<NewStampSheet>(*model, StampSource{StampSource::Ready()});
    QStringList heard;
    QObject::connect(sheet.get(), &NewStampSheet::saved, model.get(), [&](const StampRecord& record) {
        heard.append(record.name);
        sheet.reset();
        model->stamps.remove(record.id); // the next test begins with the same library
    });
    sheet->open();
    for (int press = 0; press < 2; ++press)
        sheet->findChildren<ReadyStampTile*>().first()->click();
    runUntil([&sheet] { return !sheet; });
    const auto nothing = [] {};
    for (int i = 0; i < 20; ++i)
        await(inBackground(nothing));
    EXPECT_EQ(heard, QStringList{"APPROVED"}) << "once";
}

} // namespace
} // namespace folvane
