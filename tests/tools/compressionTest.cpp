#include "tools/compress/Compression.h"

#include "platform/tasks/Cancelled.h"
#include "support/await.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace folvane {

namespace {

using Compression::Choice;
using Compression::Rung;
using testing::ElementsAre;
using Sizes = std::vector<qsizetype>;

const Sizes falling{100, 80, 70, 60, 50, 40, 30, 20};
const Sizes fallingPictures{19, 18, 17, 16, 15, 14, 13, 12};

/// Makes bytes of the sizes that it is told for the rungs of both ladders, and notes what it was asked for.
struct Builder {
    Sizes sizes;
    Sizes pictureSizes = fallingPictures;
    std::function<void(size_t rung)> onBuild = [](size_t) {};
    std::vector<size_t> built = {}; ///< rungs, those of pictures from 8 on
    std::stop_source stop = {};

    QByteArray make(const Rung& rung)
    {
        const bool isPicture = rung && rung->pagesAsPictures;
        const auto& ladder = isPicture ? Compression::pictureLadder : Compression::ladder;
        const auto index = static_cast<size_t>(std::ranges::find(ladder, rung) - ladder.begin());
        built.push_back(isPicture ? 8 + index : index);
        onBuild(built.back());
        return QByteArray((isPicture ? pictureSizes : sizes).at(index), isPicture ? 'p' : 't');
    }
    static QCoro::Task<QByteArray> build(Builder* builder, Rung rung) { co_return builder->make(rung); }
    Compression::Build builds()
    {
        return [this](Rung rung) { return build(this, rung); };
    }
    Compression::Found search(qint64 limit)
    {
        const auto last = Compression::ladder.begin() + static_cast<ptrdiff_t>(sizes.size());
        const Compression::Ladder steps(Compression::ladder.begin(), last);
        return await(Compression::search(steps, limit, builds(), stop.get_token()));
    }
    Compression::Fit fit(qint64 limit) { return await(Compression::fit(limit, builds(), stop.get_token())); }
};

struct SearchCase {
    Sizes sizes;
    qint64 limit;
    qsizetype size;
    bool reached;
    std::vector<size_t> built; ///< no rung twice, five at most
};

struct FitCase {
    Sizes pictureSizes;
    qint64 limit;
    Compression::Fit want;
    int pictureBuilds;
};

} // namespace

TEST(CompressionSearch, FindsTheHighestRungThatFits)
{
    for (const auto& [sizes, limit, size, reached, built] : std::vector<SearchCase>{
             {falling, 100, 100, true, {0}},
             {falling, 99, 80, true, {0, 7, 4, 2, 1}},
             {falling, 80, 80, true, {0, 7, 4, 2, 1}},
             {falling, 79, 70, true, {0, 7, 4, 2, 1}},
             {falling, 69, 60, true, {0, 7, 4, 2, 3}},
             {falling, 59, 50, true, {0, 7, 4, 2, 3}},
             {falling, 49, 40, true, {0, 7, 4, 6, 5}},
             {falling, 39, 30, true, {0, 7, 4, 6, 5}},
             {falling, 20, 20, true, {0, 7, 4, 6}},
             {falling, 19, 20, false, {0, 7}},
             {Sizes(8, 50), 49, 50, false, {0, 7}},
             // Rung 1 would do, but rung 2 hides it: what is returned was measured to fit all the same.
             {{100, 40, 90, 80, 70, 60, 50, 45}, 50, 50, true, {0, 7, 4, 6, 5}},
             {{10}, 9, 10, false, {0}},
             {{10, 5}, 7, 5, true, {0, 1}},
             {{10, 7, 5}, 8, 7, true, {0, 2, 1}}}) {
        SCOPED_TRACE(testing::Message() << limit << " of " << sizes.size());
        Builder builder{sizes};
        const Compression::Found found = builder.search(limit);
        EXPECT_EQ(found.data.size(), size);
        EXPECT_EQ(found.reached, reached);
        EXPECT_EQ(builder.built, built);
    }
}

TEST(CompressionFit, KeepsTheTextWhileThatCanFit)
{
    for (const auto& [pictureSizes, limit, want, pictureBuilds] :
         std::vector<FitCase>{{fallingPictures, 20, {QByteArray(20, 't'), true, false}, 0},
                              {fallingPictures, 19, {QByteArray(19, 'p'), true, true}, 1},
                              {fallingPictures, 14, {QByteArray(14, 'p'), true, true}, 5},
                              {fallingPictures, 11, {QByteArray(12, 'p'), false, true}, 2},
                              {Sizes(8, 20), 11, {QByteArray(20, 't'), false, false}, 2}}) {
        Builder builder{falling, pictureSizes};
        EXPECT_EQ(builder.fit(limit), want) << limit;
        const auto isPicture = [](size_t rung) { return rung >= 8; };
        EXPECT_EQ(std::ranges::count_if(builder.built, isPicture), pictureBuilds) << limit;
    }
}

TEST(CompressionEnds, LooksForAStopBeforeEachBuild)
{
    Builder builder{falling};
    builder.onBuild = [&builder](size_t rung) {
        if (rung == 7)
            builder.stop.request_stop();
    };
    EXPECT_THROW(builder.fit(75), Cancelled);
    EXPECT_THAT(builder.built, ElementsAre(0U, 7U));
    EXPECT_THROW(builder.fit(75), Cancelled);
    EXPECT_EQ(builder.built.size(), 2U);
}

TEST(Compression, OffersFixedChoicesAndLimits)
{
    EXPECT_EQ(Compression::rung(Choice::Original), std::nullopt);
    EXPECT_EQ(Compression::rung(Choice::Medium), (CompressionStep{2000, 0.7, false}));
    EXPECT_EQ(Compression::rung(Choice::Small), (CompressionStep{1300, 0.55, false}));
    EXPECT_EQ(Compression::limitTitle(750'000), "0.75 MB");
    EXPECT_EQ(Compression::limitTitle(20'000'000), "20 MB");
}

} // namespace folvane
