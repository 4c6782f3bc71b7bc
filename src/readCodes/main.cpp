// folvane-read-codes: finds the codes in one picture after the other, as codes/reading/codeMessages.h tells, until its
// standard input ends. Each picture gets a child process: what a library spoils there is gone with it, and when it gave up,
// another child tries again with more care.

#include "codes/reading/codeMessages.h"
#include "readCodes/children.h"
#include "readCodes/findCodes.h"
#include "readCodes/limits.h"
#include "readCodes/readByZxing.h"
#include "readCodes/requests.h"

#include <algorithm>
#include <cstdlib>

#include <unistd.h>

namespace folvane {

namespace {

/// More than whoever asks will wait.
constexpr unsigned secondsForOne = 12;

enum class Attempt { Usual, Careful };

CodeObservation observationOf(const Symbol& symbol, cv::Size picture)
{
    CodeObservation code{QString::fromStdString(symbol.text), symbol.symbology, {}};
    std::ranges::transform(symbol.corners, code.corners.begin(), [picture](cv::Point2f corner) {
        return QPointF(double(corner.x) / picture.width, double(corner.y) / picture.height);
    });
    return code;
}

std::vector<CodeObservation> codesIn(const cv::Mat& picture)
{
    std::vector<CodeObservation> codes;
    for (const Symbol& symbol : findCodes(picture))
        if (codes.size() < maxCodesInPicture)
            codes.push_back(observationOf(symbol, picture.size()));
    return codes;
}

/// Looks for the codes and tells them. False when the process that does so died before it answered.
bool answered(const cv::Mat& picture, Attempt attempt)
{
    return succeedsInChild([&] {
        limitTime(secondsForOne);
        if (attempt == Attempt::Careful)
            giveOneBarCode();
        return answer(STDIN_FILENO, codesIn(picture));
    });
}

} // namespace

} // namespace folvane

int main()
{
    using namespace folvane;
    limitMemory();
    cv::setNumThreads(1); // the cores belong to the program that waits for the answer
    while (const auto picture = SharedPicture::received(STDIN_FILENO))
        if (!answered(picture->pixels(), Attempt::Usual) && !answered(picture->pixels(), Attempt::Careful)
            && !answer(STDIN_FILENO, {}))
            break;
    return EXIT_SUCCESS;
}
