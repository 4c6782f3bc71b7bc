#include "tools/compress/Compression.h"

#include "platform/tasks/Cancelled.h"
#include "support/await.h"

#include <gtest/gtest.h>

namespace folvane {

namespace {

using Compression::Choice;
using Compression::Rung;
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
    static QCoro::Task<QByteArray> make(Builder* builder, Rung rung) { co_return builder->make(rung); }
    Compression::Build build = [this](Rung rung) { return make(this, rung); };
    Compression::Fit fit(qint64 limit) { return await(Compression::fit(limit, build, stop.get_token())); }
};

} // namespace

TEST(CompressionSearch, FindsTheHighestRungThatFits)
{
    using Row =
        std::tuple<Sizes, qint64, qsizetype, bool, std::vector<size_t>>; // no rung twice, five at most
    for (const auto& [sizes, limit, size, reached, built] : std::vector<Row>{
             {falling, 100, 100, true, {0}},
             {falling, 99, 80, true, {0, 7, 4, 2, 1}},
             {falling, 79, 70, true, {0, 7, 4, 2, 1}},
             {falling, 59, 50, true, {0, 7, 4, 2, 3}},
             {falling, 49, 40, true, {0, 7, 4, 6, 5}},
             {falling, 20, 20, true, {0, 7, 4, 6}},
             {falling, 19, 20, false, {0, 7}},
             {Sizes(8, 50), 49, 50, false, {0, 7}},
             // Rung 1 would do, but rung 2 hides it: what is returned was measured to fit all the same.
             {{100, 40, 90, 80, 70, 60, 50, 45}, 50, 50, true, {0, 7, 4, 6, 5}},
             {{10}, 9, 10, false, {0}},
             {{10, 5}, 7, 5, true, {0, 1}},
             {{10, 7, 5}, 8, 7, true, {0, 2, 1}}}) {
        Builder builder{sizes};
        const Compression::Ladder steps(Compression::ladder.begin(),
                                        Compression::ladder.begin() + sizes.size());
        const Compression::Found found = await(Compression::search(steps, limit, builder.build, {}));
        EXPECT_EQ(found.data.size(), size) << limit;
        EXPECT_EQ(found.reached, reached);
        EXPECT_EQ(builder.built, built);
    }
}

TEST(CompressionFit, KeepsTheTextWhileThatCanFit)
{
    using Row = std::tuple<Sizes, qint64, Compression::Fit, int>;
    for (const auto& [pictureSizes, limit, want, pictureBuilds] :
         std::vector<Row>{{fallingPictures, 20, {QByteArray(20, 't'), true, false}, 0},
                          {fallingPictures, 19, {QByteArray(19, 'p'), true, true}, 1},
                          {fallingPictures, 14, {QByteArray(14, 'p'), true, true}, 5},
                          {fallingPictures, 11, {QByteArray(12, 'p'), false, true}, 2},
                          {Sizes(8, 20), 11, {QByteArray(20, 't'), false, false}, 2}}) {
        Builder builder{falling, pictureSizes};
        EXPECT_EQ(builder.fit(limit), want) << limit;
        EXPECT_EQ(std::ranges::count_if(builder.built, [](size_t rung) { return rung >= 8; }), pictureBuilds);
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
    EXPECT_THROW(builder.fit(75), Cancelled);
    EXPECT_EQ(builder.built, std::vector<size_t>({0, 7}));
}

TEST(Compression, OffersFixedChoices)
{
    EXPECT_EQ(Compression::rung(Choice::Medium), (CompressionStep{2000, 0.7, false}));
    EXPECT_EQ(Compression::rung(Choice::Small), (CompressionStep{1300, 0.55, false}));
}

} // namespace folvane
