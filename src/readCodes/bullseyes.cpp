#include "readCodes/bullseyes.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

namespace folvane {

namespace {

/// Pixels of the copy that is looked at.
constexpr int longSide = 1600;
constexpr double leastModule = 1.7;
constexpr size_t mostBullseyes = 60;

/// On a line through the middle, the runs of one colour, which are a module wide each: the middle one and three on each side.
using Runs = std::array<int, 7>;

/// What is darker than its surroundings: 1, elsewhere 0.
cv::Mat_<uchar> darkPixels(const cv::Mat& copy)
{
    cv::Mat mean;
    cv::boxFilter(copy, mean, -1, {65, 65});
    cv::Mat dark;
    cv::threshold(mean - copy, dark, 8, 1, cv::THRESH_BINARY);
    return dark;
}

double lengthOf(const Runs& runs)
{
    return std::accumulate(runs.begin(), runs.end(), 0);
}

bool areModules(const Runs& runs)
{
    const double module = lengthOf(runs) / double(runs.size());
    return module >= leastModule && std::ranges::all_of(runs, [module](int run) {
               return run > 0.45 * module && run < 1.65 * module;
           });
}

/// Where colours change along a row, from its start to its end.
void findChanges(const uchar* row, int width, std::vector<int>& changes)
{
    changes.assign(1, 0);
    for (int x = 1; x < width; ++x)
        if (row[x] != row[x - 1])
            changes.push_back(x);
    changes.push_back(width);
}

/// How many pixels of one colour lie on a column from there on, upwards or downwards. The place moves behind them.
int runFrom(const cv::Mat_<uchar>& dark, cv::Point& at, int way, bool isDark)
{
    const int start = at.y;
    while (at.y >= 0 && at.y < dark.rows && (dark(at) != 0) == isDark)
        at.y += way;
    return std::abs(at.y - start);
}

/// The runs above and below a dark pixel of the middle one.
Runs runsThrough(const cv::Mat_<uchar>& dark, cv::Point middle)
{
    Runs runs{};
    runs[3] = -1; // counted from both sides
    for (const int way : {-1, 1}) {
        cv::Point at = middle;
        for (int nth = 0; nth <= 3; ++nth)
            runs[size_t(3 + way * nth)] += runFrom(dark, at, way, nth % 2 == 0);
    }
    return runs;
}

/// The sides' angle: four times the angles of all changes, which lie at right angles to each other, point one way.
double angleAround(const cv::Mat& copy, cv::Point2f middle, double radius)
{
    const cv::Rect box = cv::Rect(cv::Point(int(middle.x - radius), int(middle.y - radius)),
                                  cv::Size(int(2 * radius), int(2 * radius)))
                         & cv::Rect(1, 1, copy.cols - 2, copy.rows - 2);
    double cosines = 0, sines = 0;
    for (int y = box.y; y < box.br().y; ++y)
        for (int x = box.x; x < box.br().x; ++x) {
            const double right = copy.at<uchar>(y, x + 1) - copy.at<uchar>(y, x - 1);
            const double down = copy.at<uchar>(y + 1, x) - copy.at<uchar>(y - 1, x);
            const double strength = right * right + down * down + 1;
            cosines += strength - 8 * right * right * down * down / strength;
            sines += 4 * right * down * (right * right - down * down) / strength;
        }
    return std::atan2(sines, cosines) / 4;
}

/// How much of the five squares within each other has the colour that it should have, from 0 to 1.
double likenessOf(const Bullseye& bullseye, const cv::Mat_<uchar>& dark)
{
    const double angle = bullseye.angle * CV_PI / 180;
    const cv::Point2d right = cv::Point2d(std::cos(angle), std::sin(angle)) * bullseye.module;
    const cv::Point2d down(-right.y, right.x);
    const cv::Rect all({}, dark.size());
    int like = 0;
    constexpr int rings = 4, modules = (2 * rings + 1) * (2 * rings + 1);
    for (int y = -rings; y <= rings; ++y)
        for (int x = -rings; x <= rings; ++x) {
            const cv::Point at = cv::Point2d(bullseye.middle) + right * x + down * y;
            const bool isDark = std::max(std::abs(x), std::abs(y)) % 2 == 0;
            like += all.contains(at) && (dark(at) != 0) == isDark;
        }
    return double(like) / modules;
}

class BullseyeSearch {
public:
    explicit BullseyeSearch(const cv::Mat& copy) : m_copy(copy), m_dark(darkPixels(copy)) {}

    std::vector<Bullseye> found()
    {
        std::vector<int> changes;
        for (int y = 0; y < m_dark.rows; y += 2) {
            findChanges(m_dark[y], m_dark.cols, changes);
            for (size_t first = m_dark(y, 0) ? 1 : 0; first + 7 < changes.size(); first += 2)
                look(y, &changes[first]);
        }
        return std::move(m_found);
    }

private:
    /// At seven runs of a row, the first of which is bright.
    void look(int y, const int* changes)
    {
        Runs across{};
        std::adjacent_difference(changes + 1, changes + 8, across.begin());
        across[0] -= changes[0];
        if (!areModules(across))
            return;
        const int x = (changes[3] + changes[4]) / 2;
        const Runs down = runsThrough(m_dark, {x, y});
        if (areModules(down) && std::abs(lengthOf(down) / lengthOf(across) - 1) < 0.25)
            add(cv::Point2f(float(changes[3] + changes[4] - 1) / 2, middleOfRun(x, y)), lengthOf(across) / 7);
    }

    /// Of the run down through a dark pixel.
    float middleOfRun(int x, int y) const
    {
        cv::Point top(x, y), bottom(x, y);
        runFrom(m_dark, top, -1, true);
        runFrom(m_dark, bottom, 1, true);
        return float(top.y + bottom.y) / 2;
    }

    void add(cv::Point2f middle, double width)
    {
        const auto isThere = [&](const Bullseye& known) {
            return cv::norm(known.middle - middle) < 4 * width;
        };
        if (m_found.size() >= mostBullseyes || std::ranges::any_of(m_found, isThere))
            return;
        const double angle = angleAround(m_copy, middle, 4 * width);
        const Bullseye bullseye{middle, width * std::cos(angle), angle * 180 / CV_PI};
        if (likenessOf(bullseye, m_dark) > 0.8)
            m_found.push_back(bullseye);
    }

    const cv::Mat& m_copy;
    cv::Mat_<uchar> m_dark;
    std::vector<Bullseye> m_found;
};

} // namespace

std::vector<Bullseye> findBullseyes(const cv::Mat& picture)
{
    const double scale = std::min(1.0, double(longSide) / std::max(picture.cols, picture.rows));
    cv::Mat copy = picture;
    if (scale < 1)
        cv::resize(picture, copy, {}, scale, scale, cv::INTER_AREA);
    std::vector<Bullseye> found = BullseyeSearch(copy).found();
    for (Bullseye& one : found) {
        one.middle = (one.middle + cv::Point2f(0.5F, 0.5F)) / float(scale) - cv::Point2f(0.5F, 0.5F);
        one.module /= scale;
    }
    return found;
}

} // namespace folvane
