#include "tools/compress/Compression.h"

#include "platform/tasks/Cancelled.h"
#include "support/await.h"

#include <QLocale>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

namespace folvane {

namespace {

using Compression::Choice;
using Compression::Rung;
using testing::ElementsAre;
using Sizes = std::vector<qsizetype>;

const Sizes falling{100, 80, 70, 60, 50, 40, 30, 20};

/// Makes bytes of the sizes that it is told for the rungs of a ladder, and notes what it was asked for.
struct Builder {
    Sizes sizes;        ///< of `ladder`, or of the steps of a search
    Sizes pictureSizes; ///< of `pictureLadder`
    std::optional<size_t> failing;
    std::vector<size_t> built; ///< rungs, those of pictures from 8 on
    std::stop_source stop;
    std::optional<size_t> stopping; ///< a stop is asked for while this one is built

    static std::optional<size_t> indexIn(const std::array<Rung, 8>& ladder, const Rung& rung)
    {
        const auto found = std::ranges::find(ladder, rung);
        return found == ladder.end() ? std::nullopt
                                     : std::optional(static_cast<size_t>(found - ladder.begin()));
    }

    QByteArray make(const Rung& rung)
    {
        const std::optional<size_t> text = indexIn(Compression::ladder, rung);
        const size_t index = text ? *text : 8 + indexIn(Compression::pictureLadder, rung).value();
        built.push_back(index);
        if (index == failing)
            throw std::runtime_error("no");
        if (index == stopping)
            stop.request_stop();
        return QByteArray(text ? sizes.at(index) : pictureSizes.at(index - 8), text ? 't' : 'p');
    }

    static QCoro::Task<QByteArray> build(Builder* builder, Rung rung) { co_return builder->make(rung); }

    Compression::Build builds()
    {
        return [this](Rung rung) { return build(this, rung); };
    }

    Compression::Found search(qint64 limit)
    {
        const Compression::Ladder steps(Compression::ladder.begin(),
                                        Compression::ladder.begin() + static_cast<ptrdiff_t>(sizes.size()));
        return await(Compression::search(steps, limit, builds(), stop.get_token()));
    }

