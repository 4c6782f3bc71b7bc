#include "tools/stamps/stampFromData.h"

#include "support/printers.h"

#include <QImage>
#include <QMimeData>

#include <gtest/gtest.h>

namespace folvane {
namespace {

struct Offer {
    const char* format;
    QByteArray bytes;
};

struct DataCase {
    const char* name;
    QList<Offer> offers;
    QString pasted;  ///< a path, bytes, or empty for nothing
    QString dropped; ///< the same
};

QString told(const std::optional<StampSource>& source)
{
    if (!source)
        return {};
    const auto* file = std::get_if<QUrl>(&source->from);
    return file ? file->path() : QString::fromLatin1(std::get<QByteArray>(source->from));
}

class StampFromData : public testing::TestWithParam<DataCase> {};

TEST_P(StampFromData, TakesThePicture)
{
    QMimeData data;
    for (const auto& [format, bytes] : GetParam().offers)
        data.setData(format, bytes);
    for (const auto& [gesture, want] : {std::pair(StampGesture::Paste, GetParam().pasted),
                                        std::pair(StampGesture::Drop, GetParam().dropped)}) {
        EXPECT_EQ(told(stampFrom(data, gesture)), want);
        EXPECT_EQ(offersStamp(data, gesture), !want.isEmpty());
    }
}

constexpr char files[] = "text/uri-list";
constexpr char text[] = "text/plain";
constexpr char copied[] = "x-special/gnome-copied-files";

INSTANTIATE_TEST_SUITE_P(
    Rows, StampFromData,
    testing::Values(
        DataCase{"Nothing", {}, {}, {}},
        DataCase{"FirstPicture",
                 {{files, "file:///a.pdf\r\nfile:///b.PNG\r\nfile:///c.jpg\r\n"}},
                 "/b.PNG",
                 "/b.PNG"},
        DataCase{"OtherFiles", {{files, "file:///a.pdf\r\nfile:///b.txt\r\n"}}, {}, {}},
        DataCase{"FileBeforeItsIcon", {{"image/png", "icon"}, {files, "file:///b.jpg"}}, "/b.jpg", "/b.jpg"},
        DataCase{"IconOfAnotherFile", {{"image/png", "icon"}, {files, "file:///a.pdf"}}, {}, {}},
        DataCase{
            "BrowserPicture",
            {{files, "https://example.org/a.png"}, {text, "https://example.org/a.png"}, {"image/png", "png"}},
            "png",
            "png"},
        DataCase{"LinkAlone", {{files, "https://example.org/a.png"}}, {}, {}},
        DataCase{"BestFormat",
                 {{"image/bmp", "bmp"}, {"image/jpeg", "jpeg"}, {"image/tiff", "tiff"}},
                 "tiff",
                 "tiff"},
        DataCase{"EmptyFormat", {{"image/png", ""}, {"image/jpeg", "jpeg"}}, "jpeg", "jpeg"},
        DataCase{"UnknownFormat", {{"image/x-unheard-of", "?"}, {"image/webp", "webp"}}, "webp", "webp"},
        DataCase{"OnlyUnknownFormat", {{"image/x-unheard-of", "?"}}, {}, {}},
        DataCase{"CopiedInAFileManager",
                 {{copied, "copy\nfile:///a.txt\nfile:///b%20c.heic"}},
                 "/b c.heic",
                 "/b c.heic"},
        DataCase{"PictureBeforeText", {{text, "/a.png"}, {"image/png", "png"}}, "png", "png"},
        DataCase{"Path", {{text, " /home/me/My stamp.jpeg\n"}}, "/home/me/My stamp.jpeg", {}},
        DataCase{"FileUrlAsText", {{text, "file:///a%20b.png"}}, "/a b.png", {}},
        DataCase{"PathsAsText", {{text, "/a.pdf\n/b.png\n"}}, "/b.png", {}},
        DataCase{"PathOfNoPicture", {{text, "/a.pdf"}}, {}, {}},
        DataCase{"WebAddressAsText", {{text, "https://example.org/a.png"}}, {}, {}},
        DataCase{"Prose", {{text, "See\n/a.png"}}, {}, {}}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(StampFromImage, BecomesPng)
{
    QImage image(3, 2, QImage::Format_ARGB32);
    image.fill(QColor(1, 2, 3, 4));
    QMimeData data;
    data.setImageData(image);
    EXPECT_TRUE(offersStamp(data, StampGesture::Drop));
    const auto source = stampFrom(data, StampGesture::Drop);
    EXPECT_EQ(QImage::fromData(std::get<QByteArray>(source->from), "PNG").pixelColor(2, 1),
              QColor(1, 2, 3, 4));
}

} // namespace
} // namespace folvane
