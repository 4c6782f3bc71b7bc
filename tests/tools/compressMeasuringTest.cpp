#include "tools/compress/CompressMeasuring.h"

#include "documents/ModelTest.h"
#include "tools/pdfSamples.h"

namespace folvane {

using Compression::Choice;

namespace {

class Measuring : public ModelTest {
protected:
    /// Opens the file and begins to measure it.
    void begin(const QUrl& url)
    {
        file = open({url});
        measuring = std::make_unique<CompressMeasuring>(*model, file);
        measuring->start();
    }
    void runUntilDone()
    {
        runUntil([this] {
            const bool isFitted = measuring->choice != Choice::UpTo || measuring->fit.value();
            return isFitted && measuring->results.value().size() == 3;
        });
    }
    void choose(qint64 limit)
    {
        const auto found = std::ranges::find(Compression::limits, limit);
        measuring->limitIndex = int(found - Compression::limits.begin());
        measuring->choice = Choice::UpTo;
    }

    OpenFilePtr file;
    std::unique_ptr<CompressMeasuring> measuring;
};

TEST_F(Measuring, FillsInFromTopToBottomWhatCanBeSavedAtOnce)
{
    begin(putPdf("a.pdf", 3));
    int count = 0;
    const QPropertyNotifier onResult = measuring->results.addNotifier([&] {
        const CompressMeasuring::Results known = measuring->results;
        EXPECT_EQ(known.rbegin()->first, Choice(count));
        EXPECT_EQ(known.size(), size_t(++count));
        EXPECT_EQ(measuring->chosenData().has_value(), count >= 2) << "medium is chosen";
        EXPECT_EQ(measuring->mostlyTextNote().has_value(), count == 3);
    });
    EXPECT_EQ(measuring->chosenData(), std::nullopt);
    runUntilDone();
    EXPECT_EQ(measuring->errorText.value(), std::nullopt);
    EXPECT_EQ(compressedName(*file, 1'234'567), "a (1.2 MB)");
}

TEST_F(Measuring, FitsOnlyTheLastLimitAndOnlyWhileThatIsChosen)
{
    begin(putPhotos(path("photos.pdf"), 1));
    QList<Compression::Fit> fits; // all that ever showed
    const QPropertyNotifier onFit = measuring->fit.addNotifier([&] {
        if (const auto fit = measuring->fit.value())
            fits.append(*fit);
    });
    measuring->limitIndex = 1;
    runUntilDone();
    choose(200'000);
    EXPECT_EQ(measuring->chosenData(), std::nullopt) << "other results do not count for the limit";
    measuring->choice = Choice::Medium;
    drainEngine();
    EXPECT_TRUE(fits.isEmpty()) << "leaving ends the search";
    for (const qint64 limit : {300'000, 500'000, 200'000})
        choose(limit);
    runUntilDone();
    drainEngine();
    ASSERT_EQ(fits.size(), 1);
    EXPECT_TRUE(fits.first().reached && fits.first().data.size() <= 200'000);
    EXPECT_EQ(measuring->chosenData(), fits.first().data);
    choose(300'000);
    choose(200'000);
    EXPECT_EQ(measuring->fit.value(), fits.first()) << "what is built is there at once";
}

TEST_F(Measuring, MeasuresChangedPagesAnew)
{
    begin(putPdf("a.pdf", 3));
    choose(1'000'000);
    runUntilDone();
    model->deletePages(file, at(*file, {1, 2}));
    EXPECT_TRUE(measuring->results.value().empty());
    EXPECT_EQ(measuring->chosenData(), std::nullopt);
    runUntilDone();
    const QUrl original = put("original.pdf", measuring->results.value().at(Choice::Original));
    EXPECT_EQ(textsIn(original.toLocalFile()), QString("a-3"));
    EXPECT_EQ(measuring->chosenData(), measuring->results.value().at(Choice::Original));
}

TEST_F(Measuring, EndsSilentlyWithTheSheet)
{
    begin(putPhotos(path("photos.pdf"), 2));
    runUntil([this] { return measuring->results.value().size() == 1; });
    measuring.reset();
    drainEngine();
    EXPECT_EQ(error(), QString());
}

TEST_F(Measuring, KeepsWhatWasDoneWhenABuildFails)
{
    begin(putPdf("a.pdf", 2));
    const QPropertyNotifier afterTheFirst =
        measuring->results.addNotifier([this] { put("a.pdf", "no longer what it was"); });
    runUntil([this] { return measuring->errorText.value().has_value(); });
    EXPECT_EQ(measuring->errorText.value(),
              "A page of this file can't be read anymore. Open the file again.");
    EXPECT_EQ(measuring->chosenData(), std::nullopt);
    measuring->choice = Choice::Original;
    EXPECT_TRUE(measuring->chosenData());
    EXPECT_EQ(error(), QString()) << "the sheet shows it, not an alert";
}

TEST_F(Measuring, TakesTheNearestLimitThatIsOfferedAndStoresIt)
{
    file = open({putPdf("a.pdf", 1)});
    for (const auto& [stored, index] : QList<std::pair<QVariant, int>>{{{}, 4},
                                                                       {0, 4},
                                                                       {"much", 4},
                                                                       {"5000000", 9},
                                                                       {1'200'000, 4},
                                                                       {1'300'000, 5},
                                                                       {1, 0},
                                                                       {qint64(1) << 60, 13}}) {
        preferences.setValue("compress.targetBytes", stored);
        EXPECT_EQ(CompressMeasuring(*model, file).limitIndex.value(), index)
            << stored.toString().toStdString();
    }
    CompressMeasuring(*model, file).limitIndex = 12;
    EXPECT_EQ(preferences.value("compress.targetBytes").toLongLong(), 15'000'000);
}

} // namespace
} // namespace folvane
