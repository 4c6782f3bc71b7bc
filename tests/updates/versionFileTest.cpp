#include "updates/versionFile.h"
#include "updates/UpdateError.h"

#include <gtest/gtest.h>

namespace folvane {

namespace {

struct FileCase {
    const char* name;
    QByteArray json;
    QString want = {}; ///< what is wrong with it; empty when nothing is
};

class VersionFiles : public testing::TestWithParam<FileCase> {};

QString faultIn(const QByteArray& json)
{
    try {
        releaseIn(json);
        return {};
    } catch (const UpdateError& error) {
        return QString(error.text()).remove("Couldn't check for updates: ");
    }
}

} // namespace

TEST_P(VersionFiles, AreReadStrictly)
{
    EXPECT_EQ(faultIn(GetParam().json), GetParam().want);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, VersionFiles,
    testing::Values(
        FileCase{"Least", R"({"version": "", "build": -9223372036854775808})"},
        FileCase{"Nulls", R"({"version": "2", "build": 7, "url": null, "sha256": null, "more": []})"},
        FileCase{"Text", R"(7 and more)", "illegal value"},
        FileCase{"List", R"([{"version": "2", "build": 7}])", "The file is no object."},
        FileCase{"NoVersion", R"({"build": 7})", "“version” is missing."},
        FileCase{"NullVersion", R"({"version": null, "build": 7})", "“version” is missing."},
        FileCase{"NumberVersion", R"({"version": 2, "build": 7})", "“version” isn't text."},
        FileCase{"NoBuild", R"({"version": "2"})", "“build” is missing."},
        FileCase{"TextBuild", R"({"version": "2", "build": "7"})", "“build” isn't a whole number."},
        FileCase{"TrueBuild", R"({"version": "2", "build": true})", "“build” isn't a whole number."},
        FileCase{"BrokenBuild", R"({"version": "2", "build": 1.5})", "“build” isn't a whole number."},
        FileCase{"HugeBuild", R"({"version": "2", "build": 9223372036854775808})",
                 "“build” isn't a whole number."},
        FileCase{"BadUrl", R"({"version": "2", "build": 7, "url": "no address"})", "“url” isn't an address."},
        FileCase{"EmptyDmg", R"({"version": "2", "build": 7, "dmg": ""})", "“dmg” isn't an address."},
        FileCase{"NumberDmg", R"({"version": "2", "build": 7, "dmg": 1})", "“dmg” isn't text."},
        FileCase{"ListSha", R"({"version": "2", "build": 7, "sha256": []})", "“sha256” isn't text."}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(VersionFile, TellsAllOfARelease)
{
    EXPECT_EQ(
        releaseIn(
            R"({"sha256": "aB", "dmg": "HTTPS://X.org/d.dmg", "url": "https://x.org", "build": 9223372036854775807,
                            "version": "2.0"})"),
        (UpdateRelease{"2.0", 9223372036854775807, "https://x.org", "HTTPS://X.org/d.dmg", "aB"}));
}

TEST(UpdateRelease, SendsNobodyToAnotherSite)
{
    const QUrl page("https://maker.example/folvane/");
    const auto isOwn = [&](const QString& url) {
        return UpdateRelease{"2", 7, url}.downloadURL(page) == QUrl(url);
    };
    EXPECT_TRUE(isOwn("https://maker.example/2.0?a#b"));
    EXPECT_TRUE(isOwn("https://maker.example"));
    for (const char* strange :
         {"http://maker.example/2.0", "HTTPS://maker.example/2.0", "https://MAKER.example/2.0",
          "https://maker.example.evil.example/", "https://maker.example@evil.example/", "/2.0",
          "https://www.maker.example/", "ftp://maker.example/"})
        EXPECT_EQ((UpdateRelease{"2", 7, strange}.downloadURL(page)), page) << strange;
    EXPECT_EQ((UpdateRelease{"2", 7}.downloadURL(page)), page);
}

} // namespace folvane
