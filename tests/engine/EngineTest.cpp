#include "engine/EngineTest.h"

#include "support/tools.h"

#include <QFile>

namespace folvane {

QUrl EngineTest::write(const QString& name, const QByteArray& bytes) const
{
    QFile file(path(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    return QUrl::fromLocalFile(path(name));
}

QUrl EngineTest::opened(const QString& name, const QByteArray& bytes)
{
    const QUrl url = write(name, bytes);
    EXPECT_EQ(engine.open(url).kind, OpenResult::Kind::Opened) << qPrintable(name);
    return url;
}

PageItem EngineTest::page(const QUrl& source, int index, int turn)
{
    PageItem item;
    item.source = {source, index};
    item.turn = turn;
    return item;
}

void EngineTest::add(BuildPlan& plan, const QUrl& source, const std::vector<int>& pages, int turn)
{
    for (const int index : pages)
        plan.pages.push_back(page(source, index, turn));
}

QString EngineTest::built(const QUrl& source, const std::vector<int>& pages, int turn)
{
    BuildPlan plan;
    add(plan, source, pages, turn);
    return built(plan);
}

QString EngineTest::built(const BuildPlan& plan)
{
    const QString name = QStringLiteral("built-%1.pdf").arg(++m_builds);
    write(name, engine.build(plan));
    return path(name);
}

QImage EngineTest::drawn(const QUrl& source, int page, double longSide)
{
    const std::optional<SendableImage> image = engine.image({source, page}, 0, longSide);
    return image ? image->image : QImage();
}

QImage EngineTest::drawn(const QString& path, int page, double longSide)
{
    const QUrl url = QUrl::fromLocalFile(path);
    engine.open(url, "secret");
    return drawn(url, page, longSide);
}

QByteArray plainText(const QString& path)
{
    return runTool("qpdf", {"--qdf", "--static-id", "--object-streams=disable", path, "-"}).output;
}

QStringList imagesIn(const QString& path)
{
    const QString list = QString::fromUtf8(runTool("pdfimages", {"-list", path}).output);
    return list.split('\n', Qt::SkipEmptyParts).mid(2);
}

QImage drawnByMupdf(const QString& path)
{
    return QImage::fromData(
        runTool("mutool", {"draw", "-r", "72", "-F", "png", "-o", "-", path, "1"}).output);
}

QMap<QString, QStringList> outsideView(const QString& path)
{
    QMap<QString, QStringList> view;
    const QString said = QString::fromUtf8(runTool("mutool", {"run", FOLVANE_OUTSIDE_VIEW, path}).output);
    for (const QString& line : said.split(u'\n', Qt::SkipEmptyParts))
        view[line.section(u' ', 0, 0)] << line.section(u' ', 1);
    view["field"].sort();
    return view;
}

} // namespace folvane
