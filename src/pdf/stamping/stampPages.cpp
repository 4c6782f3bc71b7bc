#include "pdf/stamping/stampPages.h"

#include "pdf/stamping/CompactStamps.h"
#include "pdf/stamping/contentText.h"
#include "pdf/stamping/flatPage.h"
#include "pdf/stamping/flatStructure.h"
#include "pdf/stamping/liveFields.h"
#include "pdf/stamping/movedDestinations.h"
#include "pdf/structure/imagePage.h"
#include "platform/tasks/Cancelled.h"
#include "records/stampBox.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace folvane::pdf {

namespace {

constexpr double pointsPerInch = 72;

/// How finely stamps are drawn.
struct Density {
    double dpi = 300;
    int jpegQuality = 85; // of 100
};

Density densityOf(const std::optional<CompressionStep>& quality)
{
    if (!quality)
        return {};
    return {std::clamp(quality->maxPixels / 10.0, 100.0, 200.0),
            int(std::lround(quality->jpegQuality * 100))};
}

QPDFObjectHandle imageOf(QPDF& document, const CompactStamp& stamp)
{
    QPDFObjectHandle mask = newImage(document, stamp.size, deviceSpace(1));
    mask.replaceStreamData(stamp.alpha.toStdString(), QPDFObjectHandle::newNull(),
                           QPDFObjectHandle::newNull());
    QPDFObjectHandle image = newJpegImage(document, stamp.jpeg, stamp.size, 3);
    for (QPDFObjectHandle dictionary : {mask.getDict(), image.getDict()})
        dictionary.replaceKey("/Interpolate", QPDFObjectHandle::newBool(true));
    image.getDict().replaceKey("/SMask", mask);
    return image;
}

/// Draws stamps on flat pages of one document.
class Stamper {
public:
    Stamper(QPDF& document, const QHash<QUuid, QUrl>& files, const Density& density, CompactStamps& stamps)
        : m_document(document), m_files(files), m_density(density), m_stamps(stamps)
    {
    }

    void draw(const StampPlacement& placement, FlatPage& page)
    {
        const QUrl file = m_files.value(placement.stampID);
        const QSize pixels = file.isEmpty() ? QSize() : m_stamps.pixels(file);
        if (pixels.isEmpty())
            return;
        const StampBox box = stampBox(placement, page.size, pixels);
        const double longSide = std::max(box.size.width(), box.size.height()) * m_density.dpi / pointsPerInch;
        const auto compact =
            m_stamps.compact(file, int(std::clamp(std::ceil(longSide), 1.0, 1e6)), m_density.jpegQuality);
        if (compact)
            draw(box, imageFor(compact), page);
    }

private:
    QPDFObjectHandle imageFor(const std::shared_ptr<const CompactStamp>& stamp)
    {
        const auto known = m_images.find(stamp);
        return known != m_images.end() ? known->second
                                       : m_images.emplace(stamp, imageOf(m_document, *stamp)).first->second;
    }

    // Placements count from the upper left corner and turn clockwise, PDF from the lower left one and the other way.
    static void draw(const StampBox& box, const QPDFObjectHandle& image, FlatPage& page)
    {
        QPDFObjectHandle images = page.resources.getKey("/XObject");
        const std::string name = "/Stamp" + std::to_string(image.getObjectID());
        images.replaceKey(name, image);
        const double width = box.size.width(), height = box.size.height();
        const QTransform place =
            QTransform(width, 0, 0, height, -width / 2, -height / 2) * QTransform().rotate(-box.rotation)
            * QTransform::fromTranslate(box.center.x(), page.size.height() - box.center.y());
        page.content += QByteArray::fromStdString("q\n" + matrix(place) + " cm\n" + name + " Do\nQ\n");
    }

    QPDF& m_document;
    const QHash<QUuid, QUrl>& m_files;
    Density m_density;
    CompactStamps& m_stamps;
    std::map<std::shared_ptr<const CompactStamp>, QPDFObjectHandle> m_images;
};

/// Pages on which the same is drawn by the same names have one stream for it.
class ContentStreams {
public:
    explicit ContentStreams(QPDF& document) : m_document(document) {}

    QPDFObjectHandle of(const QByteArray& content)
    {
        const auto known = m_streams.constFind(content);
        return known != m_streams.cend()
                   ? *known
                   : *m_streams.insert(content, m_document.newStream(content.toStdString()));
    }

private:
    QPDF& m_document;
    QHash<QByteArray, QPDFObjectHandle> m_streams;
};

} // namespace

void stampPages(QPDF& document, const std::vector<StampedPage>& pages, const QHash<QUuid, QUrl>& files,
                const std::optional<CompressionStep>& quality, CompactStamps& stamps,
                const std::stop_token& stop)
{
    Stamper stamper(document, files, densityOf(quality), stamps);
    ContentStreams contents(document);
    ObjGenMap<QTransform> moves;
    std::vector<QPDFObjectHandle> widgets;
    std::vector<long long> structureKeys;
    for (const StampedPage& page : pages) {
        throwIfStopped(stop);
        FlatPage flat = flatten(document, page.page, page.geometry);
        for (const StampPlacement& placement : page.stamps)
            stamper.draw(placement, flat);
        QPDFObjectHandle(page.page).replaceKey("/Resources", flat.resources);
        QPDFObjectHandle(page.page).replaceKey("/Contents", contents.of(flat.content));
        widgets.insert(widgets.end(), flat.widgets.begin(), flat.widgets.end());
        structureKeys.insert(structureKeys.end(), flat.structureKeys.begin(), flat.structureKeys.end());
        moves[page.page.getObjGen()] = uprightFrom(page.geometry);
    }
    if (moves.empty())
        return;
    removeFields(document, widgets);
    removeStructureOf(document, moves, structureKeys);
    moveDestinations(document, moves);
}

} // namespace folvane::pdf
