#include "platform/files/fileKind.h"
#include "support/tools.h"

#include <QFile>
#include <QMimeDatabase>
#include <QRegularExpression>
#include <QUrl>

#include <gtest/gtest.h>

#include <algorithm>

namespace folvane {
namespace {

const QString packaged = QStringLiteral(FOLVANE_PACKAGING "/" FOLVANE_BUNDLE_IDENTIFIER);

QStringList declaredTypes()
{
    QFile entry(packaged + ".desktop");
    EXPECT_TRUE(entry.open(QIODevice::ReadOnly));
    const QStringList lines = QString::fromUtf8(entry.readAll()).split(u'\n').filter("MimeType=");
    EXPECT_TRUE(lines.size() == 1 && lines[0].endsWith(u';'));
    return lines.value(0).mid(9).split(u';', Qt::SkipEmptyParts);
}

bool opens(const QString& extension)
{
    return fileKind(QUrl::fromLocalFile("/a." + extension)) != FileKind::Other;
}

TEST(Packaging, TheDesktopEntryIsValid)
{
    const ToolResult result = runTool("desktop-file-validate", {packaged + ".desktop"});
    EXPECT_EQ(result.exitCode, 0) << result.output.toStdString();
}

TEST(Packaging, NothingIsToBeSaidOfTheMetadata)
{
    const ToolResult result =
        runTool("appstreamcli", {"validate", "--pedantic", "--no-net", packaged + ".metainfo.xml"});
    EXPECT_EQ(result.exitCode, 0);
    QStringList remarks = QString::fromUtf8(result.output).split(u'\n');
    remarks = remarks.filter(QRegularExpression("^[EWIP]: "))
                  .filter(QRegularExpression("^(?!.*cid-maybe-not-rdns)"));
    EXPECT_TRUE(remarks.isEmpty()) << remarks.join(u'\n').toStdString(); // a reserved domain apart
}

TEST(Packaging, TheDesktopIsToldOfWhatOpensAndOfNothingElse)
{
    const QStringList types = declaredTypes();
    for (const QString& name : types) {
        const QStringList endings = QMimeDatabase().mimeTypeForName(name).suffixes();
        EXPECT_TRUE(std::ranges::any_of(endings, opens)) << name.toStdString();
    }
    for (const QString& extension : pictureExtensions() + QStringList{"pdf"}) {
        const QMimeType type =
            QMimeDatabase().mimeTypeForFile("a." + extension, QMimeDatabase::MatchExtension);
        // Of an ending that it does not know the desktop looks at the content, and finds one of the other types.
        EXPECT_TRUE(type.isDefault() || types.contains(type.name()))
            << extension.toStdString() << ": " << type.name().toStdString();
    }
}

} // namespace
} // namespace folvane
