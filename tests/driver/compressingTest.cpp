#include "DriverTest.h"

#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>
#include <QRandomGenerator>

namespace folvane {
namespace {

class Compressing : public DriverTest {
protected:
    /// A PDF of one page with a photo that fills it; some hundred KB.
    QString photo(const QString& name) const
    {
        QImage grain(120, 90, QImage::Format_RGB32);
        QRandomGenerator random(7);
        for (int y = 0; y < grain.height(); ++y)
            for (int x = 0; x < grain.width(); ++x)
                grain.setPixel(x, y, random.generate());
        QPdfWriter writer(path(name));
        QPainter painter(&writer);
        painter.drawImage(painter.viewport(),
                          grain.scaled(2800, 2100, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
        return path(name);
    }

    QJsonObject compress(QJsonObject fields, const QString& to = QStringLiteral("out.pdf"))
    {
        fields["file"] = 0;
        fields["to"] = path(to);
        return ask("compress", fields);
    }
};

TEST_F(Compressing, SavesToTheByteWhatWasMeasured)
{
    open({photo("photo.pdf")});
    const QJsonObject measured = ask("measure", {{"file", 0}});
    EXPECT_THAT(measured, HasOutcome("done"));
    EXPECT_GT(measured["original"].toInteger(), measured["medium"].toInteger());
    EXPECT_GT(measured["medium"].toInteger(), measured["small"].toInteger());
    EXPECT_TRUE(measured["mostlyTextNote"].isNull());
    for (const char* choice : {"original", "medium", "small"}) {
        const QString name = QLatin1String(choice) + QStringLiteral(".pdf");
        const QJsonObject saved = compress({{"choice", choice}}, name);
        EXPECT_THAT(saved, HasOutcome("done"));
        EXPECT_EQ(saved["builds"].toInt(-1), 0) << choice;
        EXPECT_EQ(QFileInfo(path(name)).size(), measured[QLatin1String(choice)].toInteger());
        EXPECT_TRUE(isSound(path(name)));
    }
}

TEST_F(Compressing, BuildsWhatNobodyMeasured)
{
    open({photo("photo.pdf")});
    EXPECT_EQ(compress({{"choice", "small"}})["builds"].toInt(), 1);
    const qint64 small = QFileInfo(path("out.pdf")).size();
    EXPECT_EQ(compress({{"limit", 100'000'000}})["builds"].toInt(), 1) << "it fits as it is";
    const qint64 original = QFileInfo(path("out.pdf")).size();
    EXPECT_EQ(ask("measure", {{"file", 0}})["small"].toInteger(), small);
    EXPECT_EQ(compress({{"limit", 100'000'000}})["builds"].toInt(-1), 0);
    EXPECT_EQ(compress({{"limit", original}})["reached"], QJsonValue(true)) << "exactly the limit";
    const QJsonObject fits = compress({{"limit", original - 1}});
    EXPECT_EQ(fits["reached"], QJsonValue(true));
    EXPECT_EQ(fits["pagesAsPictures"], QJsonValue(false));
    EXPECT_LT(fits["bytes"].toInteger(), original);
    EXPECT_EQ(fits["builds"].toInt(), 2) << "the seventh and the second; three were measured";
    ask("turn", {{"file", 0}});
    EXPECT_EQ(compress({{"choice", "small"}})["builds"].toInt(), 1) << "turned, it is another document";
}

TEST_F(Compressing, GivesTheSmallestItCanMakeForALimitOutOfReach)
{
    open({pdf("text.pdf", {"one", "two"})});
    const QJsonObject measured = ask("measure", {{"file", 0}});
    EXPECT_EQ(measured["mostlyTextNote"].toString(),
              "Pictures in this PDF can't get much smaller while it keeps its text. Up to N MB can turn the "
              "pages into pictures when that's the only way to fit.");
    const QJsonObject smallest = compress({{"limit", 1}});
    EXPECT_THAT(smallest, HasOutcome("done"));
    EXPECT_EQ(smallest["reached"], QJsonValue(false));
    EXPECT_EQ(smallest["builds"].toInt(), 3) << "the last with text, the first and the last of pictures";
    EXPECT_EQ(smallest["pagesAsPictures"], QJsonValue(false)) << "text takes less";
    EXPECT_EQ(texts(path("out.pdf")), (QStringList{"one", "two"}));
    EXPECT_EQ(smallest["panels"][0]["name"].toString().section(" (", 0, 0), "text");
}

TEST_F(Compressing, BuildsAStepAlone)
{
    open({pdf("text.pdf", {"one"}), photo("photo.pdf")});
    const auto make = [this](int file, const QJsonObject& step) {
        QJsonObject fields = step;
        fields["file"] = file;
        fields["to"] = path("step.pdf");
        return ask("compress", fields);
    };
    const QJsonObject small = make(1, {{"maxPixels", 1300}, {"jpegQuality", 0.55}});
    EXPECT_THAT(small, HasOutcome("done"));
    EXPECT_TRUE(small["reached"].isNull());
    EXPECT_EQ(small["pagesAsPictures"], QJsonValue(false));
    EXPECT_EQ(small["bytes"].toInteger(), ask("measure", {{"file", 1}})["small"].toInteger());
    EXPECT_LT(make(1, {{"maxPixels", 400}, {"jpegQuality", 0.2}})["bytes"].toInteger(),
              small["bytes"].toInteger());
    const QJsonObject pictures =
        make(0, {{"maxPixels", 700}, {"jpegQuality", 0.2}, {"pagesAsPictures", true}});
    EXPECT_EQ(pictures["pagesAsPictures"], QJsonValue(true));
    EXPECT_EQ(texts(path("step.pdf")), QStringList{""});
}

TEST_F(Compressing, KeepsThePassword)
{
    open({lockedPdf("locked.pdf", {"secret"}, "key")},
         {{"passwords", QJsonObject{{path("locked.pdf"), QJsonArray{"key"}}}}});
    for (const QJsonObject& wanted : {QJsonObject{{"choice", "small"}}, QJsonObject{{"limit", 1}}}) {
        EXPECT_THAT(compress(wanted), HasOutcome("done"));
        EXPECT_EQ(texts(path("out.pdf"), "key"), QStringList{"secret"});
        EXPECT_FALSE(isSound(path("out.pdf")));
        EXPECT_TRUE(isSound(path("out.pdf"), "key"));
    }
}

TEST_F(Compressing, TellsWhyItFailed)
{
    open({pdf("text.pdf", {"one"})});
    ask("measure", {{"file", 0}});
    file("text.pdf", "no longer what it was");
    const QString why = "A page of this file can't be read anymore. Open the file again.";
    const QJsonObject measured = ask("measure", {{"file", 0}});
    EXPECT_THAT(measured, HasOutcome("failed"));
    EXPECT_THAT(measured, HasError(why));
    EXPECT_TRUE(measured["original"].isNull());
    const QJsonObject compressed = compress({{"limit", 1}});
    EXPECT_THAT(compressed, HasOutcome("failed"));
    EXPECT_THAT(compressed, HasError(why));
    EXPECT_EQ(compressed["builds"].toInt(), 1);
    EXPECT_FALSE(QFile::exists(path("out.pdf")));
    EXPECT_THAT(compress({{"choice", "small"}}), HasOutcome("done")) << "that one is measured";
}

TEST_F(Compressing, EndsWhenItIsCancelled)
{
    open({photo("photo.pdf"), slowPdf("slow.pdf")});
    for (const QJsonObject& work : {QJsonObject{{"do", "measure"}},
                                    QJsonObject{{"do", "compress"}, {"limit", 1}, {"to", path("out.pdf")}}}) {
        driver->send({{"do", "image"}, {"file", 1}, {"page", 1}, {"longSide", 1000}, {"async", true}});
        QJsonObject request = work;
        request["file"] = 0;
        request["async"] = true;
        driver->send(request);
        driver->receive();
        const QJsonObject cancelled = ask("cancel", {{"job", driver->receive()["job"]}});
        EXPECT_THAT(cancelled, HasOutcome("cancelled"));
        EXPECT_TRUE(cancelled["error"].isNull());
    }
    EXPECT_FALSE(QFile::exists(path("out.pdf")));
    EXPECT_THAT(ask("compress", {{"file", 0}, {"choice", "small"}}), HasOutcome("cancelled")) << "the panel";
}

TEST_F(Compressing, WantsOneOfChoiceLimitAndStep)
{
    open({pdf("text.pdf", {"one"})});
    for (const QJsonObject& wrong :
         {QJsonObject{}, QJsonObject{{"choice", "small"}, {"limit", 5}}, QJsonObject{{"choice", "tiny"}},
          QJsonObject{{"limit", "5"}}, QJsonObject{{"maxPixels", 700}}, QJsonObject{{"jpegQuality", 0.5}},
          QJsonObject{{"maxPixels", 0}, {"jpegQuality", 0.5}},
          QJsonObject{{"maxPixels", 700}, {"jpegQuality", 1.5}},
          QJsonObject{{"maxPixels", 700}, {"jpegQuality", 0.5}, {"limit", 5}}})
        EXPECT_EQ(compress(wrong)["ok"], QJsonValue(false)) << testing::PrintToString(wrong);
}

} // namespace
} // namespace folvane
