#include "platform/files/fileKind.h"
#include "support/tools.h"

#include <QFile>
#include <QMimeDatabase>
#include <QMimeType>
#include <QUrl>

#include <gtest/gtest.h>

#include <algorithm>

namespace folvane {
namespace {

QString packaged(const QString& ending)
{
    return QStringLiteral(FOLVANE_PACKAGING "/" FOLVANE_BUNDLE_IDENTIFIER) + ending;
}

QStringList declaredTypes()
{
    QFile entry(packaged(QStringLiteral(".desktop")));
    EXPECT_TRUE(entry.open(QIODevice::ReadOnly));
    for (const QByteArray& line : entry.readAll().split('\n')) {
        if (line.startsWith("MimeType=")) {
            EXPECT_TRUE(line.endsWith(';'));
            return QString::fromUtf8(line.mid(9)).split(QLatin1Char(';'), Qt::SkipEmptyParts);
        }
    }
    return {};
}

bool opens(const QString& extension)
{
    return fileKind(QUrl::fromLocalFile(QStringLiteral("/a.") + extension)) != FileKind::Other;
}

TEST(Packaging, DesktopEntryIsValid)
{
    const ToolResult result =
        runTool(QStringLiteral("desktop-file-validate"), {packaged(QStringLiteral(".desktop"))});
    EXPECT_EQ(result.exitCode, 0) << result.output.toStdString() << result.errors.toStdString();
}

TEST(Packaging, MetadataIsValid)
{
    const ToolResult result =
        runTool(QStringLiteral("appstreamcli"), {QStringLiteral("validate"), QStringLiteral("--no-net"),
                                                 packaged(QStringLiteral(".metainfo.xml"))});
    EXPECT_EQ(result.exitCode, 0) << result.output.toStdString() << result.errors.toStdString();
}

// A type of which we open no file would put us under Open With only to fail.
TEST(Packaging, EveryDeclaredTypeOpens)
{
    const QStringList types = declaredTypes();
    EXPECT_FALSE(types.isEmpty());
    for (const QString& name : types) {
        const QStringList endings = QMimeDatabase().mimeTypeForName(name).suffixes();
        EXPECT_TRUE(std::ranges::any_of(endings, opens)) << name.toStdString();
    }
}

// Of an ending that the desktop does not know it looks at the content, and finds one of the other types.
TEST(Packaging, EveryKindThatOpensIsDeclared)
{
    const QStringList types = declaredTypes();
    for (const QString& extension : pictureExtensions() + QStringList{QStringLiteral("pdf")}) {
        const QMimeType type =
            QMimeDatabase().mimeTypeForFile(QStringLiteral("a.") + extension, QMimeDatabase::MatchExtension);
        EXPECT_TRUE(type.isDefault() || types.contains(type.name()))
            << extension.toStdString() << ": " << type.name().toStdString();
    }
}

} // namespace
} // namespace folvane