    Compression::Fit fit(qint64 limit) { return await(Compression::fit(limit, builds(), stop.get_token())); }
};

struct SearchCase {
    const char* name;
    Sizes sizes;
    qint64 limit;
    qsizetype size;
    bool reached;
    std::vector<size_t> built;
};

void PrintTo(const SearchCase& row, std::ostream* out)
{
    *out << row.name;
}

class CompressionSearch : public testing::TestWithParam<SearchCase> {};

TEST_P(CompressionSearch, FindsTheHighestRungThatFits)
{
    Builder builder{GetParam().sizes, {}, {}, {}, {}, {}};
    const Compression::Found found = builder.search(GetParam().limit);
    EXPECT_EQ(found.data.size(), GetParam().size);
    EXPECT_EQ(found.reached, GetParam().reached);
    EXPECT_EQ(builder.built, GetParam().built); // no rung twice, five at most
}

INSTANTIATE_TEST_SUITE_P(
    Rows, CompressionSearch,
    testing::Values(
        SearchCase{"FitsAsItIs", falling, 1000, 100, true, {0}},
        SearchCase{"ExactlyTheFirst", falling, 100, 100, true, {0}},
        SearchCase{"JustBelowTheFirst", falling, 99, 80, true, {0, 7, 4, 2, 1}},
        SearchCase{"ExactlyTheSecond", falling, 80, 80, true, {0, 7, 4, 2, 1}},
        SearchCase{"Third", falling, 79, 70, true, {0, 7, 4, 2, 1}},
        SearchCase{"Fourth", falling, 69, 60, true, {0, 7, 4, 2, 3}},
        SearchCase{"Fifth", falling, 59, 50, true, {0, 7, 4, 2, 3}},
        SearchCase{"Sixth", falling, 49, 40, true, {0, 7, 4, 6, 5}},
        SearchCase{"Seventh", falling, 39, 30, true, {0, 7, 4, 6, 5}},
        SearchCase{"ExactlyTheLast", falling, 20, 20, true, {0, 7, 4, 6}},
        SearchCase{"NothingFits", falling, 19, 20, false, {0, 7}},
        SearchCase{"EqualSizes", Sizes(8, 50), 50, 50, true, {0}},
        SearchCase{"EqualSizesAboveTheLimit", Sizes(8, 50), 49, 50, false, {0, 7}},
        SearchCase{"StepInTheMiddle", {90, 90, 90, 90, 90, 10, 10, 10}, 50, 10, true, {0, 7, 4, 6, 5}},
        // Rung 1 would do, but rung 2 hides it: what is returned was measured to fit all the same.
        SearchCase{"NotFallingStillFits", {100, 40, 90, 80, 70, 60, 50, 45}, 50, 50, true, {0, 7, 4, 6, 5}},
        SearchCase{"OneRungFits", {10}, 10, 10, true, {0}},
        SearchCase{"OneRungDoesNot", {10}, 9, 10, false, {0}},
        SearchCase{"TwoRungs", {10, 5}, 7, 5, true, {0, 1}},
        SearchCase{"TwoRungsNotReached", {10, 5}, 4, 5, false, {0, 1}},
        SearchCase{"ThreeRungs", {10, 7, 5}, 8, 7, true, {0, 2, 1}}),
    [](const auto& row) { return std::string(row.param.name); });

struct FitCase {
    const char* name;
    Sizes pictureSizes;
    qint64 limit;
    Compression::Fit want;
    int pictureBuilds;
};

void PrintTo(const FitCase& row, std::ostream* out)
{
    *out << row.name;
}

class CompressionFit : public testing::TestWithParam<FitCase> {};

TEST_P(CompressionFit, KeepsTheTextWhileThatCanFit)
{
    Builder builder{falling, GetParam().pictureSizes, {}, {}, {}, {}};
    EXPECT_EQ(builder.fit(GetParam().limit), GetParam().want);
    const auto pictureBuilds = std::ranges::count_if(builder.built, [](size_t rung) { return rung >= 8; });
    EXPECT_EQ(pictureBuilds, GetParam().pictureBuilds);
}

const Sizes fallingPictures{19, 18, 17, 16, 15, 14, 13, 12};

INSTANTIATE_TEST_SUITE_P(
    Rows, CompressionFit,
    testing::Values(FitCase{"WithText", fallingPictures, 20, {QByteArray(20, 't'), true, false}, 0},
                    FitCase{"FirstPictures", fallingPictures, 19, {QByteArray(19, 'p'), true, true}, 1},
                    FitCase{"Pictures", fallingPictures, 14, {QByteArray(14, 'p'), true, true}, 5},
                    FitCase{"SmallerPicturesWin", fallingPictures, 11, {QByteArray(12, 'p'), false, true}, 2},
                    FitCase{"EqualKeepsTheText", Sizes(8, 20), 11, {QByteArray(20, 't'), false, false}, 2},
                    FitCase{"LargerKeepsTheText", Sizes(8, 90), 11, {QByteArray(20, 't'), false, false}, 2}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(CompressionEnds, PassesOnWhatABuildThrows)
{
    for (const size_t rung : {0U, 7U, 8U, 15U}) {
        Builder builder{falling, fallingPictures, rung, {}, {}, {}};
        EXPECT_THROW(builder.fit(12), std::runtime_error) << "rung " << rung;
        EXPECT_EQ(builder.built.back(), rung) << "nothing is built afterwards";
    }
}

TEST(CompressionEnds, LooksForAStopBeforeEachBuild)
{
    Builder builder{falling, fallingPictures, {}, {}, {}, 7};
    EXPECT_THROW(builder.fit(75), Cancelled);
    EXPECT_THAT(builder.built, ElementsAre(0U, 7U));
    builder.built.clear();
    EXPECT_THROW(builder.fit(75), Cancelled);
    EXPECT_TRUE(builder.built.empty());
}

TEST(Compression, OffersTheFixedChoicesAsRungsOfTheLadder)
{
    EXPECT_EQ(Compression::rung(Choice::Original), std::nullopt);
    EXPECT_EQ(Compression::rung(Choice::Medium), (CompressionStep{2000, 0.7, false}));
    EXPECT_EQ(Compression::rung(Choice::Small), (CompressionStep{1300, 0.55, false}));
}

struct TitleCase {
    const char* name;
    const char* locale;
    qint64 bytes;
    const char* want;
};

class LimitTitle : public testing::TestWithParam<TitleCase> {
protected:
    ~LimitTitle() override { QLocale::setDefault(m_before); }

private:
    QLocale m_before;
};

TEST_P(LimitTitle, IsWrittenAsTheLocaleWritesIt)
{
    QLocale::setDefault(QLocale(QString::fromLatin1(GetParam().locale)));
    EXPECT_EQ(Compression::limitTitle(GetParam().bytes), QString::fromUtf8(GetParam().want));
}

INSTANTIATE_TEST_SUITE_P(Rows, LimitTitle,
                         testing::Values(TitleCase{"Fraction", "en_US", 200'000, "0.2 MB"},
                                         TitleCase{"TwoDigits", "en_US", 750'000, "0.75 MB"},
                                         TitleCase{"Whole", "en_US", 1'000'000, "1 MB"},
                                         TitleCase{"Half", "en_US", 7'500'000, "7.5 MB"},
                                         TitleCase{"Twenty", "en_US", 20'000'000, "20 MB"},
                                         TitleCase{"NoLocale", "C", 1'500'000, "1.5 MB"},
                                         TitleCase{"German", "de_DE", 750'000, "0,75 MB"},
                                         TitleCase{"French", "fr_FR", 1'500'000, "1,5\u202fMo"}),
                         [](const auto& row) { return std::string(row.param.name); });

} // namespace

} // namespace folvane
