#include "codes/reading/CodeReader.h"
#include "platform/tasks/Cancelled.h"
#include "support/TestFolder.h"
#include "support/drawnCode.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QPainter>
#include <gtest/gtest.h>

#include <random>
#include <thread>

namespace folvane {

namespace {

QImage sheet(std::initializer_list<std::pair<QPoint, QImage>> pictures)
{
    QImage image(1200, 900, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    for (const auto& [at, picture] : pictures)
        painter.drawImage(at, picture);
    return image;
}

/// A program in the place of the one that finds codes: a shell script whose standard input is the socket.
QString standIn(const TestFolder& folder, const QByteArray& commands)
{
    folder.put("standIn", "#!/bin/sh\n" + commands + "\n");
    QFile::setPermissions(folder.path("standIn"), QFile::ReadOwner | QFile::ExeOwner);
    return folder.path("standIn");
}

class CodeReaderTest : public testing::Test {
protected:
    TestFolder folder;
    const QImage qr = drawnCode("QRCODE", "https://example.org/a");
    const std::vector<ReadCode> onlyQr{{"https://example.org/a", CodeSymbology::Qr}};
};

} // namespace

TEST_F(CodeReaderTest, ReadsWhatAnotherProgramDrew)
{
    const QImage bars = drawnCode("CODE128", "ABC-12345");
    const QImage itf = drawnCode("ITF14", "1540014128876");
    const QImage micro = drawnCode("MICROQR", "1234");
    QImage clear = qr.convertToFormat(QImage::Format_ARGB32);
    clear.setAlphaChannel(qr.createMaskFromColor(qr.pixel(qr.width() / 2, 0), Qt::MaskOutColor)); // no ground
    CodeReader reader;
    EXPECT_EQ(
        reader.codes(sheet({{{100, 100}, qr}, {{600, 110}, bars}, {{100, 500}, itf}, {{1000, 600}, micro}})),
        (std::vector<ReadCode>{onlyQr[0],
                               {"ABC-12345", CodeSymbology::Code128},
                               {"15400141288763", CodeSymbology::Itf14},
                               {"1234", CodeSymbology::MicroQr}}));
    EXPECT_EQ(reader.codes(clear), onlyQr);
    EXPECT_EQ(reader.codes(QImage()), std::vector<ReadCode>());
}

// A line that leaves turned bars by their side has read a part of the digits, which is a code, too.
TEST_F(CodeReaderTest, ReadsAllOfTurnedBars)
{
    const QImage bars = drawnCode("C25INTER", "15359504");
    CodeReader reader;
    for (const int angle : {5, 35, 55, 60, 65, 80}) {
        const QImage turned =
            bars.convertToFormat(QImage::Format_ARGB32).transformed(QTransform().rotate(-angle));
        EXPECT_EQ(reader.codes(sheet({{{100, 100}, turned}})),
                  (std::vector<ReadCode>{{"15359504", CodeSymbology::I2of5}}))
            << angle;
    }
}

TEST_F(CodeReaderTest, GivesThePrintedDigitsOfShortNumbers)
{
    EXPECT_EQ(CodeReader().codes(sheet({{{100, 100}, drawnCode("UPCE", "1234567")}})),
              (std::vector<ReadCode>{{"12345670", CodeSymbology::UpcE}}));
}

// The library for bars ends its process here: tried again with care.
TEST_F(CodeReaderTest, ReadsSheetsOfEqualLabels)
{
    const QImage ean = drawnCode("EANX", "401234567890");
    const QImage bars = drawnCode("CODE128", "ABC-12345");
    const std::vector<ReadCode> want{{"4012345678901", CodeSymbology::Ean13},
                                     {"ABC-12345", CodeSymbology::Code128}};
    const QImage labels = sheet({{{50, 50}, ean},
                                 {{600, 50}, ean},
                                 {{50, 350}, ean},
                                 {{600, 350}, ean},
                                 {{50, 630}, bars},
                                 {{600, 630}, bars}});
    EXPECT_EQ(CodeReader().codes(labels), want);
}

TEST_F(CodeReaderTest, FindsNothingWhereTheProgramFails)
{
    const auto isNothing = [&](const QByteArray& commands) {
        return CodeReader(standIn(folder, commands)).codes(qr).empty();
    };
    EXPECT_TRUE(isNothing("exit 1"));
    EXPECT_TRUE(isNothing("kill -SEGV $$"));
    EXPECT_TRUE(isNothing("printf '\\377\\377\\377\\377' >&0; sleep 9")) << "an answer of four gigabytes";
    EXPECT_TRUE(isNothing("printf '\\004\\000\\000\\000\\000\\000\\000\\001' >&0; sleep 9"))
        << "one code that is not there";
    EXPECT_TRUE(isNothing("printf '\\004\\000' >&0; exec 0<&-"));
    EXPECT_TRUE(CodeReader(folder.path("missing")).codes(qr).empty());
}

TEST_F(CodeReaderTest, AsksAnotherProcessAfterOneThatFailed)
{
    const QByteArray real = (QCoreApplication::applicationDirPath() + "/folvane-read-codes").toUtf8();
    const QByteArray mark = folder.path("mark").toUtf8();
    CodeReader reader(
        standIn(folder, "[ -e " + mark + " ] && exec " + real + "\ntouch " + mark + "; sleep 60"));
    QElapsedTimer timer;
    timer.start();
    EXPECT_TRUE(reader.codes(qr).empty()); // takes too long
    EXPECT_NEAR(double(timer.elapsed()), 3000, 500);
    EXPECT_EQ(reader.codes(qr), onlyQr);
}

TEST_F(CodeReaderTest, StopsAtOnceAlsoWhileItWaitsForAnother)
{
    CodeReader reader(standIn(folder, "sleep 60"));
    const auto timeUntilStopped = [&] {
        std::stop_source stop;
        std::chrono::steady_clock::time_point asked;
        const std::jthread stopper([&] {
            std::this_thread::sleep_for(std::chrono::milliseconds(150));
            asked = std::chrono::steady_clock::now();
            stop.request_stop();
        });
        EXPECT_THROW(reader.codes(qr, stop.get_token()), Cancelled);
        return std::chrono::steady_clock::now() - asked;
    };
    std::chrono::nanoseconds first{}, second{};
    {
        const std::jthread one([&] { first = timeUntilStopped(); });
        const std::jthread other([&] { second = timeUntilStopped(); });
    }
    EXPECT_LT(std::max(first, second), std::chrono::milliseconds(200));
}

TEST_F(CodeReaderTest, GoesOnAfterNoiseAndOddSizes)
{
    std::mt19937 random(11);
    const auto below = [&](int n) { return int(random() % unsigned(n)); };
    CodeReader reader;
    const int rounds = qEnvironmentVariableIntValue("FOLVANE_MUTATIONS");
    for (int round = 0; round < std::max(30, rounds); ++round) {
        QImage picture = round % 3 == 0 ? qr.scaled(1 + below(400), 1 + below(400))
                                        : QImage(1 + below(900), 1 + below(round % 2 ? 900 : 9),
                                                 QImage::Format_Grayscale8);
        if (round % 3 != 0)
            std::generate_n(picture.bits(), picture.sizeInBytes(),
                            [&] { return uchar(below(round % 5 ? 256 : 2) * 255); });
        for (int spot = 0; spot < 20; ++spot)
            picture.setPixelColor(below(picture.width()), below(picture.height()), Qt::white);
        for (const ReadCode& code : reader.codes(picture))
            EXPECT_FALSE(code.payload.isEmpty());
    }
    EXPECT_EQ(reader.codes(qr), onlyQr);
}

} // namespace folvane
