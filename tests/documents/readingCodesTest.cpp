#include "documents/ModelTest.h"
#include "support/drawnCode.h"

#include <QBuffer>
#include <QClipboard>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QMimeData>
#include <QPainter>

namespace folvane {

namespace {

class ReadingCodes : public ModelTest {
protected:
    ReadingCodes() { QGuiApplication::clipboard()->clear(); }

    /// Codes side by side.
    QImage pictureOf(const QStringList& payloads) const
    {
        QImage image(1200, 400, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        for (qsizetype i = 0; i < payloads.size(); ++i)
            painter.drawImage(QPointF(60 + 300 * double(i), 100), drawnCode("QRCODE", payloads[i]));
        return image;
    }
    QUrl putCodes(const QString& name, const QStringList& payloads) const
    {
        pictureOf(payloads).save(path(name));
        return url(name);
    }
    /// One page for each picture, behind a password.
    QUrl putCodesPdf(const QString& name, const QList<QUrl>& pictures)
    {
        saveAs(open(pictures), name);
        const QString file = path(name);
        if (runTool("qpdf", {"--replace-input", "--encrypt", "x", "x", "256", "--", file}).exitCode != 0)
            throw std::runtime_error("qpdf does not lock it");
        return url(name);
    }
    /// "payload@origin:page", one for each.
    QString found() const
    {
        QStringList codes;
        for (const FoundCode& code : model->codes.found.value())
            codes << code.payload + '@' + code.origin
                         + (code.page ? ':' + QString::number(*code.page) : QString());
        return codes.join(' ');
    }
    QString emptyMessage() const { return model->codes.emptyMessage.value().value_or(QString()); }
    void read(const QList<QUrl>& urls) { await(model->readCodes(urls)); }
    void paste(QMimeData* data)
    {
        QGuiApplication::clipboard()->setMimeData(data);
        await(model->readCodesFromClipboard());
    }
};

} // namespace

TEST_F(ReadingCodes, GoesThroughPicturesAndPagesAndPutsTheNewestFirst)
{
    const QUrl two = putCodes("two.png", {"one", "two", "one"});
    const QUrl none = putPicture("none.png");
    const QUrl pdf = putCodesPdf("pages.pdf", {two, none, putCodes("one.png", {"one"})});
    answerPasswords({{"pages.pdf", {"x"}}});
    read({put("notes.txt", "text"), two, put("broken.jpg", "no picture"), pdf});
    EXPECT_EQ(found(), "one@two.png two@two.png one@pages.pdf:2 one@pages.pdf:3 two@pages.pdf:3")
        << "pictures become pages in the order of their names";
    EXPECT_EQ(emptyMessage() + error(), "");
    EXPECT_FALSE(isHeld(pdf)) << "it is let go of";

    const QUuid first = model->codes.found.value().front().id;
    read({url("one.png")});
    EXPECT_TRUE(found().startsWith("one@one.png one@two.png "));
    EXPECT_NE(model->codes.found.value().front().id, first);
}

TEST_F(ReadingCodes, TellsThatThereWasNone)
{
    const QUrl none = putPicture("none.png");
    read({none});
    EXPECT_EQ(emptyMessage(), "No codes found in “none.png”.");
    read({none, put("broken.pdf", "no pdf")});
    EXPECT_EQ(emptyMessage(), "No codes found.");
    EXPECT_EQ(error(), damaged.arg("broken.pdf"));
    read({putCodes("one.png", {"one"})});
    EXPECT_EQ(emptyMessage(), "");
}

TEST_F(ReadingCodes, IsStoppedByTheNextOneAndByHand)
{
    const QUrl one = putCodes("one.png", {"one"});
    QCoro::Task<> overtaken = model->readCodes(QList<QUrl>(40, one));
    QCoro::Task<> second = model->readCodes({one});
    await(std::move(overtaken));
    EXPECT_TRUE(model->codes.isReading.value()) << "the second one still does";
    await(std::move(second));
    EXPECT_EQ(found(), "one@one.png");
    EXPECT_FALSE(model->codes.isReading.value());

    QCoro::Task<> stopped = model->readCodes({putPicture("none.png")});
    model->codes.stop();
    await(std::move(stopped));
    EXPECT_EQ(found() + emptyMessage(), "one@one.png");
    EXPECT_FALSE(model->codes.isReading.value());

    QCoro::Task<> left = model->readCodes(QList<QUrl>(40, one));
    model.reset();
    await(std::move(left));
}

TEST_F(ReadingCodes, TakesWhatIsOnTheClipboard)
{
    const auto data = [](const QString& format, const QByteArray& bytes) {
        auto* offer = new QMimeData;
        offer->setData(format, bytes);
        return offer;
    };
    paste(data("text/plain", "words"));
    paste(data("image/png", "no picture"));
    paste(data("text/uri-list", "file:///notes.txt"));
    EXPECT_EQ(error(), "There's no picture on the clipboard. Copy a screenshot or an image first.");
    EXPECT_EQ(found() + emptyMessage(), "");

    QByteArray tiff;
    QBuffer buffer(&tiff);
    pictureOf({"tiff"}).save(&buffer, "TIFF");
    paste(data("image/tiff", tiff));
    auto* pixels = new QMimeData;
    pixels->setImageData(pictureOf({"pixels"}));
    paste(pixels);
    paste(data("text/uri-list", putCodes("copied.png", {"copied"}).toEncoded()));
    EXPECT_EQ(found(), "copied@copied.png pixels@Pasted image tiff@Pasted image");

    auto* empty = new QMimeData;
    empty->setImageData(QImage(putPicture("none.png").toLocalFile()));
    paste(empty);
    EXPECT_EQ(emptyMessage(), "No codes found in “Pasted image”.");
}

} // namespace folvane
