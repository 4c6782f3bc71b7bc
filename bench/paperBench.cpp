#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <string>

// folvane-paper-bench PICTURE: what the paper behind a signature takes OpenCV by itself, on all cores. Reads a PPM, looks
// for the brightest value within the disc that the program takes, blurs as it does, and throws the result away.

int main(int argc, char** argv)
{
    std::ifstream file(argc > 1 ? argv[1] : "", std::ios::binary);
    std::string kind;
    int width = 0, height = 0, most = 0;
    file >> kind >> width >> height >> most;
    if (kind != "P6" || most != 255 || width < 1 || height < 1) {
        std::fprintf(stderr, "Not a PPM of eight bits a sample.\n");
        return 1;
    }
    file.get();
    cv::Mat picture(height, width, CV_8UC3);
    file.read(picture.ptr<char>(), static_cast<std::streamsize>(picture.total() * picture.elemSize()));
    const double radius = std::max(std::max(width, height) / 120.0, 3.0);
    const int side = 2 * static_cast<int>(radius) + 1;
    cv::Mat paper;
    cv::dilate(picture, paper, cv::getStructuringElement(cv::MORPH_ELLIPSE, {side, side}));
    cv::GaussianBlur(paper, paper, {}, 2 * radius, 2 * radius, cv::BORDER_REPLICATE);
    return file.good() ? 0 : 1;
}
